#pragma once

#include "base/result.h"

#include <QFuture>
#include <QImage>
#include <QString>
#include <QUuid>
#include <array>

class AppSettings;
class Http;
struct HttpResponse;

// Sends one picture and one instruction to the Anthropic Messages API, with the user's own key, and gives
// back the reply as text. One request a call, no retry. The picture goes as a JPEG of at most 1568 pixels an
// edge.
class ClaudeClient {
public:
    enum class Action { Describe, Steps, AltText, Name, Caption };
    static constexpr std::array kAllActions{Action::Describe, Action::Steps, Action::AltText, Action::Name,
                                            Action::Caption};
    static QString title(Action action);
    static QString prompt(Action action);
    static QString effort(Action action);

    // Both outlive the client.
    ClaudeClient(Http &http, const AppSettings &settings);

    // Called on the main thread; the future may finish on another one. Fails at once, before any work on the
    // picture, without a key.
    QFuture<Result<QString>> ask(const QString &prompt, const QImage &image, const QString &effort);
    QFuture<Result<QString>> run(Action action, const QImage &image);

    // What a reply says.
    static Result<QString> read(const HttpResponse &response);

private:
    static QFuture<Result<QString>> send(Http &http, const QString &prompt, const QImage &image,
                                         const QString &effort, const QString &apiKey);

    Http &m_http;
    const AppSettings &m_settings;
};
