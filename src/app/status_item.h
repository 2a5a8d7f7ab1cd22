#pragma once

#include "settings/hot_key_action.h"

#include <QIcon>
#include <QObject>
#include <QSystemTrayIcon>
#include <functional>

class AppSettings;
class CaptureSettings;
class QMenu;

// The program's place in the desktop's tray: its icon, the menu with every command, and the countdown of a
// delayed capture.
class StatusItem : public QObject {
    Q_OBJECT
public:
    // What the menu's entries do. An entry whose callback is empty is shown but can't be chosen.
    struct Actions {
        std::function<void(HotKeyAction)> perform;
        std::function<bool(HotKeyAction)> isAvailable;
        std::function<void()> openImage;
        std::function<void()> closePins;
        std::function<bool()> hasPins = [] { return false; };
        std::function<void()> showSettings;
        std::function<void()> showWelcome;
        std::function<void()> quit;
        // Called at each click before anything else; true when a dialog wants the user first.
        std::function<bool()> bringDialogForward = [] { return false; };
    };

    StatusItem(Actions actions, const AppSettings &prefs, CaptureSettings &settings,
               QObject *parent = nullptr);
    ~StatusItem() override;

    // The program's picture, as its windows and the tray show it. `countdown` above 0 shows that number
    // instead.
    static QIcon icon(int countdown = 0);

    void show();
    // " 3" beside the icon while a delayed capture counts down; nothing for 0.
    void setCountdown(int seconds);
    // The menu as it stands at this moment.
    QMenu &rebuiltMenu();

private:
    void clicked(QSystemTrayIcon::ActivationReason reason);
    void addItem(const QString &title, const QString &symbol, HotKeyAction action);
    void addItem(const QString &title, const QString &symbol, const std::function<void()> &call);
    Actions m_actions;
    const AppSettings &m_prefs;
    CaptureSettings &m_settings;
    std::unique_ptr<QMenu> m_menu;
    QSystemTrayIcon m_tray;
};
