#pragma once

#include "platform/screens.h"
#include "ui/hud_panel.h"

#include <QList>
#include <QObject>
#include <QWidget>
#include <memory>

class NumberLabel;
class QBoxLayout;
class QPushButton;
class RegionFrameWindow;

// The row in the floating panel of a recording: the time, "Draw", "Pause" or "Resume", and "Stop Recording".
class RecordingHUDView : public QWidget {
    Q_OBJECT
public:
    enum class Look { Waiting, Running, Paused };

    // `stopShortcut` is shown with the help of "Stop Recording"; empty for none.
    explicit RecordingHUDView(const QString &stopShortcut, QWidget *parent = nullptr);

    void setLook(Look look);
    // Seconds of film.
    void setElapsed(double seconds);
    // Drawing brings a button along that erases.
    void setDrawing(bool isDrawing);

Q_SIGNALS:
    void drawToggled(bool isDrawing);
    void clearClicked();
    void pauseClicked();
    void resumeClicked();
    void stopClicked();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void addDrawing(QBoxLayout *row);

    Look m_look = Look::Waiting;
    NumberLabel *m_time;
    QPushButton *m_draw;
    QPushButton *m_clear;
    QPushButton *m_pause;
};

// The border around the part of a screen that is filmed, and the panel of the recording. Both are to be kept
// out of the film.
class RecordingChrome : public QObject {
    Q_OBJECT
public:
    // `rect` in points from the screen's top left. A whole screen gets no border.
    RecordingChrome(const Screen &screen, const QRectF &rect, const QString &stopShortcut,
                    QObject *parent = nullptr);
    ~RecordingChrome() override;

    void show();
    void hide();
    // Their native ids.
    QList<quint32> windows() const;

    RecordingHUDView &view() { return *m_view; }
    HUDPanel &hud() { return *m_hud; }
    // Null when a whole screen is filmed.
    RegionFrameWindow *frameWindow() { return m_frameWindow.get(); }

private:
    RecordingHUDView *m_view; // in the panel
    std::unique_ptr<RegionFrameWindow> m_frameWindow;
    std::unique_ptr<HUDPanel> m_hud;
};
