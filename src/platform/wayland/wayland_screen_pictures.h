#pragma once

#include "platform/screen_pictures.h"

#include <QThreadPool>
#include <memory>

class WaylandPhotographer;
class WaylandWindows;

// Pictures of a Wayland session's screens. Every picture is taken on one worker thread, in the order it was
// asked for.
class WaylandScreenPictures : public ScreenPictures {
public:
    explicit WaylandScreenPictures(std::shared_ptr<WaylandWindows> windows);
    ~WaylandScreenPictures() override;
    Capabilities capabilities() const override;
    QFuture<Result<QImage>> display(const Screen &screen, Pointer pointer) override;
    QFuture<Result<QImage>> region(const Screen &screen, const QRectF &region, Pointer pointer) override;
    QFuture<Result<QImage>> window(quint32 id, Pointer pointer,
                                   WindowPart part = WindowPart::Framed) override;

private:
    template <typename Work>
    QFuture<Result<QImage>> take(Work work);
    Result<WaylandPhotographer *> photographer();

    std::shared_ptr<WaylandWindows> m_windows;           // may be null
    std::unique_ptr<WaylandPhotographer> m_photographer; // worker thread only
    QThreadPool m_worker;
};
