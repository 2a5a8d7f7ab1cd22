#pragma once

#include "settings/hot_key_action.h"

#include <QIcon>
#include <QObject>
#include <QSystemTrayIcon>
#include <functional>

class Activity;
class AppSettings;
class CaptureSettings;
class QMenu;

// The program's place in the desktop's tray: its icon, the menu with every command, the countdown of a delayed
// capture, and what is being recorded.
class StatusItem : public QObject {
    Q_OBJECT
public:
    // What the menu's entries do. An entry whose callback is empty is shown but can't be chosen.
    struct Actions {
        std::function<void(HotKeyAction)> perform;
        std::function<bool(HotKeyAction)> isAvailable;
        std::function<void()> openImage;
        std::function<void()> goToPin;
        std::function<void()> closePins;
        std::function<bool()> hasPins = [] { return false; };
        std::function<void()> showSettings;
        std::function<void()> showWelcome;
        std::function<void()> quit;
        // Opens or closes the capture panel beside the icon; empty geometry where the tray doesn't tell it.
        // Without it a click opens the menu.
        std::function<void(const QRect &icon)> togglePanel;
        // "open", "closed" …, for the log.
        std::function<QString()> panelState = [] { return QStringLiteral("closed"); };
        // Called at each click before anything else; true when a dialog wants the user first.
        std::function<bool()> bringDialogForward = [] { return false; };
    };

    StatusItem(Actions actions, const Activity &activity, const AppSettings &prefs, CaptureSettings &settings,
               QObject *parent = nullptr);
    ~StatusItem() override;

    // The program's picture, as its windows and the tray show it.
    static QIcon icon();

    void show();
    // " 3" in place of the icon while a delayed capture counts down; nothing for 0.
    void setCountdown(int seconds);
    // What stands beside the name: " ● 1:05" while a recording runs, " Steps". Empty for nothing.
    void setTitle(const QString &title);
    QString title() const { return m_title; }
    // The menu as it stands at this moment.
    QMenu &rebuiltMenu();

private:
    QIcon currentIcon() const;
    void update();
    void refill();
    void clicked(QSystemTrayIcon::ActivationReason reason);
    void addItem(const QString &title, const QString &symbol, HotKeyAction action);
    void addItem(const QString &title, const QString &symbol, const std::function<void()> &call);

    Actions m_actions;
    const Activity &m_activity;
    const AppSettings &m_prefs;
    CaptureSettings &m_settings;
    std::unique_ptr<QMenu> m_menu;
    QSystemTrayIcon m_tray;
    QString m_title;
    QString m_filledFor; // what the menu's entries were made of
    int m_countdown = 0;
};
