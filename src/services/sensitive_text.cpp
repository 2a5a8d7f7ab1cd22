#include "services/sensitive_text.h"

#include <QRegularExpression>

namespace SensitiveText {

namespace {

QRegularExpression compiled(const QStringList &alternatives)
{
    QRegularExpression expression(alternatives.join('|'), QRegularExpression::CaseInsensitiveOption);
    Q_ASSERT(expression.isValid());
    expression.optimize();
    return expression;
}

const QRegularExpression &patterns()
{
    static const QRegularExpression expression = compiled({
        R"([A-Z0-9._%+-]+@[A-Z0-9.-]+\.[A-Z]{2,})", // e-mail address
        R"(\+?\d[\d\s().-]{6,}\d)",                 // telephone number
        R"(\b\d{4,}\b)",                            // card, account and other long numbers
        R"(\b(?:\d{1,3}\.){3}\d{1,3}\b)",           // IPv4 address
        R"(\b(?:sk|pk|rk)[-_][A-Z0-9_-]{16,})",     // secret key of a service
        R"(\bgh[pousr]_[A-Z0-9]{20,})",             // access token of a source host
        R"(\bAKIA[0-9A-Z]{16}\b)",                  // key identifier of a cloud
        R"(\bxox[abprs]-[A-Z0-9-]{10,})",           // token of a chat workspace
        R"(\beyJ[A-Z0-9_-]{10,}\.[A-Z0-9_-]{10,})", // web token
        R"(\b[A-Z0-9_-]{32,}\b)",                   // any other opaque run
    });
    return expression;
}

// What the same secrets look like after the usual slips of reading; applied to lines without stray blanks.
const QRegularExpression &misreadPatterns()
{
    static const QRegularExpression expression = compiled({
        R"([A-Z0-9._%+-]+@[A-Z0-9.-]+[.,][A-Z]{2,})",
        R"([A-Z0-9._%+-]{2,}@[A-Z0-9-]{3,} [A-Z]{2,}$)", // the dot taken for a blank
        R"(\b[s5][kx][-_.][A-Z0-9_.-]{16,})",
        R"(\b(?:pk|rk)[-_.][A-Z0-9_.-]{16,})",
        R"([g9]h[pousr0]_?[A-Z0-9]{20,})",
        R"(\b[A4]K[I1L|][A4][0-9A-Z|]{15,17}\b)",
        R"(\b[xX][oO0][xX][abprs8]-?[A-Z0-9-]{10,})",
        R"(\b[e6]y[JI1][A-Z0-9_-]{8,}[.,][A-Z0-9_-]{8,})",
        R"(\b[A-Z0-9_-]{30,}\b)",
    });
    return expression;
}

QList<Match> found(const QRegularExpression &expression, const QString &text)
{
    QList<Match> list;
    for (auto it = expression.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        list.append({match.capturedStart(), match.capturedLength()});
    }
    return list;
}

// Signs that stand for another in the midst of a secret; one for one, so that places stay.
QString plainSigns(QString line)
{
    for (QChar &sign : line) {
        switch (sign.unicode()) {
        case u'\u2010':
        case u'\u2011':
        case u'\u2012':
        case u'\u2013':
        case u'\u2014':
        case u'\u2212':
            sign = '-';
            break;
        case u'©':
        case u'®':
            sign = '@';
            break;
        case u'£':
            sign = 'f';
            break;
        case u'¢':
            sign = 'c';
            break;
        case u'€':
            sign = 'e';
            break;
        case u'§':
            sign = 's';
            break;
        case u'°':
            sign = '0';
            break;
        case u'|':
            sign = 'l';
            break;
        default:
            break;
        }
    }
    return line;
}

// Letters that are read for digits become digits in words that are mostly made of digits.
QString digitsForLetters(QString line)
{
    static const QRegularExpression word(R"([0-9OoQlI|.,()+-]{4,})");
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
        }
    }
    return line;
}

bool isKeySign(QChar c)
{
    return c.unicode() < 128 && (c.isLetterOrNumber() || c == '_' || c == '-');
}

// No word of a language: letters and digits in one, or capitals after small letters.
bool looksOpaque(QStringView word)
{
    bool letter = false;
    bool digit = false;
    int turns = 0;
    for (qsizetype i = 0; i < word.size(); ++i) {
        letter |= word[i].isLetter();
        digit |= word[i].isDigit();
        turns += i > 0 && word[i].isUpper() && word[i - 1].isLower();
    }
    return (letter && digit && word.size() >= 5) || turns >= 2 || (digit && word.size() >= 8);
}

struct Joined {
    QString text;
    QList<qsizetype> places; // of each code unit in the line
};

// The line without the blanks that a reader puts into addresses and keys: beside an @, after a dot or
// underscore before an address, and between two stretches that are no words.
Joined withoutStrayBlanks(const QString &line)
{
    const auto stretch = [&line](qsizetype from, int step) {
        qsizetype end = from;
        while (end >= 0 && end < line.size() && (isKeySign(line[end]) || line[end] == '.'))
            end += step;
        return step > 0 ? QStringView(line).mid(from, end - from)
                        : QStringView(line).mid(end + 1, from - end);
    };
    Joined joined;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == ' ' && i > 0 && i + 1 < line.size()) {
            const QStringView before = stretch(i - 1, -1);
            const QStringView after = stretch(i + 1, 1);
            const bool besideAt = line[i - 1] == '@' || line[i + 1] == '@';
            const bool mail = !after.isEmpty() && i + 1 + after.size() < line.size() &&
                              line[i + 1 + after.size()] == '@' &&
                              (before.endsWith('.') || before.endsWith('_'));
            const qsizetype at = i - 1 - before.size();
            const bool domain = at >= 0 && line[at] == '@' && !after.isEmpty() &&
                                (before.endsWith('.') || after.startsWith('.'));
            const bool key = looksOpaque(before) && looksOpaque(after);
            const bool prefix = QRegularExpression(R"(^(?:[spr]k|gh[pousr]|xox[abprs]|eyJ?|AKIA)[-_]?$)",
                                                   QRegularExpression::CaseInsensitiveOption)
                                    .match(before)
                                    .hasMatch() &&
                                looksOpaque(after);
            if (besideAt || mail || domain || key || prefix)
                continue;
        }
        joined.text += line[i];
        joined.places.append(i);
    }
    return joined;
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

} // namespace

QList<Match> matches(const QString &line)
{
    return found(patterns(), line);
}

QList<Match> matchesInReadLine(const QString &line)
{
    QList<Match> all = matches(line);
    const QString plain = plainSigns(line);
    all += matches(plain);
    all += matches(digitsForLetters(plain));
    const Joined joined = withoutStrayBlanks(plain);
    for (const auto *expression : {&patterns(), &misreadPatterns()}) {
        for (const Match &match : found(*expression, joined.text)) {
            const qsizetype first = joined.places[match.start];
            all.append({first, joined.places[match.end() - 1] + 1 - first});
        }
    }
    return merged(all);
}

} // namespace SensitiveText
