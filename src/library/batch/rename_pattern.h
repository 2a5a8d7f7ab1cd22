#pragma once

#include <QDate>
#include <QString>

// New names for a batch of files.
namespace RenamePattern {

// "{n}" becomes the index, "{date}" the date as "yyyy-MM-dd", "{name}" the original. A pattern without "{n}"
// gets a blank and the index behind it, so that a batch never collides on one name.
QString name(const QString &pattern, int index, const QDate &date, const QString &original);

} // namespace RenamePattern
