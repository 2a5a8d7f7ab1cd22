#pragma once

#include "services/sensitive_text.h"

#include <QStringList>

namespace SensitiveText {

// In the order in which they are shown.
QList<FurtherKind> allFurtherKinds();
// What the settings and the command line call a kind: "ipv6", "mac", "iban", "password", "longKey".
QString nameOf(FurtherKind kind);
// All but those with these names; unknown names are no kind's.
FurtherKinds furtherKindsBut(const QStringList &names);

enum class Form {
    Exact,
    Forgiving, // of a line that was read from a picture
};

// From left to right by kind; they may overlap.
QList<Match> furtherMatches(const QString &line, FurtherKinds kinds, Form form);

// Whether a line ends in a word for what is private, such as "Password:", and its value stands beside it.
bool isNameOfASecret(const QString &line);

} // namespace SensitiveText
