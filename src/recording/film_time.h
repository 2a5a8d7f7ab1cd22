#pragma once

#include <QString>
#include <optional>

// Moments of a film as a person reads and writes them.
namespace FilmTime {

// 65.254 is "1:05.25"; an hour more is "1:01:05.25". Rounded down, as a clock shows it.
QString text(double seconds);
// The same, or plain seconds, with a point or a comma; nothing for anything else.
std::optional<double> parse(const QString &text);

} // namespace FilmTime
