#pragma once

#include "base/async.h"
#include "platform/face_engine.h"
#include "platform/http.h"
#include "platform/text_engine.h"

// Answers every picture with the same lines, and remembers what it was asked.
class FakeTextEngine : public TextEngine {
public:
    QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                     const QStringList &languages) override
    {
        sizes.append(image.size());
        asked = languages;
        return readyFuture(answer);
    }

    Result<QList<RecognizedLine>> answer;
    QList<QSize> sizes; // of the pictures it was given
    QStringList asked;
};

class FakeFaceEngine : public FaceEngine {
public:
    QFuture<Result<QList<QRectF>>> detect(const QImage &image) override
    {
        sizes.append(image.size());
        return readyFuture(answer);
    }

    Result<QList<QRectF>> answer;
    QList<QSize> sizes;
};

// A web server that answers from a list, in order; the last answer serves for ever.
class FakeHttp : public Http {
public:
    QFuture<Result<HttpResponse>> send(const HttpRequest &request) override
    {
        requests.append(request);
        if (answers.isEmpty())
            return readyFuture<Result<HttpResponse>>(fail(QStringLiteral("No connection.")));
        return readyFuture(answers.size() > 1 ? answers.takeFirst() : answers.first());
    }

    QList<Result<HttpResponse>> answers;
    QList<HttpRequest> requests;
};
