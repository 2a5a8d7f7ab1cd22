#include "platform/null/null_input.h"

#include "base/async.h"

NullPointerControl::NullPointerControl(QString reason) : m_reason(std::move(reason)) {}

QFuture<Result<void>> NullPointerControl::wheel(int)
{
    return readyFuture<Result<void>>(fail(Error::Kind::Unavailable, m_reason));
}

NullHotKeys::NullHotKeys(QString reason) : m_reason(std::move(reason)) {}

Result<void> NullHotKeys::registerKey(quint32, int, int)
{
    return fail(Error::Kind::Unavailable, m_reason);
}

NullPressPictures::NullPressPictures(QString reason) : m_reason(std::move(reason)) {}

Result<void> NullPressPictures::start()
{
    return fail(Error::Kind::Unavailable, m_reason);
}
