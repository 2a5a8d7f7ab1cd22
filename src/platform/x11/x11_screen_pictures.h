#pragma once

#include "platform/screen_pictures.h"

#include <QThreadPool>
#include <memory>

class OwnWindowTrails;
class QTimer;
class X11Photographer;

// Pictures of an X server's screen. Every picture is taken on one worker thread, in the order it was asked
// for.
class X11ScreenPictures : public ScreenPictures {
public:
    X11ScreenPictures();
    ~X11ScreenPictures() override;
    Capabilities capabilities() const override;
    QFuture<Result<QImage>> display(const Screen &screen, Pointer pointer) override;
    QFuture<Result<QImage>> region(const Screen &screen, const QRectF &region, Pointer pointer) override;
    QFuture<Result<QImage>> window(quint32 id, Pointer pointer,
                                   WindowPart part = WindowPart::Framed) override;

private:
    template <typename Work>
    QFuture<Result<QImage>> take(Work work);
    template <typename Work>
    QFuture<Result<QImage>> takeWithoutOurs(Work work);
    Result<X11Photographer *> photographer();
    void watchOwnWindows();

    std::unique_ptr<QTimer> m_idle;                  // gives memory back after the last picture
    std::unique_ptr<OwnWindowTrails> m_trails;       // once there may be windows
    std::unique_ptr<X11Photographer> m_photographer; // worker thread only
    QThreadPool m_worker;
};
