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
    // Shows it over all that its display shows.
    void cover();

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    CaptureOverlayController &m_controller;
    OverlayView *m_view;
};
