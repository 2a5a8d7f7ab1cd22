#include "ui/toast_panel.h"

#include "ui/controls.h"
#include "ui/floating.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QDrag>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPropertyAnimation>
#include <QUrl>

namespace {

constexpr int kFadesFor = 300;
constexpr int kLingersFor = 1200; // after the pointer left
constexpr int kWidest = 560;      // longer texts wrap
constexpr QSize kPicture(96, 64);

// The picture, small; dragging it drags the file.
class ToastPicture : public QWidget {
public:
    explicit ToastPicture(const Notice &notice) : m_file(notice.file)
    {
        setFixedSize(kPicture);
        const QSize pixels = kPicture * devicePixelRatioF();
        m_picture = notice.picture.scaled(pixels, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
        m_picture.setDevicePixelRatio(devicePixelRatioF());
        if (!m_file.isEmpty())
            setCursor(Qt::OpenHandCursor);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        QPainterPath shape;
        shape.addRoundedRect(frame, Theme::Radius::control, Theme::Radius::control);
        painter.setClipPath(shape);
        // Of tall ones the top shows, which tells most.
        const QSizeF size = m_picture.deviceIndependentSize();
        painter.drawImage(QPointF((width() - size.width()) / 2, 0), m_picture);
        painter.setClipping(false);
        painter.setPen(QPen(Theme::materialEdge(), 1));
        painter.drawPath(shape);
    }
    void mousePressEvent(QMouseEvent *event) override { m_pressedAt = event->position().toPoint(); }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        const int way = (event->position().toPoint() - m_pressedAt).manhattanLength();
        if (m_file.isEmpty() || event->buttons() != Qt::LeftButton || way < QApplication::startDragDistance())
            return;
        auto *data = new QMimeData;
        data->setUrls({QUrl::fromLocalFile(m_file)});
        auto *drag = new QDrag(this);
        drag->setMimeData(data);
        drag->setPixmap(QPixmap::fromImage(m_picture));
        drag->exec(Qt::CopyAction);
    }

private:
    QImage m_picture;
    QString m_file;
    QPoint m_pressedAt;
};

} // namespace

ToastPanel::ToastPanel(const Notice &notice)
    : m_isInteractive(!notice.actions.isEmpty() || !notice.picture.isNull()),
      m_fade(new QPropertyAnimation(this, "windowOpacity", this))
{
    Floating::prepare(this);
    setWindowFlag(Qt::WindowTransparentForInput, !m_isInteractive);
    Floating::useDarkPalette(this);
    setObjectName("toast");
    setAccessibleName(withShortcutWords(notice.text));

    auto *row = new QHBoxLayout(this);
    if (notice.picture.isNull()) {
        row->setContentsMargins(18, 12, notice.actions.isEmpty() ? 18 : Theme::Space::group, 12);
        row->setSpacing(Theme::Space::group);
        row->addWidget(makeWords(notice, false));
        if (!notice.actions.isEmpty())
            row->addWidget(makeActions(notice.actions));
    } else {
        row->setContentsMargins(Theme::Space::group, Theme::Space::group, Theme::Space::group,
                                Theme::Space::group);
        row->setSpacing(Theme::Space::group);
        row->addWidget(new ToastPicture(notice));
        auto *column = new QVBoxLayout;
        column->setSpacing(Theme::Space::unit);
        column->addWidget(makeWords(notice, true));
        column->addStretch();
        column->addWidget(makeActions(notice.actions));
        row->addLayout(column);
    }
    adjustSize();

    m_leaving.setSingleShot(true);
    m_leaving.setTimerType(Qt::PreciseTimer);
    connect(&m_leaving, &QTimer::timeout, this, &ToastPanel::fade);
    m_fade->setDuration(kFadesFor);
    m_fade->setStartValue(1.0);
    m_fade->setEndValue(0.0);
    connect(m_fade, &QPropertyAnimation::finished, this, &ToastPanel::finished);
}

ToastPanel::~ToastPanel() = default;

QWidget *ToastPanel::makeWords(const Notice &notice, bool isBesidePicture) const
{
    auto *words = new QWidget;
    auto *row = new QHBoxLayout(words);
    row->setContentsMargins(isBesidePicture ? Theme::Space::unit : 0, 0, 0, 0);
    row->setSpacing(8);
    if (!notice.symbol.isEmpty())
        row->addWidget(new SymbolLabel(notice.symbol, Theme::Size::barIcon));
    const QString text = withShortcutWords(notice.text);
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Theme::font(14, QFont::Medium));
    if (label->fontMetrics().horizontalAdvance(text) > kWidest) {
        label->setWordWrap(true);
        label->setFixedWidth(kWidest);
    }
    row->addWidget(label);
    row->addStretch();
    return words;
}

QWidget *ToastPanel::makeActions(const QList<NoticeAction> &actions)
{
    auto *bar = new QWidget;
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Theme::Space::unit);
    for (const NoticeAction &action : actions) {
        const auto label = action.symbol.isEmpty() ? BarButton::Label::None : BarButton::Label::Beside;
        auto *button = new BarButton(action.symbol, action.text, label);
        button->setAccessibleName(action.text);
        button->setFocusPolicy(Qt::NoFocus); // the panel never has the keyboard
        connect(button, &QAbstractButton::clicked, this, [this, call = action.call] {
            hide();
            Q_EMIT finished();
            call();
        });
        row->addWidget(button);
    }
    row->addStretch();
    return bar;
}

void ToastPanel::showAt(const QPoint &topLeft, int milliseconds)
{
    move(topLeft);
    show();
    raise();
    m_leaving.start(milliseconds);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void ToastPanel::fade()
{
    m_fade->start();
}

void ToastPanel::paintEvent(QPaintEvent *)
{
    Floating::paintMaterial(this, Theme::Radius::panel);
}

void ToastPanel::resizeEvent(QResizeEvent *)
{
    Floating::applyShape(this, Theme::Radius::panel);
}

void ToastPanel::enterEvent(QEnterEvent *)
{
    m_leaving.stop();
    m_fade->stop();
    setWindowOpacity(1);
}

void ToastPanel::leaveEvent(QEvent *)
{
    if (isVisible())
        m_leaving.start(kLingersFor);
}
