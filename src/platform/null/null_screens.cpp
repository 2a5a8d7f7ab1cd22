#include "platform/null/null_screens.h"

#include "base/async.h"

NullScreenPictures::NullScreenPictures(QString reason) : m_reason(std::move(reason)) {}

ScreenPictures::Capabilities NullScreenPictures::capabilities() const
{
    return {.displays = false, .windows = false, .excludesOwn = false, .reason = m_reason};
}

QFuture<Result<QImage>> NullScreenPictures::refusal() const
{
    return readyFuture<Result<QImage>>(fail(Error::Kind::Unavailable, m_reason));
}

QFuture<Result<QImage>> NullScreenPictures::display(const Screen &, Pointer)
{
    return refusal();
}

QFuture<Result<QImage>> NullScreenPictures::region(const Screen &, const QRectF &, Pointer)
{
    return refusal();
}

QFuture<Result<QImage>> NullScreenPictures::window(quint32, Pointer, WindowPart)
{
    return refusal();
}
