#pragma once

#include "base/result.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

// The user's defaults: one JSON object in one file, keyed as the settings name their values. Read once; every
// change is written at once. A file that is no JSON object counts as empty and is put aside as "….broken"
// before the first write, so that nothing of it is lost. Main thread only.
class Defaults {
public:
    // An empty path keeps everything in memory.
    explicit Defaults(QString path);

    QJsonValue value(const QString &key) const { return m_values.value(key); }
    bool contains(const QString &key) const { return m_values.contains(key); }
    void set(const QString &key, const QJsonValue &value);

    QString string(const QString &key, const QString &fallback = {}) const;
    bool boolean(const QString &key, bool fallback) const;
    int integer(const QString &key, int fallback) const;

private:
    QString m_path;
    QJsonObject m_values;
    bool m_isBroken = false;
};
