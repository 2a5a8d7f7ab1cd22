#pragma once

#include "base/result.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <optional>

// Strict readers of JSON: a missing key or another type gives nothing, never a default.
namespace Json {

std::optional<QString> string(const QJsonObject &object, const char *key);
std::optional<bool> boolean(const QJsonObject &object, const char *key);
std::optional<double> number(const QJsonObject &object, const char *key);
// A number without a fraction that fits.
std::optional<int> integer(const QJsonObject &object, const char *key);
std::optional<QJsonArray> array(const QJsonObject &object, const char *key);
std::optional<QJsonObject> object(const QJsonObject &object, const char *key);

// Reads a whole file as one JSON document. A missing file is Error::Kind::NotFound.
Result<QJsonDocument> readFile(const QString &path);
// Writes it compactly and atomically.
Result<void> writeFile(const QString &path, const QJsonDocument &document);

} // namespace Json
