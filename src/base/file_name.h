#pragma once

#include <QByteArray>
#include <QString>

// Names of files as text and back. A name is any bytes on Linux; those that aren't UTF-8 become single
// surrogates, U+DC80 to U+DCFF, one for each byte, so that no name is lost on its way through the program.
namespace FileName {

QString fromBytes(const QByteArray &bytes);
// What the system calls take; for a text without such surrogates its UTF-8.
QByteArray toBytes(const QString &name);

} // namespace FileName
