#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

class CommandContext;
class Library;

// A bare name means a file of the Library; anything else is a path as the shell understands it.
QString libraryPath(Library &library, const std::string &word);
// The path of a file that lies in the Library, or a failure told to the user.
std::optional<QString> existingPath(CommandContext &context, const std::string &word);
// Files anywhere: where the shell's path leads nowhere, a bare name means a file of the Library.
QStringList pathsOf(CommandContext &context, const std::vector<std::string> &words);
