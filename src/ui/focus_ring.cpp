#include "ui/focus_ring.h"

#include "ui/theme.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

namespace {

constexpr int kReach = 2 * Theme::Size::focusRing; // how far the ring's outer edge lies from the control

// The widget that clips the ring: a scroll area's viewport around the control, or its window.
QWidget *clippingAncestor(QWidget *widget)
{
    for (QWidget *parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
        const auto *area = qobject_cast<QAbstractScrollArea *>(parent->parentWidget());
        if (parent->isWindow() || (area && area->viewport() == parent))
            return parent;
    }
    return nullptr;
}

} // namespace

class FocusRing::Frame : public QWidget {
public:
    explicit Frame(QWidget *parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
    }
    qreal radius = Theme::Radius::control;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const auto &t = Theme::tokens(this);
        painter.setPen(QPen(t.dark ? t.accentText : t.accent, Theme::Size::focusRing));
        const qreal half = Theme::Size::focusRing / 2.0;
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius + kReach - half,
                                radius + kReach - half);
    }
};

FocusRing::FocusRing(QApplication &application)
{
    application.installEventFilter(this);
    connect(&application, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *now) { follow(now); });
}

FocusRing::~FocusRing()
{
    delete m_frame;
}

void FocusRing::follow(QWidget *widget)
{
    m_target = widget;
    place();
}

void FocusRing::setByKeyboard(bool byKeyboard)
{
    if (std::exchange(m_byKeyboard, byKeyboard) != byKeyboard)
        place();
}

void FocusRing::place()
{
    QWidget *widget = m_target;
    QWidget *parent = widget ? clippingAncestor(widget) : nullptr;
    bool shown = parent && widget->isVisible() && m_byKeyboard;
    const QVariant radius = shown ? widget->property("focusRadius") : QVariant();
    if (radius.isValid() && radius.toReal() < 0)
        shown = false;
    if (!shown) {
        if (m_frame)
            m_frame->hide();
        return;
    }
    if (!m_frame || m_frame->parentWidget() != parent) {
        delete m_frame;
        m_frame = new Frame(parent);
    }
    m_frame->radius = radius.isValid() ? radius.toReal() : Theme::Radius::control;
    const QVariant own = widget->property("focusRect");
    const QRect rect = own.isValid() ? own.toRect() : widget->rect();
    m_frame->setGeometry(
        QRect(widget->mapTo(parent, rect.topLeft()), rect.size()).adjusted(-kReach, -kReach, kReach, kReach));
    m_frame->raise();
    m_frame->show();
    m_frame->update();
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: // of a key that a shortcut takes
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_F6:
            setByKeyboard(true);
        }
        break;
    case QEvent::MouseButtonPress:
        setByKeyboard(false);
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::DynamicPropertyChange:
        // After the event has had its effect.
        if (auto *widget = qobject_cast<QWidget *>(watched);
            widget && m_target && (widget == m_target || widget->isAncestorOf(m_target)))
            QMetaObject::invokeMethod(this, &FocusRing::place, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
