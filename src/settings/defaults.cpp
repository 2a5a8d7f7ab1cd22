#include "settings/defaults.h"

#include "base/json.h"
#include "base/log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

Defaults::Defaults(QString path) : m_path(std::move(path))
{
    if (m_path.isEmpty())
        return;
    const auto document = Json::readFile(m_path);
    if (document && document->isObject()) {
        m_values = document->object();
    } else if (document || document.error().kind != Error::Kind::NotFound) {
        m_isBroken = true;
        Log::error(QStringLiteral("Settings could not be read, starting from the defaults"),
                   document ? Error{Error::Kind::Invalid, QStringLiteral("not a JSON object"), m_path}
                            : document.error());
    }
}

void Defaults::set(const QString &key, const QJsonValue &value)
{
    if (m_values.value(key) == value && m_values.contains(key))
        return;
    m_values.insert(key, value);
    if (m_path.isEmpty())
        return;
    QDir().mkpath(QFileInfo(m_path).path());
    if (m_isBroken) {
        QFile::remove(m_path + QStringLiteral(".broken"));
        QFile::rename(m_path, m_path + QStringLiteral(".broken"));
        m_isBroken = false;
    }
    if (const auto written = Json::writeFile(m_path, QJsonDocument(m_values)); !written)
        Log::error(QStringLiteral("Settings could not be saved"), written.error());
}

QString Defaults::string(const QString &key, const QString &fallback) const
{
    const QJsonValue found = value(key);
    return found.isString() ? found.toString() : fallback;
}

bool Defaults::boolean(const QString &key, bool fallback) const
{
    const QJsonValue found = value(key);
    return found.isBool() ? found.toBool() : fallback;
}

int Defaults::integer(const QString &key, int fallback) const
{
    return value(key).toInt(fallback);
}
