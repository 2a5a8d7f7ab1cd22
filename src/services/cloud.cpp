#include "services/cloud.h"

Error CloudError::refused(const std::optional<QString> &explanation)
{
    return {Error::Kind::Failed,
            "Claude declined this request" + (explanation ? ": " + *explanation : QString(".")),
            {}};
}

Error CloudError::api(const QString &message)
{
    return {Error::Kind::Failed, message, {}};
}

Error CloudError::missingAPIKey()
{
    return {Error::Kind::Denied, "Add your Anthropic API key in Settings › AI & Sharing.", {}};
}

Error CloudError::missingImgurID()
{
    return {Error::Kind::Denied, "Add an Imgur Client ID in Settings › AI & Sharing.", {}};
}

QUrl serviceUrl(const char *variable, const QString &standard, const QString &path)
{
    const QUrl given(qEnvironmentVariable(variable), QUrl::StrictMode);
    const bool usable = (given.scheme() == "http" || given.scheme() == "https") && !given.host().isEmpty();
    QUrl url(standard, QUrl::StrictMode);
    if (usable) {
        url.setScheme(given.scheme());
        url.setHost(given.host());
        url.setPort(given.port());
    }
    url.setPath(path);
    return url;
}
