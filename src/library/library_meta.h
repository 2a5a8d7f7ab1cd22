#pragma once

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <optional>

struct LibraryCollection {
    QUuid id;
    QString name;      // need not be unique
    QStringList items; // file names, in order of adding, without duplicates

    bool operator==(const LibraryCollection &) const = default;

    QJsonObject toJson() const;
    static std::optional<LibraryCollection> fromJson(const QJsonValue &value);
};

// What is known of the files beyond themselves, by file name. Names may outlive their files.
struct LibraryMeta {
    QList<LibraryCollection> collections; // in order of creation
    QHash<QString, QString> sources;      // the application in front at capture time
    QHash<QString, QString> descriptions;

    bool operator==(const LibraryMeta &) const = default;

    LibraryCollection *collection(const QUuid &id); // the first with that id, or none

    QJsonObject toJson() const;
    // Strict: nothing when a key is missing or of another type.
    static std::optional<LibraryMeta> fromJson(const QJsonObject &object);
};
