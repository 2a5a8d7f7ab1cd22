#pragma once

#include <CLI/App.hpp>
#include <QImage>
#include <QString>
#include <optional>
#include <string>

class CommandContext;

// The pictures that commands read and write. Failures are told to the user, with the whole path.
namespace Pictures {

std::optional<QImage> read(CommandContext &context, const std::string &word);
// Adds the option that names the picture to write; a name whose extension is none of ours is a wrong call.
CLI::Option *addOutput(CLI::App *command, std::string &output, const std::string &description);
// Gives the path that was written: a PNG of that name, with a notice, where the asked format can't hold the
// picture.
std::optional<QString> write(CommandContext &context, const QImage &image, const std::string &word);

} // namespace Pictures
