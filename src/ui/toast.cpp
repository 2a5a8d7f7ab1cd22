#include "ui/toast.h"

#include "ui/floating.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QCursor>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPropertyAnimation>
#include <QScreen>
#include <QTimer>

namespace {

constexpr int shownFor = 2200;
constexpr int fadesFor = 300;
constexpr int aboveBottom = 80;
constexpr int widest = 560; // longer texts wrap

} // namespace

QPointF toastPosition(const QRectF &visible, const QSizeF &size)
{
    return {visible.center().x() - size.width() / 2, visible.bottom() - aboveBottom - size.height()};
}

// The panel of one notice.
class Toast : public QWidget {
public:
    explicit Toast(const Notice &notice)
    {
        Floating::prepare(this);
        setWindowFlag(Qt::WindowTransparentForInput);
        Floating::useDarkPalette(this);
        setObjectName("toast");
        const QString text = withShortcutWords(notice.text);
        setAccessibleName(text);

        auto *symbol = new SymbolLabel(notice.symbol, Theme::Size::barIcon);
        auto *label = new QLabel(text);
        label->setTextFormat(Qt::PlainText);
        label->setFont(Theme::font(14, QFont::Medium));
        const int width = label->fontMetrics().horizontalAdvance(text);
        if (width > widest) {
            label->setWordWrap(true);
            label->setFixedWidth(widest);
        }
        auto *row = new QHBoxLayout(this);
        row->setContentsMargins(18, 12, 18, 12);
        row->setSpacing(8);
        if (!notice.symbol.isEmpty())
            row->addWidget(symbol);
        else
            delete symbol;
        row->addWidget(label);
        adjustSize();
    }

    void showOn(const QScreen *screen)
    {
        move(toastPosition(screen->availableGeometry(), size()).toPoint());
        show();
        raise();
        QAccessibleEvent event(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }

protected:
    void paintEvent(QPaintEvent *) override { Floating::paintMaterial(this, Theme::Radius::panel); }
    void resizeEvent(QResizeEvent *) override { Floating::applyShape(this, Theme::Radius::panel); }
};

ToastPresenter::ToastPresenter(NoticeBoard &board, QObject *parent) : QObject(parent)
{
    connect(&board, &NoticeBoard::posted, this, &ToastPresenter::show);
}

ToastPresenter::~ToastPresenter() = default;

void ToastPresenter::show(const Notice &notice)
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    Toast *toast = m_toasts.emplace_back(std::make_unique<Toast>(notice)).get();
    toast->showOn(screen);

    QTimer::singleShot(shownFor, Qt::PreciseTimer, toast, [this, toast] {
        auto *fade = new QPropertyAnimation(toast, "windowOpacity", toast);
        fade->setDuration(fadesFor);
        fade->setStartValue(1.0);
        fade->setEndValue(0.0);
        connect(fade, &QPropertyAnimation::finished, this, [this, toast] { remove(toast); });
        fade->start();
    });
}

void ToastPresenter::remove(Toast *toast)
{
    const auto found = std::find_if(m_toasts.begin(), m_toasts.end(),
                                    [toast](const auto &candidate) { return candidate.get() == toast; });
    if (found == m_toasts.end())
        return;
    // Its animation is still on the stack.
    found->release()->deleteLater();
    toast->hide();
    m_toasts.erase(found);
}
