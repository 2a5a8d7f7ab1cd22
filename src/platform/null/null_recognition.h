#pragma once

#include "platform/face_engine.h"
#include "platform/http.h"
#include "platform/text_engine.h"

// Engines and a network that aren't there; each answers with `reason`.
class NullTextEngine : public TextEngine {
public:
    explicit NullTextEngine(QString reason) : m_reason(std::move(reason)) {}
    QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                     const QStringList &languages) override;

private:
    QString m_reason;
};

class NullFaceEngine : public FaceEngine {
public:
    explicit NullFaceEngine(QString reason) : m_reason(std::move(reason)) {}
    QFuture<Result<QList<QRectF>>> detect(const QImage &image) override;

private:
    QString m_reason;
};

class NullHttp : public Http {
public:
    explicit NullHttp(QString reason) : m_reason(std::move(reason)) {}
    QFuture<Result<HttpResponse>> send(const HttpRequest &request) override;

private:
    QString m_reason;
};
