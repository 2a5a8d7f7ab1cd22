#include "ui/toast.h"

#include "ui/toast_panel.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr int kShownFor = 2200;   // milliseconds
constexpr int kOfferedFor = 5000; // long enough to read, decide and get there with the pointer
constexpr int kReadAtOnce = 40;   // characters that need no longer than that
constexpr int kPerCharacter = 50; // milliseconds; some 240 words a minute, as people read to themselves
constexpr int kAboveBottom = 80;
constexpr int kBetween = 8;

int timeToRead(const Notice &notice)
{
    const int least = notice.actions.isEmpty() ? kShownFor : kOfferedFor;
    return least + kPerCharacter * std::max(0, int(notice.text.size()) - kReadAtOnce);
}

} // namespace

QPointF toastPosition(const QRectF &visible, const QSizeF &size)
{
    return {visible.center().x() - size.width() / 2, visible.bottom() - kAboveBottom - size.height()};
}

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
    auto made = std::make_unique<ToastPanel>(notice);
    ToastPanel *toast = made.get();
    const QRect visible = screen->availableGeometry();
    QPoint topLeft = toastPosition(visible, toast->size()).toPoint();
    makeRoom(visible, topLeft, toast->size());
    m_toasts.push_back(std::move(made));
    connect(toast, &ToastPanel::finished, this, [this, toast] { remove(toast); });
    toast->showAt(topLeft, timeToRead(notice));
}

// What can still be used stays uncovered: a new toast goes above it.
void ToastPresenter::makeRoom(const QRect &visible, QPoint &topLeft, const QSize &size) const
{
    for (const auto &other : m_toasts) {
        const bool isInTheWay = other->isInteractive() && other->isVisible() &&
                                other->geometry().intersects(QRect(topLeft, size));
        if (isInTheWay)
            topLeft.setY(std::max(visible.top(), other->y() - kBetween - size.height()));
    }
}

void ToastPresenter::remove(ToastPanel *toast)
{
    const auto found = std::find_if(m_toasts.begin(), m_toasts.end(),
                                    [toast](const auto &candidate) { return candidate.get() == toast; });
    if (found == m_toasts.end())
        return;
    // Its animation or its button is still on the stack.
    found->release()->deleteLater();
    toast->hide();
    m_toasts.erase(found);
}
