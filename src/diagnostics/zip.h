#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QList>
#include <QString>

// Archives that every desktop can open.
namespace Zip {

struct Entry {
    QString path; // inside the archive, with slashes
    QByteArray bytes;
};

// The archive's bytes. Callable from any thread.
Result<QByteArray> pack(const QList<Entry> &entries);

} // namespace Zip
