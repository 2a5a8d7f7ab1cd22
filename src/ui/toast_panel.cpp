#include "ui/toast_panel.h"

#include "ui/controls.h"
#include "ui/floating.h"
#include "ui/roles.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QApplication>
#include <QDrag>
#include <QFileInfo>
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

// The upper part of the picture, which tells most of a tall one, in so many pixels. Coarsely first: the finer
// way costs as much as the picture has pixels, and a toast is made between two events.
QImage reduced(const QImage &picture, const QSize &pixels)
{
    QRect shown(QPoint(), pixels.scaled(picture.size(), Qt::KeepAspectRatio).expandedTo({1, 1}));
    shown.moveLeft((picture.width() - shown.width()) / 2);
    const QImage part = picture.copy(shown);
    constexpr int kFiner = 4;
    const QSize coarse = pixels * kFiner;
    return (part.width() > coarse.width() ? part.scaled(coarse) : part)
        .scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// The picture, small; dragging it drags the file.
class ToastPicture : public QWidget {
public:
    // `dragging` is told when a drag begins and when it has ended.
    ToastPicture(const Notice &notice, std::function<void(bool)> dragging)
        : m_file(notice.file), m_dragging(std::move(dragging))
    {
        setFixedSize(kPicture);
        m_picture = reduced(notice.picture, kPicture * devicePixelRatioF());
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
        painter.drawImage(QPointF(), m_picture);
        painter.setClipping(false);
        painter.setPen(QPen(Theme::materialEdge(), 1));
        painter.drawPath(shape);
    }
    void mousePressEvent(QMouseEvent *event) override { m_pressedAt = event->position().toPoint(); }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        const int way = (event->position().toPoint() - m_pressedAt).manhattanLength();
        if (event->buttons() != Qt::LeftButton || way < QApplication::startDragDistance() ||
            !QFileInfo::exists(m_file)) // renamed or gone meanwhile
            return;
        auto *data = new QMimeData;
        data->setUrls({QUrl::fromLocalFile(m_file)});
        auto *drag = new QDrag(this);
        drag->setMimeData(data);
        drag->setPixmap(QPixmap::fromImage(m_picture));
        m_dragging(true);
        drag->exec(Qt::CopyAction);
        m_dragging(false);
    }

private:
    QImage m_picture;
    QString m_file;
    std::function<void(bool)> m_dragging;
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
    Roles::set(this, QAccessible::Notification);

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
        row->addWidget(new ToastPicture(notice, [this](bool isDragging) { setHeld(isDragging); }));
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
}

void ToastPanel::fade()
{
    // Where windows can't grow paler, it would only stay longer.
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        Q_EMIT finished();
    else
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
    stay();
}

void ToastPanel::leaveEvent(QEvent *)
{
    if (isVisible() && !m_isHeld)
        m_leaving.start(kLingersFor);
}

void ToastPanel::stay()
{
    m_leaving.stop();
    if (m_fade->state() == QAbstractAnimation::Running) {
        m_fade->stop();
        setWindowOpacity(1);
    }
}

void ToastPanel::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    if (isHeld)
        stay();
    else
        m_leaving.start(kLingersFor);
}
