#include "services/private_patterns.h"

namespace SensitiveText {

namespace {

// Well-known ends of addresses, for those whose last dot was taken for a blank or for nothing. The short ones
// end many words too.
constexpr auto kLongDomains = "example|com|org|net|edu|gov|info|dev|app|test";
constexpr auto kShortDomains = "at|be|ch|co|de|dk|es|eu|fi|fr|io|it|me|nl|no|pl|se|uk|us";

struct PrivatePattern {
    const char *name;
    const char *exact;
    QStringList misread = {};
    QStringList shortened = {};
    QStringList glued = {}; // capitals and small letters tell
};

// Tried in this order at each place.
const QList<PrivatePattern> &table()
{
    static const QList<PrivatePattern> list{
        {.name = "e-mail address",
         .exact = R"([A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z]{2,})",
         // What stands before a comma may be another column, unless the address has one for its dot, too.
         .misread = {R"([A-Z0-9._%+#*?-]+@[A-Z0-9-]+(?:[.,][A-Z0-9-]+)*\.[A-Z]{2,})",
                     R"([A-Z0-9._%+#*?,-]+@[A-Z0-9-]+(?:[.,][A-Z0-9-]+)*,(?:LONG|SHORT)\b)",
                     R"([A-Z0-9._%+#*?-]+@[A-Z0-9-]+,[A-Z]{2,})",
                     R"([A-Z0-9._%+,-]{2,}@[A-Z0-9-]{3,} ?(?:LONG)\b)",
                     R"((?=[A-Z]*[0-9._%+-])[A-Z0-9._%+-]{3,}@[A-Z0-9-]{3,} ?(?:SHORT)\b(?![:~-]))"}},
        {.name = "telephone number",
         .exact = R"(\+?\d[\d\s().-]{6,}\d)",
         .misread = {R"(\(\d{2,4}\)[\d\s().-]{4,}\d)"}},
        {.name = "card, account and other long numbers", .exact = R"(\b\d{4,}\b)"},
        {.name = "internet address, IPv4",
         .exact = R"(\b(?:\d{1,3}\.){3}\d{1,3}\b)",
         .misread =
             {R"(\b\d{1,3}(?:[.,]\d{1,3}\.|\.\d{1,3}[.,])\d{1,3}\.\d{1,3}\b)", // a price has its comma last
                                                                               // With several commas: no
                                                                               // price, list of small numbers
                                                                               // or colour.
              R"((?<![\d.,([])(?!\d+(?:,\d{3})+\.\d\d?(?![.,]?\d))(?!\d+(?:\.\d{3})+,\d\d?(?![.,]?\d)))"
              R"((?=[\d.,]*\d{3})(?:(?:25[0-5]|2[0-4]\d|1\d\d|[1-9]?\d)(?:[.,]|(?![.,]?\d))){4}(?<![.,]))"}},
        {.name = "secret key of a service",
         .exact = R"(\b(?:sk|pk|rk)[-_][A-Z0-9_-]{16,})",
         .misread = {R"(\b[s5]{1,2}[kx][-_.][A-Z0-9_.-]{16,})", R"(\b(?:pk|rk)[-_.][A-Z0-9_.-]{16,})",
                     R"(\b[s5prt]k[-_ ]{0,2}(?:live|test|proj)[-_ ]{1,2}[A-Z0-9_-]{12,})"},
         .shortened = {R"(\b[s5pr]k[-_]?[A-Z0-9_-]{14,})"},
         .glued = {R"((?<=[A-Za-z])(?:sk|pk|rk)[-_](?:live|test|proj)[-_][A-Za-z0-9_-]{12,})"}},
        {.name = "access token of a source host",
         .exact = R"(\bgh[pousr]_[A-Z0-9]{20,})",
         .misread = {R"(\bgh[pousr](?:_|_? )[A-Z0-9]{18,})"},
         .shortened = {R"(\b[g9]h[pousr0][A-Z0-9]{18,})", R"(\b[A-Z0-9]gh[pousr]_[A-Z0-9]{18,})"},
         .glued = {R"((?<=[A-Za-z])gh[pousr]_[A-Za-z0-9]{18,})"}},
        {.name = "key identifier of a cloud",
         .exact = R"(\bAKIA[0-9A-Z]{16}\b)",
         .misread = {R"(\b[A4]K[I1LT|][A4][0-9A-Z|)\]!]{15,17})"},
         .shortened = {R"(\b[A4][A-Z0-9][I1LT|][A4][0-9A-Z]{16}\b)",
                       R"(\b[A4]K[A-Z0-9]{0,2}[A4][0-9A-Z]{15,17}\b)",
                       R"(\b(?:AKA|AKI|AIA|KIA)[0-9A-Z]{16}\b)", R"(\b[A-Z0-9]AKIA[0-9A-Z]{16}\b)"},
         .glued = {R"((?<=[a-z])AKIA[0-9A-Z]{16}(?![A-Z0-9]))"}},
        {.name = "token of a chat workspace",
         .exact = R"(\bxox[abprs]-[A-Z0-9-]{10,})",
         .misread = {R"(\bx[o0]x{1,2}[abprs8]-?[A-Z0-9-]{10,})",
                     R"(\bx[oe0]x[A-Z0-9][- ]{0,2}\d{6,}[- ]{0,2}(?:[A-Z0-9|)\]}-]*\d[A-Z0-9|)\]}-]*)?)"},
         .shortened = {R"(\b[A-Z0-9]xox[abprs]-[A-Z0-9-]{10,})"},
         .glued = {R"((?<=[A-Za-z])xox[abprs]-[A-Za-z0-9-]{10,})"}},
        {.name = "web token",
         .exact = R"(\beyJ[A-Z0-9_-]{10,}\.[A-Z0-9_-]{10,})",
         .misread = {R"(\b[e6]y[JI1Lj)\]}][A-Z0-9_-]{8,}[.,][A-Z0-9_-]{8,}(?:\.[A-Z0-9_-]+)?)"},
         .glued = {R"((?<=[a-z])ey[JIl1][A-Za-z0-9_-]{10,}\.[A-Za-z0-9_-]{10,})"}},
        {.name = "any other opaque run", .exact = R"(\b[A-Z0-9_-]{32,}\b)"},
    };
    return list;
}

QRegularExpression
compiled(const QStringList &alternatives,
         QRegularExpression::PatternOptions options = QRegularExpression::CaseInsensitiveOption)
{
    QString pattern = alternatives.join('|');
    pattern.replace("LONG", kLongDomains).replace("SHORT", kShortDomains);
    QRegularExpression expression(pattern, options);
    Q_ASSERT(expression.isValid());
    expression.optimize();
    return expression;
}

QStringList all(QStringList PrivatePattern::*forms)
{
    QStringList patterns;
    for (const PrivatePattern &each : table())
        patterns += each.*forms;
    return patterns;
}

} // namespace

const QRegularExpression &exactPatterns()
{
    static const QRegularExpression expression = [] {
        QStringList patterns;
        for (const PrivatePattern &each : table())
            patterns += each.exact;
        return compiled(patterns);
    }();
    return expression;
}

const QRegularExpression &misreadPatterns()
{
    static const QRegularExpression expression = compiled(all(&PrivatePattern::misread));
    return expression;
}

const QRegularExpression &opaquePattern()
{
    static const QRegularExpression expression = compiled({table().last().exact});
    return expression;
}

const QRegularExpression &shortenedPatterns()
{
    static const QRegularExpression expression = compiled(all(&PrivatePattern::shortened));
    return expression;
}

const QRegularExpression &gluedPatterns()
{
    static const QRegularExpression expression =
        compiled(all(&PrivatePattern::glued), QRegularExpression::NoPatternOption);
    return expression;
}

} // namespace SensitiveText
