#pragma once

#include "base/result.h"
#include "platform/screens.h"

#include <QFuture>
#include <QImage>

enum class Pointer { Hidden, Shown };
// Of a window: with the title bar and frame that the window manager drew, or what the program itself drew.
enum class WindowPart { Framed, ClientArea };

// Pictures of what is on the screen, in backing pixels, opaque (QImage::Format_RGB32 or an ARGB format for a
// window with transparent parts), with a device pixel ratio of 1. This program's own windows never appear in
// any of them, and need not be hidden first.
class ScreenPictures {
public:
    struct Capabilities {
        bool displays = false;
        bool windows = false;     // one window alone, also when covered
        bool excludesOwn = false; // own windows are left out without being hidden
        QString reason;           // what the user can do about what is missing
    };

    virtual ~ScreenPictures() = default;
    virtual Capabilities capabilities() const = 0;

    // Error::Kind::NotFound when the screen is gone, or is no longer as it was told.
    virtual QFuture<Result<QImage>> display(const Screen &screen, Pointer pointer) = 0;
    // `region` in points from the screen's top left. The picture has scale × size pixels, truncated.
    // Error::Kind::NotFound when the screen is gone.
    virtual QFuture<Result<QImage>> region(const Screen &screen, const QRectF &region, Pointer pointer) = 0;
    // The window alone, without what lies over it and without its shadow; where it has a shape, what lies
    // outside of that is transparent. Error::Kind::NotFound when it is gone.
    virtual QFuture<Result<QImage>> window(quint32 id, Pointer pointer,
                                           WindowPart part = WindowPart::Framed) = 0;
};
