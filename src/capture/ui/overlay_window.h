#pragma once

#include "capture/screen_capturer.h"

#include <QWidget>

class CaptureOverlayController;
class OverlayView;

// Covers one display, above everything, with the overlay's view of its frozen picture.
class OverlayWindow : public QWidget {
    Q_OBJECT
public:
    OverlayWindow(const DisplaySnapshot &snapshot, CaptureOverlayController &controller);

    OverlayView &overlayView() { return *m_view; }
    // Takes the keyboard.
    void makeKey();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    OverlayView *m_view;
};
