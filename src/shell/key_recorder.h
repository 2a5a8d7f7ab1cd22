#pragma once

#include "settings/key_combo.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

class AppSettings;
class InputMonitor;
class InputMonitors;
class Sounds;
struct KeyStroke;

// A field for a system-wide shortcut: it shows the combination, and listens for another one after a click. While
// it listens no shortcut of the program is active. Esc, a second click or the loss of the focus end that without
// a change. A key without a modifier is refused with a beep, but for Print.
class KeyRecorder : public QPushButton {
    Q_OBJECT
public:
    struct Ports {
        AppSettings &prefs;
        Sounds &sounds;
        InputMonitors &monitors;
    };
    // What stands against a combination, as a sentence; empty for nothing. Such a one is not taken.
    using Objection = std::function<QString(const KeyCombo &)>;

    KeyRecorder(Ports ports, const KeyCombo &combo, QWidget *parent = nullptr);
    ~KeyRecorder() override;

    KeyCombo combo() const { return m_combo; }
    void setCombo(const KeyCombo &combo);
    void setObjection(Objection objection) { m_objection = std::move(objection); }
    bool isListening() const { return m_isListening; }
    void toggle();
    QSize sizeHint() const override;

Q_SIGNALS:
    void chosen(const KeyCombo &combo);
    // A combination was typed that can't be had, for the reason given. The field goes on listening.
    void refused(const QString &reason);
    // It was typed but never arrived: another program has it. The field goes on listening.
    void heardElsewhere(const KeyCombo &combo);
    void listeningChanged(bool isListening);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void start();
    void stop();
    void type(const QKeyEvent &event);
    void hear(const KeyStroke &stroke);
    void refresh();

    Ports m_ports;
    KeyCombo m_combo;
    Objection m_objection;
    bool m_isListening = false;
    std::unique_ptr<InputMonitor> m_monitor; // what is typed, also where another program takes it
    std::optional<KeyCombo> m_heard;         // and has not reached this field yet
    QTimer m_patience;
    QElapsedTimer m_sinceTyped; // since a key reached this field
};
