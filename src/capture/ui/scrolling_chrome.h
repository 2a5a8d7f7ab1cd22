#pragma once

#include "ui/hud_panel.h"

#include <QList>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <memory>

class NumberLabel;
class QKeyEvent;
class QLabel;
class QPushButton;
class RegionFrameWindow;
class ScrollingCaptureSession;

// The row in the floating panel of a scrolling capture: what goes on, what was gained, "Done", and "Go On" at
// the limit.
class ScrollHUDView : public QWidget {
    Q_OBJECT
public:
    explicit ScrollHUDView(ScrollingCaptureSession &session, QWidget *parent = nullptr);

    // "12 frames · 4,812 px".
    static QString gained(int frames, qint64 rows);

private:
    void refresh();

    ScrollingCaptureSession &m_session;
    QLabel *m_message;
    NumberLabel *m_gained;
    QPushButton *m_goOn;
};

// The border and the panel of a running session: shown as long as it shoots. Neither gets into the shots.
// Windows of this program that lie over the middle of the region, where the wheel is turned, step aside
// meanwhile. While the session scrolls by itself, Return ends it and Esc gives it up.
class ScrollingChrome : public QObject {
    Q_OBJECT
public:
    // `session` must outlive it.
    explicit ScrollingChrome(ScrollingCaptureSession &session, QObject *parent = nullptr);
    ~ScrollingChrome() override;

    void show();

    RegionFrameWindow &frameWindow() { return *m_frameWindow; }
    HUDPanel &hud() { return *m_hud; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void hide();
    void holdKeys();
    bool key(const QKeyEvent &event);
    void clearTheWay(const QPoint &target);
    void putWindowsBack();

    ScrollingCaptureSession &m_session;
    std::unique_ptr<RegionFrameWindow> m_frameWindow;
    std::unique_ptr<HUDPanel> m_hud;
    QTimer m_holdAgain;
    bool m_holdsKeys = false;
    bool m_wasAtLimit = false;
    QList<QPointer<QWidget>> m_moved; // own windows that would have caught the wheel
};
