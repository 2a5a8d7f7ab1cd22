#include "capture/ui/keyboard_hold.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

namespace {

// Milliseconds until the keyboard is asked for again: the key of the shortcut itself is held for about 100.
constexpr int kAgain = 15;

bool canHoldKeyboard()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace

KeyboardHold::KeyboardHold(QWidget &widget) : m_widget(&widget)
{
    m_again.setSingleShot(true);
    m_again.setInterval(kAgain);
    connect(&m_again, &QTimer::timeout, this, &KeyboardHold::take);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &KeyboardHold::returnFrom);
    m_widget->activateWindow();
    m_widget->setFocus();
    take();
}

KeyboardHold::~KeyboardHold()
{
    if (m_widget)
        m_widget->releaseKeyboard();
}

void KeyboardHold::take()
{
    if (!m_widget || !canHoldKeyboard())
        return;
    m_widget->grabKeyboard(); // our own windows hand their keys on from now on
    QWindow *window = m_widget->window()->windowHandle();
    if (!window || !window->setKeyboardGrabEnabled(true))
        m_again.start();
}

// Shortcuts of another window of ours would come before the widget's keys.
void KeyboardHold::returnFrom(QWindow *focused)
{
    if (!focused || focused->flags().testFlag(Qt::BypassWindowManagerHint))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_widget)
                m_widget->activateWindow();
        },
        Qt::QueuedConnection);
}
