#pragma once

#include <CLI/App.hpp>
#include <QString>
#include <optional>

// What packagers install beside the program, told by the parser itself, so that it can't differ from it.
namespace Reference {

// The manual page, in the man macros.
QString manual(const CLI::App &app);
// A completion script; "bash", "zsh" or "fish". Nothing for another shell.
std::optional<QString> completion(const CLI::App &app, const QString &shell);

} // namespace Reference
