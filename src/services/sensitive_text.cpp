#include "services/sensitive_text.h"

#include "services/further_kinds.h"
#include "services/private_patterns.h"

namespace SensitiveText {

namespace {

QList<Match> found(const QRegularExpression &expression, const QString &text)
{
    QList<Match> list;
    for (auto it = expression.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        list.append({match.capturedStart(), match.capturedLength()});
    }
    return list;
}

// Letters that are read for digits become digits in words that are mostly made of digits.
QString digitsForLetters(QString line)
{
    static const QRegularExpression word(R"([0-9OoQlI|?.,()+-]{4,})");
    for (auto it = word.globalMatch(line); it.hasNext();) {
        const auto match = it.next();
        const auto text = match.capturedView();
        const auto digits = std::ranges::count_if(text, [](QChar c) { return c.isDigit(); });
        const auto letters = std::ranges::count_if(text, [](QChar c) { return c.isLetter() || c == '|'; });
        if (digits < 2 * letters)
            continue;
        for (qsizetype i = match.capturedStart(); i < match.capturedEnd(); ++i) {
            if (QStringView(u"OoQ").contains(line[i]))
                line[i] = '0';
            else if (QStringView(u"lI|").contains(line[i]))
                line[i] = '1';
            else if (line[i] == '?' && i > match.capturedStart() && line[i - 1].isDigit() &&
                     i + 1 < match.capturedEnd() && (line[i + 1].isDigit() || line[i + 1] == '-'))
                line[i] = '7';
        }
    }
    return line;
}

bool isKeySign(QChar c)
{
    return c.unicode() < 128 && (c.isLetterOrNumber() || c == '_' || c == '-');
}

// What a run of letters and digits is made of.
struct Mixture {
    int letters = 0;
    int digits = 0;
    int pairs = 0; // of neighbours without a hyphen or underscore between
    int turns = 0; // pairs that go from one kind of sign to another
    bool hasSmall = false;
    bool isHex = true;
};

Mixture mixtureOf(QStringView run)
{
    Mixture mixture;
    for (qsizetype i = 0; i < run.size(); ++i) {
        const QChar c = run[i];
        mixture.letters += c.isLetter();
        mixture.digits += c.isDigit();
        mixture.hasSmall |= c.isLower();
        mixture.isHex &= c == '-' || QStringView(u"0123456789abcdefABCDEF").contains(c);
        if (i == 0 || !c.isLetterOrNumber() || !run[i - 1].isLetterOrNumber())
            continue;
        ++mixture.pairs;
        const QChar last = run[i - 1];
        // A capital before small letters is the usual hump of a name, unless it follows another.
        const bool isHump = last.isUpper() && c.isLower() && (i == 1 || !run[i - 2].isUpper());
        mixture.turns += (c.isDigit() != last.isDigit() || c.isUpper() != last.isUpper()) && !isHump;
    }
    return mixture;
}

template <typename Accept>
QStringView stretchAfter(const QString &line, qsizetype from, Accept accept)
{
    qsizetype end = from;
    while (end < line.size() && accept(line[end]))
        ++end;
    return QStringView(line).sliced(from, end - from);
}

template <typename Accept>
QStringView stretchBefore(const QString &line, qsizetype to, Accept accept)
{
    qsizetype from = to;
    while (from > 0 && accept(line[from - 1]))
        --from;
    return QStringView(line).sliced(from, to - from);
}

constexpr qsizetype kLongKey = 12; // signs that are the better part of a key

// Whether a mark between two stretches stands for a letter of one key.
bool isWithinKey(QStringView before, QStringView after)
{
    const bool isLong =
        before.size() >= kLongKey && (beginsLikeAKey(before) ? mayBeJumbled(before) : isJumbled(before));
    const bool isWord = std::ranges::all_of(after, [](QChar c) { return c.isLower(); });
    return (isLong && !isWord) || (beginsLikeAKey(before) && mayBeJumbled(after)) ||
           (isJumbled(before) && mayBeJumbled(after)) || (mayBeJumbled(before) && isJumbled(after));
}

// Marks that were read in the midst of a key, or before all of its rest but one sign, become its letters;
// those of addresses of pages stand before a name and its value, those of hosts before a name with a dot.
void replaceMarks(QString &line)
{
    constexpr qsizetype kLong = 16; // signs of a rest that colours and tickets don't have
    constexpr QStringView kMarks = u"?#$@";
    constexpr QStringView kLetters = u"7fS0";
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        const auto mark = kMarks.indexOf(line[i]);
        if (mark < 0)
            continue;
        const QStringView before =
            stretchBefore(line, i, [&](QChar c) { return isKeySign(c) || (line[i] == '@' && c == '.'); });
        const QStringView after = stretchAfter(line, i + 1, isKeySign);
        const qsizetype end = i + 1 + after.size();
        if (after.isEmpty() ||
            (end < line.size() && (line[end] == '=' || (line[i] == '@' && line[end] == '.'))))
            continue;
        const bool isFirst = mark < 2 && before.isEmpty() && after.size() >= kLong && isJumbled(after);
        const bool isWithin = line[i] == '@' ? beginsLikeAKey(before) && isWithinKey(before, after)
                                             : isWithinKey(before, after);
        if (isFirst || isWithin)
            line[i] = kLetters[mark];
    }
}

// Brackets and strokes that were read for a letter, mostly a J, in the midst of a key become one.
QString lettersForBrackets(QString line)
{
    constexpr qsizetype kLongPath = 20; // signs; folders that are named by chance are shorter
    replaceMarks(line);
    for (qsizetype i = 1; i + 1 < line.size(); ++i) {
        const bool closes = QStringView(u")]}").contains(line[i]);
        if (!closes && !QStringView(u"([{!/\\").contains(line[i]))
            continue;
        const QStringView before = stretchBefore(line, i, isKeySign);
        const QStringView after = stretchAfter(line, i + 1, isKeySign);
        const bool isWebToken = before.compare(u"ey", Qt::CaseInsensitive) == 0 &&
                                (closes || (after.size() >= kLongKey && isJumbled(after)));
        const QStringView token = stretchBefore(line, i, [](QChar c) { return isKeySign(c) || c == '.'; });
        const bool isInKey =
            beginsLikeAKey(token) &&
            (mayBeJumbled(after) || (closes && !after.isEmpty() && isWithinKey(token, after)));
        // Names are called with arguments, a path has strokes between its folders, and nothing but the second
        // half of a web token follows a bracket that closes.
        const bool isLong = line[i] != '/' || before.size() + after.size() >= kLongPath;
        const bool isInRun = closes ? before.size() >= 3 && after.size() >= 3 &&
                                          isJumbled(before.toString() + after.toString())
                                    : isLong && isJumbled(before) && isJumbled(after);
        const QStringView second = line[i + 1] == '.' ? stretchAfter(line, i + 2, isKeySign) : QStringView();
        const bool isBeforeDot = closes && ((isJumbled(before) && isJumbled(second)) ||
                                            (beginsLikeAKey(before) && before.size() >= kLongKey &&
                                             mayBeJumbled(before) && mayBeJumbled(second)));
        if (isWebToken || isInKey || isInRun || isBeforeDot)
            line[i] = u'J';
    }
    return line;
}

struct Joined {
    QString text;
    QList<qsizetype> places; // of each code unit in the line

    bool endsInBlank(qsizetype before) const
    {
        return text.size() > before && text[text.size() - 1 - before] == ' ';
    }
};

// The line without the blanks that a reader puts into addresses and keys: beside an @, after a dot or
// underscore before an address, and between stretches of a key.
Joined withoutStrayBlanks(const QString &line)
{
    constexpr qsizetype kCrumb = 2; // signs that stand alone in the midst of a key
    const auto isPart = [](QChar c) { return isKeySign(c) || c == '.'; };
    Joined joined;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == ' ' && i > 0 && i + 1 < line.size()) {
            // With what was joined to it already.
            const QStringView before = stretchBefore(joined.text, joined.text.size(), isPart);
            const QStringView after = stretchAfter(line, i + 1, isPart);
            const qsizetype end = i + 1 + after.size();
            const bool besideAt = line[i - 1] == '@' || line[i + 1] == '@';
            const bool mail = !after.isEmpty() && end < line.size() && line[end] == '@' &&
                              (before.endsWith('.') || before.endsWith('_') || after.startsWith('_'));
            const bool domain = !after.isEmpty() && joined.text.chopped(before.size()).endsWith('@') &&
                                (before.endsWith('.') || after.startsWith('.'));
            const auto isNumber = [](QStringView text) {
                return text.size() > kCrumb &&
                       std::ranges::all_of(text, [](QChar c) { return c.isDigit() || c == '-'; });
            };
            const auto isCrumb = [](QStringView text) { return !text.isEmpty() && text.size() <= kCrumb; };
            constexpr qsizetype kPrefix = 4;
            const bool typed =
                beginsLikeAKey(before) || (!before.isEmpty() && before.size() <= kPrefix &&
                                           beginsLikeAKey(before.toString() + after.toString()));
            const bool ofKey =
                typed || isJumbled(before) ||
                (isCrumb(before) && joined.endsInBlank(before.size()) &&
                 isJumbled(stretchBefore(joined.text, joined.text.size() - before.size() - 1, isPart)));
            const bool atHyphen = before.endsWith('-') || after.startsWith('-');
            const bool goesOn = isJumbled(after) || (typed && (mayBeJumbled(after) || isNumber(after))) ||
                                (typed && atHyphen && isCrumb(after)) ||
                                (isCrumb(after) && end + 1 < line.size() && line[end] == ' ' &&
                                 mayBeJumbled(stretchAfter(line, end + 1, isPart)));
            if (besideAt || mail || domain || (ofKey && goesOn))
                continue;
        }
        joined.text += line[i];
        joined.places.append(i);
    }
    return joined;
}

} // namespace

bool beginsLikeAKey(QStringView stretch, Prefix prefix)
{
    static const QRegularExpression whole(
        R"(^(?:[spr]k[-_]|gh[pousr]_|x[o0]x[abprs8]-|x[o0]x[A-Z0-9]-\d|ey[JI1L)\]}]|tk[-_](?:live|test|proj)[-_]|AKIA))",
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression shortened(R"(^(?:[spr]k|gh[pousr]|x[o0]x[abprs8]|ey[JI1L]|AKIA))",
                                              QRegularExpression::CaseInsensitiveOption);
    return (prefix == Prefix::Whole ? whole : shortened).match(stretch).hasMatch();
}

bool isJumbled(QStringView run)
{
    constexpr qsizetype kFewest = 4; // signs; less is too little to tell
    const Mixture mixture = mixtureOf(run);
    if (mixture.letters + mixture.digits < kFewest)
        return false;
    const bool isMixed = mixture.letters > 0 && mixture.digits > 0;
    // In names, capitals and numbers come once in four letters and more.
    return (mixture.turns >= 2 && 20 * mixture.turns >= 7 * mixture.pairs) ||
           (isMixed && mixture.isHex && mixture.letters + mixture.digits >= 6) ||
           (isMixed && !mixture.hasSmall && mixture.turns >= 2);
}

QChar plainSign(QChar sign)
{
    switch (sign.unicode()) {
    case u'\u2010':
    case u'\u2011':
    case u'\u2012':
    case u'\u2013':
    case u'\u2014':
    case u'\u2212':
        return u'-';
    case u'©':
    case u'®':
        return u'@';
    case u'£':
        return u'f';
    case u'¢':
        return u'c';
    case u'€':
        return u'e';
    case u'§':
        return u's';
    case u'¥':
        return u'Y';
    case u'°':
        return u'0';
    case u'|':
        return u'l';
    default: // an accent is a stroke of the letter, as a 6 may be read for an é
        return sign.decompositionTag() == QChar::Canonical ? sign.decomposition().front() : sign;
    }
}

QString plainSigns(QString line)
{
    static const QRegularExpression prefix(R"([({\[](\d{2,4})[)}\]](?=[ -]?\d{3}))");
    std::ranges::transform(line, line.begin(), plainSign);
    for (auto it = prefix.globalMatch(line); it.hasNext();) {
        const auto match = it.next();
        line[match.capturedStart()] = '(';
        line[match.capturedEnd() - 1] = ')';
    }
    return lettersForBrackets(line);
}

QList<Match> merged(QList<Match> all)
{
    std::ranges::sort(all, {}, &Match::start);
    QList<Match> apart;
    for (const Match &match : all) {
        if (!apart.isEmpty() && match.start < apart.last().end())
            apart.last().length = std::max(apart.last().end(), match.end()) - apart.last().start;
        else
            apart.append(match);
    }
    return apart;
}

bool mayBeJumbled(QStringView run)
{
    const Mixture mixture = mixtureOf(run);
    return mixture.turns >= 2 || (mixture.letters > 0 && mixture.digits > 0);
}

QList<Match> matches(const QString &line)
{
    return found(exactPatterns(), line);
}

QList<Match> matchesInReadLine(const QString &line, FurtherKinds further)
{
    QList<Match> all = matches(line);
    const QString plain = plainSigns(line);
    all += matches(plain);
    all += matches(digitsForLetters(plain));
    const Joined joined = withoutStrayBlanks(plain);
    for (const auto *expression :
         {&exactPatterns(), &misreadPatterns(), &opaquePattern(), &shortenedPatterns(), &gluedPatterns()}) {
        const bool mayBeWords = expression == &shortenedPatterns() || expression == &gluedPatterns();
        for (const Match &match : found(*expression, joined.text)) {
            if (mayBeWords && !isJumbled(QStringView(joined.text).sliced(match.start, match.length)))
                continue;
            const qsizetype first = joined.places[match.start];
            all.append({first, joined.places[match.end() - 1] + 1 - first});
        }
    }
    all += furtherMatches(plain, further, Form::Forgiving);
    all += furtherMatches(line, further, Form::Exact);
    return merged(all);
}

} // namespace SensitiveText
