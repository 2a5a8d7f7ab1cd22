#pragma once

#include <QList>
#include <QString>

// What in a line of text is private: addresses, telephone numbers, long numbers, keys and tokens.
namespace SensitiveText {

// A stretch of a line, in UTF-16 code units.
struct Match {
    qsizetype start = 0;
    qsizetype length = 0;
    bool operator==(const Match &) const = default;
    qsizetype end() const { return start + length; }
};

// The matches of the ten patterns, tried in their order at each place, from left to right.
QList<Match> matches(const QString &line);

// The same for a line that was read from a picture, where a glance may have taken 0 for O, 1 for l or I,
// another sign for an @, or put a blank inside an address or a key. Everything that `matches` finds, possibly
// longer, and what it would have found had the line been read rightly. Matches don't overlap.
QList<Match> matchesInReadLine(const QString &line);

} // namespace SensitiveText
