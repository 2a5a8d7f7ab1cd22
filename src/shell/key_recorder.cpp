#include "shell/key_recorder.h"

#include "platform/input_monitor.h"
#include "platform/modifier_keys.h"
#include "platform/sounds.h"
#include "settings/app_settings.h"
#include "shell/shortcut_words.h"
#include "shell/texts.h"
#include "ui/theme.h"

#include <QApplication>
#include <QKeyEvent>

namespace {

// How long a key may take from the device to this window: more than ten times what was measured on a busy
// two-core machine.
constexpr int kPatience = 250; // milliseconds
constexpr int kWidth = 148;    // the longest usual combination, without a change of width while listening

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

} // namespace

KeyRecorder::KeyRecorder(Ports ports, const KeyCombo &combo, QWidget *parent)
    : QPushButton(parent), m_ports(ports), m_combo(combo)
{
    setCheckable(true);
    setAutoDefault(false);
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatience);
    connect(this, &QAbstractButton::clicked, this, &KeyRecorder::toggle);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        if (const auto heard = std::exchange(m_heard, std::nullopt))
            Q_EMIT heardElsewhere(*heard);
    });
    refresh();
}

KeyRecorder::~KeyRecorder()
{
    stop();
}

QSize KeyRecorder::sizeHint() const
{
    return QPushButton::sizeHint().expandedTo({kWidth, Theme::Size::target});
}

void KeyRecorder::setCombo(const KeyCombo &combo)
{
    m_combo = combo;
    refresh();
}

void KeyRecorder::refresh()
{
    setChecked(m_isListening);
    setText(m_isListening ? ShellTexts::tr("Type shortcut…") : shortcutWords(m_combo));
}

void KeyRecorder::toggle()
{
    m_isListening ? stop() : start();
}

void KeyRecorder::start()
{
    m_isListening = true;
    setFocus(Qt::OtherFocusReason);
    m_ports.prefs.setRecordingShortcut(true);
    qApp->installEventFilter(this);
    // Where the session doesn't tell what is typed elsewhere, the field does without.
    auto monitor = m_ports.monitors.listen(InputEvent::Keys, [this](InputMonitor &listener) {
        connect(&listener, &InputMonitor::keyPressed, this, &KeyRecorder::hear, Qt::QueuedConnection);
    });
    if (monitor)
        m_monitor = std::move(*monitor);
    refresh();
    Q_EMIT listeningChanged(true);
}

void KeyRecorder::stop()
{
    if (!m_isListening)
        return;
    m_isListening = false;
    qApp->removeEventFilter(this);
    m_monitor.reset();
    m_patience.stop();
    m_heard.reset();
    m_ports.prefs.setRecordingShortcut(false);
    refresh();
    Q_EMIT listeningChanged(false);
}

bool KeyRecorder::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept(); // so that it comes as a key press, whatever shortcut of a window it is
        return true;
    }
    if (event->type() == QEvent::KeyRelease)
        return true;
    if (event->type() == QEvent::KeyPress) {
        // The window system's own delivery and the widget's are two events: one is enough.
        if (watched->isWidgetType())
            type(*static_cast<QKeyEvent *>(event));
        return watched->isWidgetType();
    }
    return QPushButton::eventFilter(watched, event);
}

void KeyRecorder::type(const QKeyEvent &event)
{
    m_patience.stop();
    m_heard.reset();
    m_sinceTyped.start();
    if (event.isAutoRepeat() || isModifier(event.key()))
        return;
    if (event.key() == Qt::Key_Escape)
        return stop();
    const auto combo = comboOf(event);
    if (!combo) {
        m_ports.sounds.beep();
        Q_EMIT refused(ShellTexts::tr("This key can't be part of a shortcut."));
        return;
    }
    if (combo->carbonModifiers == 0 && combo->keyCode != KeyCombo::kPrint) {
        m_ports.sounds.beep();
        Q_EMIT refused(ShellTexts::tr("A shortcut needs a modifier key as well."));
        return;
    }
    if (const QString objection = m_objection ? m_objection(*combo) : QString(); !objection.isEmpty()) {
        m_ports.sounds.beep();
        Q_EMIT refused(objection);
        return;
    }
    m_combo = *combo;
    // The choice is stored before the shortcuts are registered again.
    Q_EMIT chosen(m_combo);
    stop();
}

void KeyRecorder::hear(const KeyStroke &stroke)
{
    if (!m_isListening || stroke.isRepeat || stroke.keyCode < 0 || !window()->isActiveWindow())
        return;
    if (m_sinceTyped.isValid() && m_sinceTyped.elapsed() < kPatience)
        return; // that one arrived first
    m_heard = KeyCombo{stroke.keyCode, modifierFlags(stroke.modifiers)};
    m_patience.start();
}

void KeyRecorder::focusOutEvent(QFocusEvent *event)
{
    QPushButton::focusOutEvent(event);
    // A key that another program takes takes the focus away for a moment as well.
    if (event->reason() != Qt::ActiveWindowFocusReason)
        stop();
}

void KeyRecorder::hideEvent(QHideEvent *event)
{
    QPushButton::hideEvent(event);
    stop();
}
