#include "services/claude_client.h"

#include "base/async.h"
#include "base/json.h"
#include "document/image_files.h"
#include "platform/http.h"
#include "services/cloud.h"
#include "services/texts.h"
#include "settings/app_settings.h"

#include <chrono>

namespace {

constexpr double kMaxEdge = 1568; // the service scales larger pictures down itself
constexpr double kJpegQuality = 0.85;
constexpr int kMaxTokens = 16000;
constexpr std::chrono::seconds kTimeout{120};

HttpRequest request(const QString &prompt, const QByteArray &jpeg, const QString &effort,
                    const QString &apiKey)
{
    const QJsonObject source{
        {"type", "base64"}, {"media_type", "image/jpeg"}, {"data", QString::fromLatin1(jpeg.toBase64())}};
    const QJsonArray content{QJsonObject{{"type", "image"}, {"source", source}},
                             QJsonObject{{"type", "text"}, {"text", prompt}}};
    const QJsonObject body{
        {"model", "claude-opus-5-5"},
        {"max_tokens", kMaxTokens},
        {"fallbacks", "default"},
        {"output_config", QJsonObject{{"effort", effort}}},
        {"messages", QJsonArray{QJsonObject{{"role", "user"}, {"content", content}}}},
    };
    return {
        .method = "POST",
        .url = serviceUrl("LUMENPOST_MESSAGES_URL", "https://api.anthropic.com", "/v1/messages"),
        .headers = {{"content-type", "application/json"},
                    {"x-api-key", apiKey.toUtf8()},
                    {"anthropic-version", "2023-06-01"},
                    {"anthropic-beta", "server-side-fallback-2026-07-01"}},
        .body = QJsonDocument(body).toJson(QJsonDocument::Compact),
        .timeout = kTimeout,
    };
}

// The lines of a long text as one.
QString oneLine(const char *text)
{
    return QString::fromUtf8(text).simplified();
}

} // namespace

QString ClaudeClient::title(Action action)
{
    switch (action) {
    case Action::Describe:
        return ServicesTexts::tr("Describe");
    case Action::Steps:
        return ServicesTexts::tr("Step-by-Step Instructions");
    case Action::AltText:
        return ServicesTexts::tr("Alt Text");
    case Action::Name:
        return ServicesTexts::tr("Suggested Name");
    case Action::Caption:
        return ServicesTexts::tr("Caption");
    }
    Q_UNREACHABLE();
}

QString ClaudeClient::prompt(Action action)
{
    switch (action) {
    case Action::Describe:
        return oneLine(
            R"(Describe what this screenshot shows: the app or site, what's on screen, and anything notable or
        unusual. Be concise and concrete.)");
    case Action::Steps:
        return oneLine(
            R"(This screenshot is part of a how-to. Write clear numbered step-by-step instructions a reader
        could follow to reach or use what's shown. If there are numbered step markers on the image,
        follow their order. Reply with the steps only.)");
    case Action::AltText:
        return oneLine(
            R"(Write alt text for this screenshot: one or two sentences, under 250 characters, describing the
        essential content for someone who can't see it. Reply with the alt text only.)");
    case Action::Name:
        return oneLine(
            R"(Suggest a short descriptive file name for this screenshot: 3 to 6 words, Title Case, no file
        extension, no punctuation other than spaces and hyphens. Reply with the name only.)");
    case Action::Caption:
        return oneLine(
            R"(Write one short sentence (at most 20 words) describing what this screenshot shows, as a caption
        in a how-to document. Reply with the caption only.)");
    }
    Q_UNREACHABLE();
}

QString ClaudeClient::effort(Action action)
{
    switch (action) {
    case Action::Describe:
    case Action::Steps:
        return "medium";
    case Action::AltText:
    case Action::Name:
    case Action::Caption:
        return "low";
    }
    Q_UNREACHABLE();
}

ClaudeClient::ClaudeClient(Http &http, const AppSettings &settings) : m_http(http), m_settings(settings) {}

QFuture<Result<QString>> ClaudeClient::send(Http &http, const QString &prompt, const QImage &image,
                                            const QString &effort, const QString &apiKey)
{
    return runInBackground([image] { return ImageFiles::jpegData(image, kMaxEdge, kJpegQuality); })
        .then(QtFuture::Launch::Sync,
              [&http, prompt, effort, apiKey](const QByteArray &jpeg) {
                  if (jpeg.isEmpty())
                      return readyFuture(Result<HttpResponse>(
                          std::unexpected(CloudError::api(ServicesTexts::tr("Couldn't encode the image.")))));
                  return http.send(request(prompt, jpeg, effort, apiKey));
              })
        .unwrap()
        .then(QtFuture::Launch::Sync, [](const Result<HttpResponse> &response) -> Result<QString> {
            if (!response)
                return std::unexpected(response.error());
            return read(*response);
        });
}

QFuture<Result<QString>> ClaudeClient::ask(const QString &prompt, const QImage &image, const QString &effort)
{
    return m_settings.apiKey(SecretsAccess::MayAsk)
        .then(QtFuture::Launch::Sync,
              [&http = m_http, prompt, image, effort](const Result<QString> &apiKey) {
                  if (!apiKey)
                      return readyFuture(apiKey);
                  if (apiKey->isEmpty())
                      return readyFuture(Result<QString>(std::unexpected(CloudError::missingAPIKey())));
                  return send(http, prompt, image, effort, *apiKey);
              })
        .unwrap();
}

QFuture<Result<QString>> ClaudeClient::run(Action action, const QImage &image)
{
    return ask(prompt(action), image, effort(action));
}

Result<QString> ClaudeClient::read(const HttpResponse &response)
{
    const QJsonObject reply = QJsonDocument::fromJson(response.body).object();
    if (response.status != 200) {
        const auto message = Json::string(reply["error"].toObject(), "message");
        return std::unexpected(CloudError::api(
            message.value_or(ServicesTexts::tr("Claude API error (HTTP %1).").arg(response.status))));
    }
    if (reply["stop_reason"].toString() == "refusal")
        return std::unexpected(
            CloudError::refused(Json::string(reply["stop_details"].toObject(), "explanation")));
    // A list that holds anything but blocks isn't the service's.
    const QJsonArray content = reply["content"].toArray();
    QString text;
    if (std::ranges::all_of(content, &QJsonValueConstRef::isObject))
        for (const QJsonValue &block : content)
            if (block["type"].toString() == "text")
                text += block["text"].toString();
    return text.trimmed();
}
