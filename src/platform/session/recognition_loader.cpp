#include "platform/session/recognition_loader.h"

#include "base/async.h"
#include "base/loadable.h"
#include "platform/face_engine.h"
#include "platform/text_engine.h"

#include <mutex>

namespace {

// One engine of the module, made when first asked for and kept.
template <typename Engine>
class Lazy {
public:
    explicit Lazy(const char *symbol) : m_symbol(symbol) {}
    Result<Engine *> engine()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_engine) {
            const auto make = Loadable::function<Engine *(*)()>("platform_recognition", m_symbol);
            if (!make)
                return std::unexpected(make.error());
            m_engine.reset((*make)());
        }
        return m_engine.get();
    }

private:
    const char *m_symbol;
    std::mutex m_mutex;
    std::unique_ptr<Engine> m_engine;
};

class LazyTextEngine : public TextEngine {
public:
    QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                     const QStringList &languages) override
    {
        const auto engine = m_lazy.engine();
        if (!engine)
            return readyFuture(Result<QList<RecognizedLine>>(std::unexpected(engine.error())));
        return (*engine)->recognize(image, languages);
    }

private:
    Lazy<TextEngine> m_lazy{"lumenpost_text_engine"};
};

class LazyFaceEngine : public FaceEngine {
public:
    QFuture<Result<QList<QRectF>>> detect(const QImage &image) override
    {
        const auto engine = m_lazy.engine();
        if (!engine)
            return readyFuture(Result<QList<QRectF>>(std::unexpected(engine.error())));
        return (*engine)->detect(image);
    }

private:
    Lazy<FaceEngine> m_lazy{"lumenpost_face_engine"};
};

} // namespace

std::unique_ptr<TextEngine> makeTextEngine()
{
    return std::make_unique<LazyTextEngine>();
}

std::unique_ptr<FaceEngine> makeFaceEngine()
{
    return std::make_unique<LazyFaceEngine>();
}
