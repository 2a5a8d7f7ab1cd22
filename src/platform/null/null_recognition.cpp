#include "platform/null/null_recognition.h"

#include "base/async.h"

QFuture<Result<QList<RecognizedLine>>> NullTextEngine::recognize(const QImage &, const QStringList &)
{
    return readyFuture<Result<QList<RecognizedLine>>>(fail(Error::Kind::Unavailable, m_reason));
}

QFuture<Result<QList<QRectF>>> NullFaceEngine::detect(const QImage &)
{
    return readyFuture<Result<QList<QRectF>>>(fail(Error::Kind::Unavailable, m_reason));
}

QFuture<Result<HttpResponse>> NullHttp::send(const HttpRequest &)
{
    return readyFuture<Result<HttpResponse>>(fail(Error::Kind::Unavailable, m_reason));
}
