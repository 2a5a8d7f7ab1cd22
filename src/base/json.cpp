#include "base/json.h"

#include "base/atomic_file.h"
#include "base/read_file.h"
#include "base/texts.h"

#include <QFileInfo>
#include <cmath>
#include <limits>

namespace {

// The texts of hundreds of thousands of captures.
constexpr qint64 kMostBytes = 1'000'000'000;

} // namespace

std::optional<QString> Json::string(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> Json::boolean(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> Json::number(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<int> Json::integer(const QJsonObject &object, const char *key)
{
    const auto value = number(object, key);
    if (!value || std::trunc(*value) != *value || std::abs(*value) > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(*value);
}

std::optional<QJsonArray> Json::array(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isArray() ? std::optional(value.toArray()) : std::nullopt;
}

std::optional<QJsonObject> Json::object(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

Result<QJsonDocument> Json::readFile(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    const auto bytes = ReadFile::whole(path, kMostBytes);
    if (!bytes)
        return std::unexpected(bytes.error());
    QJsonParseError parse;
    QJsonDocument document = QJsonDocument::fromJson(*bytes, &parse);
    if (parse.error != QJsonParseError::NoError)
        return fail(BaseTexts::tr("%1 is not valid JSON: %2.").arg(name, parse.errorString()), path);
    return document;
}

Result<void> Json::writeFile(const QString &path, const QJsonDocument &document)
{
    return AtomicFile::write(path, document.toJson(QJsonDocument::Compact));
}
