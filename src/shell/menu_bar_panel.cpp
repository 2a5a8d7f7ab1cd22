#include "shell/menu_bar_panel.h"

#include "base/log.h"
#include "document/soft_shadow.h"
#include "platform/input_monitor.h"
#include "platform/workspace.h"
#include "ui/floating.h"
#include "ui/style_painting.h"
#include "ui/theme.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int kGap = 6;       // between icon and panel
constexpr int kSideInset = 8; // between panel and the sides of the screen
constexpr int kJustNow = 300; // milliseconds

QMargins shadowRoom()
{
    if (!Floating::isComposited())
        return {};
    const auto &t = Theme::dark(); // the larger of the two shadows, so that a change of theme moves nothing
    const int reach = t.raisedShadowBlur;
    return {reach, reach - t.raisedShadowOffset, reach, reach + t.raisedShadowOffset};
}

} // namespace

PanelPlacement panelPlacement(const QRect &anchor, const QRect &visible, const QSize &size)
{
    PanelPlacement placement;
    int left = anchor.center().x() - size.width() / 2;
    left = qMax(left, visible.left() + kSideInset);
    left = qMin(left, visible.left() + visible.width() - size.width() - kSideInset);
    const int below = qMax(visible.top(), anchor.top() + anchor.height() + kGap);
    const bool fitsBelow = below + size.height() <= visible.top() + visible.height();
    placement.growsUp = anchor.center().y() > visible.center().y() || !fitsBelow;
    int top = below;
    if (placement.growsUp) {
        const int bottom = qMin(visible.top() + visible.height(), anchor.top() - kGap);
        top = qMax(visible.top(), bottom - size.height());
    }
    placement.topLeft = {left, top};
    return placement;
}

MenuBarPanel::MenuBarPanel(std::unique_ptr<QWidget> content, InputMonitors &monitors, Workspace &workspace)
    : m_monitors(monitors), m_workspace(workspace), m_content(content.release()), m_shadow(shadowRoom())
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_TranslucentBackground, Floating::isComposited());
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(QStringLiteral("Lumenpost"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(m_shadow);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(m_content);
    connect(&workspace, &Workspace::activated, this, [this](const Workspace::Application &application) {
        if (application.pid != QCoreApplication::applicationPid())
            dismiss(QStringLiteral("switched apps"));
    });
}

MenuBarPanel::~MenuBarPanel() = default;

QRect MenuBarPanel::cardGeometry() const
{
    return geometry().marginsRemoved(m_shadow);
}

bool MenuBarPanel::hasJustClosed() const
{
    return m_sinceClosed.isValid() && m_sinceClosed.elapsed() < kJustNow;
}

void MenuBarPanel::showAt(const QRect &anchor)
{
    m_isOpen = true;
    m_anchor = anchor.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : anchor;
    place();
    winId();                                        // the attribute is heeded once there is a native window
    setAttribute(Qt::WA_X11NetWmWindowTypeToolBar); // which no list of windows shows
    show();
    raise();
    activateWindow();
    listen();
    Log::info(QStringLiteral("Menu bar panel opened"));
    Q_EMIT opened();
}

void MenuBarPanel::warmUp()
{
    ensurePolished();
    layout()->activate();
    resize(sizeHint());
    winId();
    grab();
}

void MenuBarPanel::place()
{
    const QScreen *screen = QGuiApplication::screenAt(m_anchor.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    ensurePolished();
    layout()->activate();
    const QSize card = sizeHint().shrunkBy(m_shadow);
    const PanelPlacement placement = panelPlacement(m_anchor, screen->availableGeometry(), card);
    const QRect wanted(placement.topLeft - QPoint(m_shadow.left(), m_shadow.top()), sizeHint());
    if (geometry() != wanted)
        setGeometry(wanted);
}

void MenuBarPanel::dismiss(const QString &reason)
{
    // Hiding takes the keyboard away, which must not count as another reason.
    if (!std::exchange(m_isOpen, false))
        return;
    stopListening();
    m_sinceClosed.start();
    hide();
    Log::info(QStringLiteral("Menu bar panel closed (%1)").arg(reason));
    Q_EMIT closed();
}

void MenuBarPanel::listen()
{
    qApp->installEventFilter(this);
    auto monitor = m_monitors.listen(InputEvent::Clicks, [this](InputMonitor &listener) {
        connect(&listener, &InputMonitor::pressed, this, &MenuBarPanel::pressedAnywhere,
                Qt::QueuedConnection);
    });
    if (monitor)
        m_monitor = std::move(*monitor);
}

void MenuBarPanel::stopListening()
{
    qApp->removeEventFilter(this);
    m_monitor.reset();
}

void MenuBarPanel::pressedAnywhere(const PointerPress &press)
{
    // Clicks on this program's own windows come as events.
    if (!press.isOwn)
        dismiss(QStringLiteral("clicked outside"));
}

bool MenuBarPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonPress || !watched->isWidgetType())
        return false;
    const auto *window = static_cast<QWidget *>(watched)->window();
    // Menus, lists and tips that belong to the panel leave it open.
    const bool isSmall = window->windowType() == Qt::Popup || window->windowType() == Qt::ToolTip;
    const bool isOnShadow =
        window == this &&
        !cardGeometry().contains(static_cast<QMouseEvent *>(event)->globalPosition().toPoint());
    if (isOnShadow || (window != this && !isSmall))
        dismiss(QStringLiteral("clicked outside"));
    return false;
}

bool MenuBarPanel::event(QEvent *event)
{
    // Where clicks elsewhere aren't told, the loss of the keyboard has to do; a menu of the panel takes it
    // too.
    if (event->type() == QEvent::WindowDeactivate && !m_monitor && !QApplication::activePopupWidget())
        dismiss(QStringLiteral("switched apps"));
    return QWidget::event(event);
}

void MenuBarPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        dismiss(QStringLiteral("escape"));
    else
        QWidget::keyPressEvent(event);
}

void MenuBarPanel::closeEvent(QCloseEvent *event)
{
    event->ignore();
    dismiss(QStringLiteral("closed"));
}

void MenuBarPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_ground = {};
    Floating::applyShape(this, Theme::Radius::panel);
    if (isVisible())
        place();
}

void MenuBarPanel::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    if (m_ground.isNull() || m_groundIsDark != t.dark || m_ground.devicePixelRatio() != devicePixelRatioF()) {
        m_groundIsDark = t.dark;
        m_ground = QPixmap(size() * devicePixelRatioF());
        m_ground.setDevicePixelRatio(devicePixelRatioF());
        m_ground.fill(Qt::transparent);
        const QRectF card = QRectF(rect()).marginsRemoved(m_shadow);
        QPainter painter(&m_ground);
        painter.setRenderHint(QPainter::Antialiasing);
        if (!m_shadow.isNull())
            SoftShadow{double(t.raisedShadowBlur), t.raisedShadow, QPointF(0, t.raisedShadowOffset)}
                .paintFrame(painter, card, Theme::Radius::panel, SoftShadow::Inside::LeftOut);
        StylePainting::fillRounded(&painter, card, Theme::Radius::panel, t.raised, t.raisedEdge);
    }
    QPainter(this).drawPixmap(0, 0, m_ground);
}
