#pragma once

#include "base/result.h"
#include "platform/screen_pictures.h"

#include <QFuture>
#include <QImage>
#include <QList>

enum class CaptureError { WindowNotFound, NoDisplays };

// The failure as the user reads it.
Error captureError(CaptureError error);

// What a screen showed at one moment, in backing pixels.
struct DisplaySnapshot {
    Screen screen;
    QImage image;
};

// Pictures of displays, windows and regions, and the windows that can be picked. This program's own windows
// are in none of them. Keeps no state; errors of the machine pass through unchanged.
class ScreenCapturer {
public:
    ScreenCapturer(const Screens &screens, ScreenPictures &pictures);

    // CaptureError::NoDisplays, in the words of the machine where it knows what the user can do about it.
    Error noDisplays() const;
    // Ordinary windows of other programs, front to back, tiny ones left out.
    QList<WindowInfo> onScreenWindows() const;
    // Every display, taken one right after the other; the first error leaves the whole operation.
    QFuture<Result<QList<DisplaySnapshot>>> captureAllDisplays(Pointer pointer);
    // One window alone, whatever lies over it, without a shadow.
    QFuture<Result<QImage>> captureWindow(quint32 id, Pointer pointer, WindowPart part = WindowPart::Framed);
    // The screen as it is now, to be used for each shot of a session; CaptureError::NoDisplays when it is
    // gone.
    Result<Screen> displayFilter(const Screen &screen) const;
    // `rect` in points from the display's top left; without the pointer.
    QFuture<Result<QImage>> captureRegion(const QRectF &rect, const Screen &display);
    // What all displays show of a region in global points, as one picture at the sharpest of their scales.
    // Between displays it is black. Error::Kind::NotFound when no display shows anything of it.
    QFuture<Result<QImage>> captureArea(const QRectF &region, Pointer pointer);

private:
    const Screens &m_screens;
    ScreenPictures &m_pictures;
};
