#pragma once

#include "base/result.h"

#include <QString>

// Failures of files in words for a person. Callable from any thread.
namespace FileErrors {

// What an `errno` value means, as the end of a sentence: "the disk is full".
QString reason(int number);
// "Couldn't write Shot.png: the disk is full." The path goes into the detail.
std::unexpected<Error> cannotWrite(const QString &path, const QString &reason);
std::unexpected<Error> cannotWrite(const QString &path, int number);
// The same failure, told of the file that a person knows, for which another one was to be written.
Error about(const QString &path, Error error);
std::unexpected<Error> cannotRead(const QString &path, int number);

} // namespace FileErrors
