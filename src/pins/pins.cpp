#include "pins/pins.h"

#include "base/async.h"
#include "base/notice.h"
#include "document/image_files.h"
#include "pins/texts.h"
#include "platform/pasteboard.h"
#include "ui/announcement.h"
#include "ui/floating.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <cmath>

namespace {

constexpr double kShareOfScreen = 0.6;
constexpr int kCascadeSteps = 6;
constexpr int kCascadeStep = 24;
constexpr double kLeastWidth = 60, kMostWidth = 6000;
constexpr double kLeastOpacity = 0.2;
constexpr double kCorner = 6;
constexpr double kEdge = 8; // points at the border that size the window
constexpr double kLinesPerNotch = 3;
constexpr int kKeyStep = 4, kLargeKeyStep = 40; // points
constexpr double kKeyZoom = 1.1;
constexpr double kRounding = 1e-6; // what a quotient may be beside a whole number

} // namespace

QRectF pinFrame(const QSize &image, double backing, const QRectF &visible, int openPins)
{
    const QSizeF points = QSizeF(image) / backing;
    const double scale = std::min({1.0, visible.width() * kShareOfScreen / points.width(),
                                   visible.height() * kShareOfScreen / points.height()});
    QRectF frame(QPointF(), points * scale);
    const double shift = openPins % kCascadeSteps * kCascadeStep;
    frame.moveCenter(visible.center() + QPointF(shift, shift));
    // A window stands on whole points and is as many of them large. It is never smaller than the picture: the
    // picture of an odd number of pixels then shows as it is, with half a point of nothing beside it.
    const auto whole = [](double length) { return std::max(std::ceil(length - kRounding), 1.0); };
    return {std::round(frame.x()), std::round(frame.y()), whole(frame.width()), whole(frame.height())};
}

Pins::Pins(Pasteboard &pasteboard, NoticeBoard &notices, QObject *parent)
    : QObject(parent), m_pasteboard(pasteboard), m_notices(notices)
{}

Pins::~Pins() = default;

void Pins::pin(const QImage &image)
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen || image.isNull())
        return;
    const double backing = screen->devicePixelRatio();
    const QRectF frame =
        pinFrame(image.size(), backing, screen->availableGeometry(), static_cast<int>(m_windows.size()));
    PinWindow *window =
        m_windows.emplace_back(std::make_unique<PinWindow>(*this, image, frame, backing)).get();
    window->show();
    window->raise();
}

bool Pins::goToNext()
{
    if (m_windows.empty())
        return false;
    const auto active = std::find_if(m_windows.begin(), m_windows.end(),
                                     [](const auto &pin) { return pin->isActiveWindow(); });
    const bool isLast = active == m_windows.end() || active + 1 == m_windows.end();
    PinWindow &next = isLast ? *m_windows.front() : **(active + 1);
    next.raise();
    next.activateWindow();
    next.setFocus(Qt::TabFocusReason);
    return true;
}

void Pins::closeAll()
{
    while (!m_windows.empty())
        m_windows.back()->close();
}

void Pins::remove(PinWindow *window)
{
    const auto found = std::find_if(m_windows.begin(), m_windows.end(),
                                    [window](const auto &candidate) { return candidate.get() == window; });
    if (found == m_windows.end())
        return;
    found->release()->deleteLater(); // its own event is still on the stack
    m_windows.erase(found);
}

void Pins::copy(const QImage &image)
{
    whenDone(runInBackground([image] { return ImageFiles::encode(image, ImageFiles::Type::Png); }), this,
             [this](const QByteArray &png) {
                 m_pasteboard.setFlavors({{"image/png", png}});
                 m_notices.post(PinsTexts::tr("Copied"), "checkmark.circle.fill");
             });
}

PinWindow::PinWindow(Pins &pins, const QImage &image, const QRectF &frame, double backing)
    : m_pins(pins), m_image(image), m_backing(backing)
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_TranslucentBackground, Floating::isComposited());
    setAttribute(Qt::WA_ShowWithoutActivating); // the keyboard stays with what was worked on
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(PinsTexts::tr("Pinned Image"));
    Floating::announce(this);
    setAccessibleName(PinsTexts::tr("Pinned image"));
    setAccessibleDescription(
        PinsTexts::tr("Arrow keys move it, with Alt they size it. Tab goes to the next one, Esc closes it."));
    setMouseTracking(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setProperty("focusRadius", -1.0);
    setGeometry(frame.toRect());
    winId();                                        // the attribute is heeded once there is a native window
    setAttribute(Qt::WA_X11NetWmWindowTypeToolBar); // which no list of windows shows
}

void PinWindow::resizeTo(double width, const QPointF &fixed, double fixedX, double fixedY)
{
    const double clamped = std::clamp(width, kLeastWidth, kMostWidth);
    const QSizeF size(clamped, clamped * m_image.height() / m_image.width());
    setGeometry(QRectF(fixed - QPointF(size.width() * fixedX, size.height() * fixedY), size).toRect());
}

void PinWindow::zoom(double factor)
{
    resizeTo(width() * factor, QRectF(geometry()).center(), 0.5, 0.5);
}

void PinWindow::showActualSize()
{
    zoom(m_image.width() / m_backing / width());
}

void PinWindow::paintEvent(QPaintEvent *)
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize().expandedTo({1, 1});
    // A picture at its own size is shown pixel by pixel; a window can only be whole points large.
    const QSize room = pixels - m_image.size();
    const int slack = qCeil(devicePixelRatioF());
    const bool isActualSize =
        room.width() >= 0 && room.height() >= 0 && room.width() < slack && room.height() < slack;
    if (isActualSize)
        m_scaled = m_image;
    else if (m_scaled.size() != pixels)
        m_scaled = m_image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // The brush counts device pixels, the painter points.
    const double toPoints = 1 / devicePixelRatioF();
    QBrush picture(m_scaled);
    picture.setTransform(QTransform::fromScale(toPoints, toPoints));
    painter.setBrush(picture);
    painter.drawRoundedRect(QRectF(QPointF(), QSizeF(m_scaled.size()) * toPoints), kCorner, kCorner);
    if (underMouse() || hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Theme::tokens(this).accent, 1.5));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), kCorner - 0.75,
                                kCorner - 0.75);
    }
}

bool PinWindow::isOnEdge(const QPointF &position) const
{
    return !QRectF(rect()).adjusted(kEdge, kEdge, -kEdge, -kEdge).contains(position);
}

void PinWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_grip = event->position();
    m_isSizing = isOnEdge(event->position());
}

void PinWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) {
        const QPointF p = event->position();
        const bool falling = (p.x() < width() / 2.0) == (p.y() < height() / 2.0);
        if (isOnEdge(p))
            setCursor(falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
        else
            unsetCursor();
        return;
    }
    if (!m_isSizing) {
        move((event->globalPosition() - m_grip).toPoint());
        return;
    }
    // The edge or corner under the pointer follows it; the opposite one stays.
    const QRectF frame = geometry();
    const bool left = m_grip.x() < frame.width() / 2, top = m_grip.y() < frame.height() / 2;
    const QPointF fixed(left ? frame.right() : frame.left(), top ? frame.bottom() : frame.top());
    const double byWidth = std::abs(event->globalPosition().x() - fixed.x());
    const double byHeight =
        std::abs(event->globalPosition().y() - fixed.y()) * m_image.width() / m_image.height();
    resizeTo(std::max(byWidth, byHeight), fixed, left ? 1 : 0, top ? 1 : 0);
    m_grip = {left ? 0.0 : width() - 1.0, top ? 0.0 : height() - 1.0};
}

void PinWindow::mouseReleaseEvent(QMouseEvent *)
{
    m_isSizing = false;
}

void PinWindow::mouseDoubleClickEvent(QMouseEvent *)
{
    close();
}

void PinWindow::wheelEvent(QWheelEvent *event)
{
    const bool precise = !event->pixelDelta().isNull();
    // The toolkit turns the wheel sideways while Alt is held.
    const QPointF pixels = event->pixelDelta(), notches = QPointF(event->angleDelta()) / 120.0;
    const auto along = [](const QPointF &delta) { return delta.y() != 0 ? delta.y() : delta.x(); };
    const double delta = precise ? along(pixels) / 120 : along(notches) * kLinesPerNotch / 12;
    if (event->modifiers() & Qt::AltModifier)
        setWindowOpacity(std::clamp(windowOpacity() + delta, kLeastOpacity, 1.0));
    else
        zoom(1 + delta);
    event->accept();
}

bool PinWindow::event(QEvent *event)
{
    if (event->type() == QEvent::NativeGesture) {
        auto *gesture = static_cast<QNativeGestureEvent *>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            zoom(1 + gesture->value());
            return true;
        }
    }
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QWidget::event(event);
}

void PinWindow::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        return;
    case Qt::Key_Left:
        return arrowKey({-1, 0}, event->modifiers());
    case Qt::Key_Right:
        return arrowKey({1, 0}, event->modifiers());
    case Qt::Key_Up:
        return arrowKey({0, -1}, event->modifiers());
    case Qt::Key_Down:
        return arrowKey({0, 1}, event->modifiers());
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoom(kKeyZoom);
        return announce(this, placeWords());
    case Qt::Key_Minus:
        zoom(1 / kKeyZoom);
        return announce(this, placeWords());
    default:
        QWidget::keyPressEvent(event);
    }
}

// With Alt its lower right corner moves, as that of an object in the editor does.
void PinWindow::arrowKey(const QPoint &direction, Qt::KeyboardModifiers modifiers)
{
    const int step = modifiers & Qt::ShiftModifier ? kLargeKeyStep : kKeyStep;
    if (modifiers & Qt::AltModifier)
        resizeTo(width() + step * (direction.x() + direction.y()), geometry().topLeft(), 0, 0);
    else
        move(pos() + direction * step);
    announce(this, placeWords());
}

QString PinWindow::placeWords() const
{
    return PinsTexts::tr("%1 by %2 at %3, %4").arg(width()).arg(height()).arg(x()).arg(y());
}

bool PinWindow::focusNextPrevChild(bool)
{
    return m_pins.goToNext();
}

QMenu *PinWindow::makeMenu()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(symbolIcon("doc.on.doc"), PinsTexts::tr("Copy"), this, [this] { m_pins.copy(m_image); });
    menu->addAction(symbolIcon("pencil.and.outline"), PinsTexts::tr("Open in Editor"), this, [this] {
        if (m_pins.openEditor)
            m_pins.openEditor(m_image);
    });
    menu->addSeparator();
    menu->addAction(symbolIcon("1.magnifyingglass"), PinsTexts::tr("Actual Size"), this,
                    &PinWindow::showActualSize);
    QMenu *opacity = menu->addMenu(PinsTexts::tr("Opacity"));
    for (int percent : {100, 75, 50, 25}) {
        QAction *choice = opacity->addAction(QStringLiteral("%1%").arg(percent), this,
                                             [this, percent] { setWindowOpacity(percent / 100.0); });
        choice->setCheckable(true);
        choice->setChecked(qRound(windowOpacity() * 100) == percent);
    }
    menu->addSeparator();
    menu->addAction(symbolIcon("xmark"), PinsTexts::tr("Close"), this, &QWidget::close);
    menu->addAction(PinsTexts::tr("Close All Pins"), &m_pins, &Pins::closeAll, Qt::QueuedConnection);
    return menu;
}

void PinWindow::contextMenuEvent(QContextMenuEvent *event)
{
    makeMenu()->popup(event->globalPos());
}

void PinWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    m_pins.remove(this);
}

void PinWindow::resizeEvent(QResizeEvent *)
{
    Floating::applyShape(this, kCorner);
}
