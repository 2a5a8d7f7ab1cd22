#pragma once

#include <QSet>
#include <QString>

// The first of "stem.ext", "stem 2.ext", "stem 3.ext" … in `folder` that is not taken, neither on disk nor in
// `reserved` (paths). With an empty extension no dot is added.
QString freeFilePath(const QString &folder, const QString &stem, const QString &extension,
                     const QSet<QString> &reserved = {});
