#include "platform/null/null_desktop.h"

#include <algorithm>

namespace {

const QString kText = QStringLiteral("text/plain;charset=utf-8");
const QString kFiles = QStringLiteral("text/uri-list");

} // namespace

NullWorkspace::NullWorkspace(QString reason) : m_reason(std::move(reason)) {}

Result<void> NullWorkspace::open(const QUrl &)
{
    return fail(Error::Kind::Unavailable, m_reason);
}

Result<void> NullWorkspace::reveal(const QString &)
{
    return fail(Error::Kind::Unavailable, m_reason);
}

void NullPasteboard::setText(const QString &text)
{
    setFlavors({{kText, text.toUtf8()}});
}

void NullPasteboard::setFile(const QUrl &file)
{
    setFlavors({{kFiles, file.toEncoded() + "\r\n"}});
}

bool NullPasteboard::has(const QString &mimeType) const
{
    return std::any_of(m_flavors.begin(), m_flavors.end(),
                       [&mimeType](const Flavor &flavor) { return flavor.first == mimeType; });
}

QByteArray NullPasteboard::data(const QString &mimeType) const
{
    for (const auto &[type, bytes] : m_flavors) {
        if (type == mimeType)
            return bytes;
    }
    return {};
}

QString NullPasteboard::text() const
{
    return QString::fromUtf8(data(kText));
}

bool NullPasteboard::hasImage() const
{
    return !image().isNull();
}

QImage NullPasteboard::image() const
{
    for (const auto &[type, bytes] : m_flavors) {
        if (type.startsWith(QLatin1String("image/")))
            return QImage::fromData(bytes);
    }
    return {};
}
