#include "services/uploader.h"

#include "base/async.h"
#include "base/json.h"
#include "document/image_files.h"
#include "platform/http.h"
#include "services/cloud.h"
#include "services/texts.h"
#include "settings/app_settings.h"

#include <QUuid>
#include <chrono>

namespace {

constexpr std::chrono::seconds kTimeout{60};

// Blanks and tabs at both ends; line feeds stay.
QString withoutOuterBlanks(QString text)
{
    const auto isBlank = [](QChar c) { return c == '\t' || c.category() == QChar::Separator_Space; };
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    while (!text.isEmpty() && isBlank(text.front()))
        text.remove(0, 1);
    return text;
}

HttpRequest request(const QString &clientID, const QByteArray &png)
{
    const QByteArray boundary =
        "Lumenpost-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper();
    return {
        .method = "POST",
        .url = serviceUrl("LUMENPOST_UPLOAD_URL", "https://api.imgur.com", "/3/image"),
        .headers = {{"Authorization", "Client-ID " + clientID.toUtf8()},
                    {"Content-Type", "multipart/form-data; boundary=" + boundary}},
        .body = Uploader::body(boundary, png),
        .timeout = kTimeout,
    };
}

} // namespace

Uploader::Uploader(Http &http, const AppSettings &settings) : m_http(http), m_settings(settings) {}

QFuture<Result<QUrl>> Uploader::imgur(const QImage &image)
{
    const QString clientID = withoutOuterBlanks(m_settings.imgurClientID());
    if (clientID.isEmpty())
        return readyFuture(Result<QUrl>(std::unexpected(CloudError::missingImgurID())));
    return runInBackground([image] { return ImageFiles::encode(image, ImageFiles::Type::Png); })
        .then(QtFuture::Launch::Sync,
              [&http = m_http, clientID](const QByteArray &png) {
                  if (png.isEmpty())
                      return readyFuture(Result<HttpResponse>(
                          std::unexpected(CloudError::api(ServicesTexts::tr("Couldn't encode the image.")))));
                  return http.send(request(clientID, png));
              })
        .unwrap()
        .then(QtFuture::Launch::Sync, [](const Result<HttpResponse> &response) -> Result<QUrl> {
            if (!response)
                return std::unexpected(response.error());
            return read(*response);
        });
}

QByteArray Uploader::body(const QByteArray &boundary, const QByteArray &png)
{
    return "--" + boundary + "\r\n" +
           "Content-Disposition: form-data; name=\"image\"; filename=\"capture.png\"\r\n"
           "Content-Type: image/png\r\n\r\n" +
           png + "\r\n--" + boundary + "--\r\n";
}

Result<QUrl> Uploader::read(const HttpResponse &response)
{
    const QJsonObject data = QJsonDocument::fromJson(response.body).object()["data"].toObject();
    if (const auto link = Json::string(data, "link"); response.status == 200 && link) {
        const QUrl url(*link, QUrl::StrictMode);
        if (url.isValid() && !url.isEmpty())
            return url;
    }
    auto message = Json::string(data, "error");
    if (!message)
        message = Json::string(data["error"].toObject(), "message");
    return std::unexpected(CloudError::api(message.value_or(ServicesTexts::tr("Imgur upload failed."))));
}
