#pragma once

#include "platform/input_monitor.h"

#include <QList>
#include <QObject>
#include <QRectF>
#include <memory>

class Cameras;
class DrawOverlayWindow;
class InputMonitors;
class KeyBadgePanel;
class NoticeBoard;
class RippleWindow;
class WebcamBubbleWindow;
class Workspace;

// What explains a film while it is made, on the real screen, so that it is filmed like everything else: a
// ripple at each click, a badge with each shortcut, a camera's picture, strokes that are drawn. Lives as long
// as the recording.
class LiveExtras : public QObject {
    Q_OBJECT
public:
    struct Ports {
        InputMonitors &inputs;
        Cameras &cameras;
        Workspace &workspace;
        NoticeBoard &notices;
    };
    struct Wish {
        bool clicks = false;
        bool keys = false;
        bool webcam = false;
    };

    // `region` is what is filmed, in global points.
    LiveExtras(const Ports &ports, const QRectF &region, const Wish &wish, QObject *parent = nullptr);
    ~LiveExtras() override;

    // While drawing, the pointer draws on the region instead of reaching what is there. Leaving erases it
    // all.
    void setDrawing(bool isDrawing);
    void clearDrawing();

Q_SIGNALS:
    // By Esc.
    void drawingEnded();

private:
    bool isDrawing() const { return m_drawing != nullptr; }
    void listen(InputEvents events);
    void showRipple(const PointerPress &press);
    void showKey(const KeyStroke &stroke);

    Ports m_ports;
    QRectF m_region;
    std::unique_ptr<InputMonitor> m_monitor;
    std::unique_ptr<KeyBadgePanel> m_badge;
    std::unique_ptr<WebcamBubbleWindow> m_webcam;
    std::unique_ptr<DrawOverlayWindow> m_drawing;
};
