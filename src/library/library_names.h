#pragma once

#include <QString>

// Names of files of the Library. None that begins with a dot is one: such files are hidden, and the names
// ".." and ".lumenpost" would lead to what isn't a file.
namespace LibraryNames {

// What is called so that has no name of its own.
inline const QString kCapture = QStringLiteral("Capture");

// A path's file name.
QString nameOf(const QString &path);
// A file name without its last extension.
QString baseOf(const QString &path);
// Whether a file of that name can be of the Library.
bool isProper(const QString &name);
// What was typed, as the base of a file name: without the signs that file systems of other machines refuse,
// white space around it and dots before it, and short enough for a number and an extension to follow. May
// leave nothing.
QString cleaned(QString name);

} // namespace LibraryNames
