#pragma once

#include "base/async.h"
#include "platform/face_engine.h"
#include "platform/http.h"
#include "platform/text_engine.h"

// Answers every picture with the same lines, and remembers what it was asked.
class FakeTextEngine : public TextEngine {
public:
    QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                     const TextLanguages &languages) override
    {
        sizes.append(image.size());
        asked = languages.preferred;
        return pending ? *pending : readyFuture(answer);
    }

    Result<QList<RecognizedLine>> answer;
    std::optional<QFuture<Result<QList<RecognizedLine>>>> pending; // instead of the answer
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
    enum class Failure { Silence, HalfAReply, NoConnection, NoSuchHost };
    static Result<HttpResponse> failed(Failure failure)
    {
        switch (failure) {
        case Failure::Silence:
            return fail(QStringLiteral("server.example didn't answer in time."));
        case Failure::HalfAReply:
            return fail(
                QStringLiteral("server.example closed the connection before its answer was complete."));
        case Failure::NoConnection:
            return fail(QStringLiteral("server.example refuses the connection."));
        case Failure::NoSuchHost:
            return fail(QStringLiteral("server.example can't be found; is this machine connected?"));
        }
        Q_UNREACHABLE();
    }

    QFuture<Result<HttpResponse>> send(const HttpRequest &request) override
    {
        for (const auto &[name, value] : request.headers)
            for (const char control : {'\r', '\n', '\0'})
                if (name.contains(control) || value.contains(control))
                    return readyFuture<Result<HttpResponse>>(
                        fail(Error::Kind::Invalid, QStringLiteral("A line break can't be part of it.")));
        requests.append(request);
        if (answers.isEmpty())
            return readyFuture(failed(Failure::NoConnection));
        return readyFuture(answers.size() > 1 ? answers.takeFirst() : answers.first());
    }

    QList<Result<HttpResponse>> answers;
    QList<HttpRequest> requests;
};
