#pragma once

#include <QFlags>
#include <QList>
#include <QString>

// What in a line of text is private: addresses, telephone numbers, long numbers, keys and tokens.
namespace SensitiveText {

// What a person would also call private, beyond the ten patterns. Each kind can be switched off.
enum class FurtherKind {
    Ipv6 = 1,
    Mac = 2,
    Iban = 4,
    Named = 8,    // what stands after "password", "token" and the like
    LongKey = 16, // keys with strokes and pluses
};
Q_DECLARE_FLAGS(FurtherKinds, FurtherKind)
Q_DECLARE_OPERATORS_FOR_FLAGS(FurtherKinds)
constexpr FurtherKinds kAllFurtherKinds = FurtherKinds(FurtherKind::Ipv6) | FurtherKind::Mac |
                                          FurtherKind::Iban | FurtherKind::Named | FurtherKind::LongKey;

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
// longer, the further kinds, and what it would have found had the line been read rightly. Matches don't
// overlap.
QList<Match> matchesInReadLine(const QString &line, FurtherKinds further = kAllFurtherKinds);

// The sign that another is taken for when a secret is read, a hyphen for a dash or an @ for ©; most signs are
// themselves. One for one, so that places stay.
QChar plainSign(QChar sign);
QString plainSigns(QString line);

// The same stretches from left to right, those that overlap as one.
QList<Match> merged(QList<Match> matches);

// Whether a stretch begins as the keys and tokens of services do; shortened, when reading lost the sign that
// ends the prefix.
enum class Prefix { Whole, Shortened };
bool beginsLikeAKey(QStringView stretch, Prefix prefix = Prefix::Whole);
// Whether a run of letters, digits, hyphens and underscores looks like a key or a part of one rather than a
// word, a name or a number: it goes back and forth between small letters, capitals and digits.
bool isJumbled(QStringView run);
// Whether it could be a part of a key, judged by less: a name of several words in one can be, too.
bool mayBeJumbled(QStringView run);

} // namespace SensitiveText
