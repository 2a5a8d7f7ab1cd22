#pragma once

#include <QWidget>
#include <functional>

class AccentButton;
class AppSettings;
class Permissions;
class PermissionMonitor;
class QLabel;
class QPushButton;
class QStackedWidget;
class ShortcutHolders;

// The guide of the first start: what the program is for, what it may do here, and a first capture.
class WelcomeView : public QWidget {
    Q_OBJECT
public:
    struct Parts {
        AppSettings &prefs;
        Permissions &permissions;
        ShortcutHolders &holders;
        std::function<void()> tryCapture;
        std::function<void()> finish;
    };
    static constexpr int kPageCount = 3;

    explicit WelcomeView(Parts parts, QWidget *parent = nullptr);

    int page() const;
    void setPage(int page);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeIntro();
    QWidget *makePermissions();
    QWidget *makeTryIt();
    QWidget *makeControls();
    void showShortcut();

    class Dots;
    Parts m_parts;
    PermissionMonitor *m_monitor;
    QStackedWidget *m_pages;
    QPushButton *m_back;
    QPushButton *m_next;
    Dots *m_dots;
    QLabel *m_shortcut;
};
