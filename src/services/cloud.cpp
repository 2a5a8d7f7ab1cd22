#include "services/cloud.h"

#include "services/texts.h"

Error CloudError::refused(const std::optional<QString> &explanation)
{
    return {Error::Kind::Failed,
            explanation ? ServicesTexts::tr("Claude declined this request: %1").arg(*explanation)
                        : ServicesTexts::tr("Claude declined this request."),
            {}};
}

Error CloudError::api(const QString &message)
{
    return {Error::Kind::Failed, message, {}};
}

Error CloudError::missingAPIKey()
{
    return {
        Error::Kind::Denied, ServicesTexts::tr("Add your Anthropic API key in Settings › AI & Sharing."), {}};
}

Error CloudError::missingImgurID()
{
    return {Error::Kind::Denied, ServicesTexts::tr("Add an Imgur Client ID in Settings › AI & Sharing."), {}};
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
