#include "platform/session/recognition_loader.h"

#include "base/async.h"
#include "platform/face_engine.h"
#include "platform/session/lazy_part.h"
#include "platform/text_engine.h"

namespace {

class LazyTextEngine : public TextEngine {
public:
    QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                     const TextLanguages &languages) override
    {
        const auto engine = m_lazy.get();
        if (!engine)
            return readyFuture(Result<QList<RecognizedLine>>(std::unexpected(engine.error())));
        return (*engine)->recognize(image, languages);
    }

private:
    LazyPart<TextEngine> m_lazy{"platform_recognition", "lumenpost_text_engine"};
};

class LazyFaceEngine : public FaceEngine {
public:
    QFuture<Result<QList<QRectF>>> detect(const QImage &image) override
    {
        const auto engine = m_lazy.get();
        if (!engine)
            return readyFuture(Result<QList<QRectF>>(std::unexpected(engine.error())));
        return (*engine)->detect(image);
    }

private:
    LazyPart<FaceEngine> m_lazy{"platform_recognition", "lumenpost_face_engine"};
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
