#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QString>

// Reading files that anybody may have put there. Only regular files are read: a pipe would never end, and a
// device may do anything. Never more bytes than the caller has room for.
//
// Error::Kind::NotFound when there is nothing of that name, Invalid for what is no regular file or too large.
// For names that aren't UTF-8 see FileName.
namespace ReadFile {

Result<QByteArray> whole(const QString &path, qint64 mostBytes);
// What follows the first `offset` bytes.
Result<QByteArray> rest(const QString &path, qint64 offset, qint64 mostBytes);
// Its SHA-256 in hexadecimal digits; empty when it can't be read. As large as it likes.
QByteArray digest(const QString &path);
// The first bytes of it, fewer where it is shorter.
Result<QByteArray> head(const QString &path, qint64 bytes);

} // namespace ReadFile
