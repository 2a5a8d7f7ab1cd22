#include "services/further_kinds.h"

#include <QRegularExpression>

namespace SensitiveText {

namespace {

// How a kind is written, and how it looks after the usual slips of reading. Both find what may be one:
// `lengthOf` tells how much of the line from there on is, nothing where it is none.
struct Written {
    FurtherKind kind;
    const char *name;
    const char *exact;
    const char *forgiving;
    qsizetype (*lengthOf)(const QString &rest, qsizetype matched, Form form);
};

qsizetype lengthOfIpv6(const QString &rest, qsizetype matched, Form form);
qsizetype lengthOfMac(const QString &rest, qsizetype matched, Form form);
qsizetype lengthOfIban(const QString &rest, qsizetype matched, Form form);
qsizetype lengthOfValue(const QString &rest, qsizetype matched, Form form);
qsizetype lengthOfLongKey(const QString &rest, qsizetype matched, Form form);

// The words before a value, in the languages of the program's users, alone or at the end of a longer name.
constexpr auto kNames = "(?:pass(?:word|wd|wort|phrase|code)?|kennwort|mot de passe|contrase[nñ]a|has[lł]o|"
                        "(?<![a-z])(?:pwd?|pin)|secret|token|api[-_ ]?key)";

constexpr Written kTable[]{
    {FurtherKind::Ipv6, "ipv6",
     R"((?<![\w:.])(?:[0-9A-F]{0,4}:){2,7}(?:[0-9A-F]{1,4}|(?:\d{1,3}\.){3}\d{1,3})?(?![\w:]))",
     // Letters for digits, a blank or another mark at a colon.
     R"((?<![\w:.])(?:[0-9A-FOQl|Iio]{0,4}(?:: ?| :|;)){2,7}(?:[0-9A-FOQl|Iio]{1,4})?(?![\w:]))",
     lengthOfIpv6},
    {FurtherKind::Mac, "mac",
     R"((?<![\w:-])(?:(?:[0-9A-F]{2}:){5}|(?:[0-9A-F]{2}-){5})[0-9A-F]{2}(?![\w:-]))",
     R"((?<![\w:-])(?:[0-9A-FOQl|IioSZ]{2} ?[:;.-] ?){5}[0-9A-FOQl|IioSZ]{2}(?![\w:-]))", lengthOfMac},
    {FurtherKind::Iban, "iban", R"(\b[A-Z]{2}\d{2}(?= ?[A-Z0-9]))",
     R"(\b[A-Z]{2}[0-9OQlISZB|]{2}(?= ?[A-Z0-9]))", lengthOfIban},
    {FurtherKind::Named, "password",
     R"(%1[a-z0-9_]{0,12}["'”’]?\s*(?::=|=>|[:=](?![:=]))\s*["'“‘]?\K[^\s"'”’]{2,})",
     R"(%1[a-z0-9_]{0,12}["'”’]?\s*(?::=|=>|[:=;](?![:=]))\s*["'“‘*]?\K[^\s"'”’]{2,})", lengthOfValue},
    {FurtherKind::LongKey, "longKey", R"((?<![\w/+=.-])[A-Z0-9/+]{20,}={0,2}(?![\w/+=]))",
     R"((?<![\w/+=.-])[A-Z0-9/+|)\]}]{20,}(?: [A-Z0-9/+|)\]}]{8,})*={0,2}(?![\w/+=]))", lengthOfLongKey},
};

// The digits that letters were read for.
QString withDigits(QString text)
{
    static constexpr QStringView kLetters = u"OQolI|iSZ";
    static constexpr QStringView kDigits = u"000111152";
    for (QChar &c : text)
        if (const auto at = kLetters.indexOf(c); at >= 0)
            c = kDigits[at];
    return text;
}

qsizetype lengthOfIpv6(const QString &rest, qsizetype matched, Form form)
{
    const QString stretch = rest.first(matched).remove(' ');
    const QString text = form == Form::Exact ? stretch : withDigits(stretch).replace(';', ':');
    const qsizetype gap = text.indexOf("::");
    if (text.indexOf("::", gap + 1) > gap && gap >= 0)
        return 0;
    const QStringList groups = text.split(':', Qt::SkipEmptyParts);
    const auto isShort = [](const QString &group) { return group.size() <= 4 || group.contains('.'); };
    if (!std::ranges::all_of(groups, isShort))
        return 0;
    // Names in programs and times have colons too.
    const bool hasDigit = std::ranges::any_of(text, [](QChar c) { return c.isDigit(); });
    const bool isWhole = groups.size() == 8 && gap < 0;
    const bool isShortened = gap >= 0 && groups.size() < 8 && (groups.size() >= 2 || text.size() > 4);
    return hasDigit && (isWhole || isShortened) ? matched : 0;
}

qsizetype lengthOfMac(const QString &rest, qsizetype matched, Form form)
{
    if (form == Form::Exact)
        return matched;
    static const QRegularExpression pairs("^[0-9A-F]{12}$", QRegularExpression::CaseInsensitiveOption);
    QString signs = withDigits(rest.first(matched));
    return pairs.match(signs.remove(QRegularExpression("[ :;.-]"))).hasMatch() ? matched : 0;
}

// The lengths of the account numbers of the countries that have them.
int signsOfIban(const QString &country)
{
    static const QHash<QString, int> lengths{
        {"AD", 24}, {"AE", 23}, {"AL", 28}, {"AT", 20}, {"AZ", 28}, {"BA", 20}, {"BE", 16}, {"BG", 22},
        {"BH", 22}, {"BR", 29}, {"BY", 28}, {"CH", 21}, {"CR", 22}, {"CY", 28}, {"CZ", 24}, {"DE", 22},
        {"DK", 18}, {"DO", 28}, {"EE", 20}, {"EG", 29}, {"ES", 24}, {"FI", 18}, {"FO", 18}, {"FR", 27},
        {"GB", 22}, {"GE", 22}, {"GI", 23}, {"GL", 18}, {"GR", 27}, {"GT", 28}, {"HR", 21}, {"HU", 28},
        {"IE", 22}, {"IL", 23}, {"IQ", 23}, {"IS", 26}, {"IT", 27}, {"JO", 30}, {"KW", 30}, {"KZ", 20},
        {"LB", 28}, {"LC", 32}, {"LI", 21}, {"LT", 20}, {"LU", 20}, {"LV", 21}, {"MC", 27}, {"MD", 24},
        {"ME", 22}, {"MK", 19}, {"MR", 27}, {"MT", 31}, {"MU", 30}, {"NL", 18}, {"NO", 15}, {"PK", 24},
        {"PL", 28}, {"PS", 29}, {"PT", 25}, {"QA", 29}, {"RO", 24}, {"RS", 22}, {"SA", 24}, {"SE", 24},
        {"SI", 19}, {"SK", 24}, {"SM", 27}, {"TN", 24}, {"TR", 26}, {"UA", 29}, {"VA", 22}, {"VG", 24},
        {"XK", 20}};
    return lengths.value(country);
}

bool hasChecksum(const QString &iban)
{
    int rest = 0;
    for (const QChar c : iban.sliced(4) + iban.first(4))
        rest = c.isDigit() ? (rest * 10 + c.digitValue()) % 97 : (rest * 100 + c.unicode() - 'A' + 10) % 97;
    return rest == 1;
}

// By its checksum; after slips of reading by its country's length, give or take a sign.
qsizetype lengthOfIban(const QString &rest, qsizetype, Form form)
{
    const int slip = form == Form::Exact ? 0 : 1;
    const int length = signsOfIban(rest.first(2).toUpper());
    QString signs;
    int digits = 0;
    for (qsizetype i = 0; length > 0 && i <= rest.size(); ++i) {
        const bool isEnd = i == rest.size() || !rest[i].isLetterOrNumber();
        if (isEnd && std::abs(length - int(signs.size())) <= slip) {
            const bool isSure = form == Form::Exact ? hasChecksum(signs) : 2 * digits > signs.size();
            return isSure ? i : 0;
        }
        if (i == rest.size() || signs.size() > length + slip || (isEnd && rest[i] != ' '))
            return 0;
        if (!isEnd)
            signs += rest[i].toUpper();
        digits += rest[i].isDigit();
    }
    return 0;
}

// What programs and their readers write where a value would stand is none. One of several words ends with its
// line.
qsizetype lengthOfValue(const QString &rest, qsizetype matched, Form)
{
    static const QRegularExpression phrase(R"(^[a-z]+(?: [a-z]+){1,7}$)");
    static const QRegularExpression noValue(
        R"(^(?:[*•●.x-]+|<.*>|\$?\{.*|\(.*|.*\(.*|&?[a-z_]\w*(?:->|\.|::)[a-z_].*|[a-z_]+\)?;|)"
        R"((?:(?:std::)?string|str|text|null(?:ptr)?|none|nil|undefined|true|false|int|bool|boolean|number|char|)"
        R"(required|optional|invalid|missing|expired|forgotten|unknown|empty|valid|wrong|incorrect)[,;.!?)]*)$)",
        QRegularExpression::CaseInsensitiveOption);
    if (noValue.match(QStringView(rest).first(matched)).hasMatch())
        return 0;
    return phrase.match(rest).hasMatch() ? rest.size() : matched;
}

qsizetype lengthOfLongKey(const QString &rest, qsizetype matched, Form)
{
    constexpr qsizetype kLong = 32; // signs, without the padding that shows what a shorter one is
    const QString stretch = rest.first(matched).remove(' ');
    if (!stretch.contains('/') && !stretch.contains('+') && !stretch.endsWith('='))
        return 0;
    const auto has = [&](auto is) { return std::ranges::any_of(stretch, is); };
    QString signs = stretch;
    signs.remove(QRegularExpression("[/+=]"));
    constexpr qsizetype kWindow = 20; // signs; words may stand in a part of a key
    bool isKey = signs.size() < kWindow && isJumbled(signs);
    for (qsizetype from = 0; from + kWindow <= signs.size(); ++from)
        isKey |= isJumbled(QStringView(signs).sliced(from, kWindow));
    const bool isMixed = has([](QChar c) { return c.isDigit(); }) &&
                         has([](QChar c) { return c.isLower(); }) && has([](QChar c) { return c.isUpper(); });
    return isKey && isMixed && (stretch.size() >= kLong || stretch.endsWith('=')) ? matched : 0;
}

const QRegularExpression &expressionOf(const Written &written, Form form)
{
    static const auto compiled = [](Form which) {
        QList<QRegularExpression> list;
        for (const Written &each : kTable) {
            QString pattern = QString::fromUtf8(which == Form::Exact ? each.exact : each.forgiving);
            pattern.replace("%1", kNames);
            list.append(QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption));
            Q_ASSERT(list.last().isValid());
        }
        return list;
    };
    static const QList<QRegularExpression> exact = compiled(Form::Exact);
    static const QList<QRegularExpression> forgiving = compiled(Form::Forgiving);
    return (form == Form::Exact ? exact : forgiving)[&written - kTable];
}

} // namespace

QList<FurtherKind> allFurtherKinds()
{
    QList<FurtherKind> kinds;
    for (const Written &written : kTable)
        kinds.append(written.kind);
    return kinds;
}

QString nameOf(FurtherKind kind)
{
    return QString::fromLatin1(std::ranges::find(kTable, kind, &Written::kind)->name);
}

FurtherKinds furtherKindsBut(const QStringList &names)
{
    FurtherKinds kinds;
    for (const FurtherKind kind : allFurtherKinds())
        kinds.setFlag(kind, !names.contains(nameOf(kind)));
    return kinds;
}

QList<Match> furtherMatches(const QString &line, FurtherKinds kinds, Form form)
{
    QList<Match> found;
    for (const Written &written : kTable) {
        if (!kinds.testFlag(written.kind))
            continue;
        for (auto it = expressionOf(written, form).globalMatch(line); it.hasNext();) {
            const auto match = it.next();
            const qsizetype from = match.capturedStart();
            const QString rest = line.sliced(from);
            if (const qsizetype length = written.lengthOf(rest, match.capturedLength(), form); length > 0)
                found.append({from, length});
        }
    }
    return found;
}

bool isNameOfASecret(const QString &line)
{
    static const QRegularExpression name(kNames + QStringLiteral(" ?:$"),
                                         QRegularExpression::CaseInsensitiveOption);
    return name.match(line).hasMatch();
}

} // namespace SensitiveText
