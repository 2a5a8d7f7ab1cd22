#include "services/sensitive_ink.h"

#include <QRegularExpression>
#include <cmath>
#include <numeric>
#include <utility>

namespace SensitiveText {

namespace {

double center(const QRectF &box)
{
    return box.x() + box.width() / 2;
}

// The value that a share of all is not above.
double quantile(QList<double> values, double share)
{
    std::ranges::sort(values);
    return values[qsizetype(share * double(values.size()))];
}

// The width of the columns that centers stand in, about a width apart; 0 when they drift away from columns,
// as letters of nearly one width do.
double columnWidth(const QList<double> &centers, double width)
{
    QList<double> columns{0};
    for (qsizetype i = 1; i < centers.size(); ++i)
        columns.append(columns.last() + std::round((centers[i] - centers[i - 1]) / width));
    const auto meanOf = [](const QList<double> &values) {
        return std::reduce(values.begin(), values.end()) / double(values.size());
    };
    const double meanColumn = meanOf(columns);
    const double meanCenter = meanOf(centers);
    // The line of least squares through them.
    double product = 0;
    double square = 0;
    for (qsizetype i = 0; i < centers.size(); ++i) {
        product += (columns[i] - meanColumn) * (centers[i] - meanCenter);
        square += (columns[i] - meanColumn) * (columns[i] - meanColumn);
    }
    const double pitch = square > 0 ? product / square : 0;
    QList<double> drifts;
    for (qsizetype i = 0; i < centers.size(); ++i)
        drifts.append(std::abs(centers[i] - meanCenter - pitch * (columns[i] - meanColumn)));
    return quantile(drifts, 0.5) < 0.08 * pitch || quantile(drifts, 0.9) < 0.25 * pitch ? pitch : 0;
}

constexpr qsizetype kMostLost = 3;

// Where characters stand in columns, the columns tell how long a run is, also when reading lost some of it.
QList<Match> shortenedRuns(const RecognizedLine &line)
{
    static const QRegularExpression run(
        QStringLiteral("(?<![A-Za-z0-9_-])[A-Za-z0-9_-]{%1,%2}(?![A-Za-z0-9_-])")
            .arg(kOpaqueRun - kMostLost)
            .arg(kOpaqueRun - 1));
    QList<Match> found;
    for (auto it = run.globalMatch(plainSigns(line.text)); it.hasNext();) {
        const auto match = it.next();
        const double pitch = pitchOf(line);
        if (pitch <= 0)
            break;
        const double between =
            center(line.characters[match.capturedEnd() - 1]) - center(line.characters[match.capturedStart()]);
        const auto columns = std::lround(between / pitch) + 1;
        if (columns >= kOpaqueRun && columns - match.capturedLength() <= kMostLost)
            found.append({match.capturedStart(), match.capturedLength()});
    }
    return found;
}

// Whether a blank is narrower than any between words: wider beside a 1, which leaves its place half empty.
bool isFalseBlank(const RecognizedLine &line, qsizetype blank)
{
    if (line.text[blank] != ' ' || blank == 0 || blank + 1 >= line.characters.size())
        return false;
    const QRectF &before = line.characters[blank - 1];
    const QRectF &after = line.characters[blank + 1];
    const bool isBesideOne = line.text[blank - 1] == '1' || line.text[blank + 1] == '1';
    return !before.isEmpty() && !after.isEmpty() &&
           after.left() - before.right() < (isBesideOne ? 0.6 : 0.3) * advanceOf(line);
}

// The keys that are found when false blanks don't count.
QList<Match> acrossFalseBlanks(const RecognizedLine &line)
{
    constexpr qsizetype kShortest = 16; // signs of a key
    QString text;
    QList<qsizetype> places;
    for (qsizetype i = 0; i < line.text.size(); ++i) {
        if (isFalseBlank(line, i))
            continue;
        text += line.text[i];
        places.append(i);
    }
    QList<Match> found;
    if (text.size() == line.text.size())
        return found;
    // A number behind words makes no key of them.
    static const QRegularExpression number("\\d+$");
    for (const Match &match : matchesInReadLine(text))
        if (match.length >= kShortest && mayBeJumbled(text.sliced(match.start, match.length).remove(number)))
            found.append({places[match.start], places[match.end() - 1] + 1 - places[match.start]});
    return found;
}

// What is found when blanks are put where the ink has a gap as wide as one: a word that was glued to a number
// hides where that begins.
QList<Match> acrossLostBlanks(const RecognizedLine &line)
{
    constexpr double kWide =
        0.45; // of the mean width of a character: blanks have more, and gaps in words less
    QString text;
    QList<qsizetype> places;
    for (qsizetype i = 0; i < line.text.size(); ++i) {
        if (i > 0 && i < line.characters.size() && !line.characters[i].isEmpty() &&
            !line.characters[i - 1].isEmpty() &&
            line.characters[i].left() - line.characters[i - 1].right() > kWide * advanceOf(line)) {
            text += ' ';
            places.append(i);
        }
        text += line.text[i];
        places.append(i);
    }
    QList<Match> found;
    if (text.size() == line.text.size())
        return found;
    for (const Match &match : matches(plainSigns(text)))
        found.append({places[match.start], places[match.end() - 1] + 1 - places[match.start]});
    return found;
}

// Whether the widest gap in a run stands behind a word: a blank that was overlooked.
bool hasABlank(const RecognizedLine &line, const Match &match)
{
    QList<double> gaps;
    for (qsizetype i = match.start + 1; i < match.end(); ++i)
        gaps.append(line.characters[i].left() - line.characters[i - 1].right());
    const auto widest = std::ranges::max_element(gaps);
    const auto before = std::distance(gaps.begin(), widest) + 1;
    const double gap = std::exchange(*widest, 0);
    const double next = *std::ranges::max_element(gaps);
    const auto isSmall = [](QChar c) { return c.isLower(); };
    return gap > 0.4 * advanceOf(line) && gap > 1.5 * next && before > 1 &&
           match.length - before < kOpaqueRun &&
           std::ranges::all_of(QStringView(line.text).sliced(match.start, before), isSmall);
}

// How many letters of a run were read for two, a small and a large one: both stand on the same ink.
qsizetype twiceRead(const RecognizedLine &line, const Match &match)
{
    const auto shape = [](QChar c) {
        static constexpr QStringView kDigits = u"025";
        static constexpr QStringView kLetters = u"ozs";
        const auto digit = kDigits.indexOf(c);
        return digit < 0 ? c.toLower() : kLetters[digit];
    };
    qsizetype count = 0;
    for (qsizetype i = match.start + 1; i < match.end(); ++i) {
        const QChar a = line.text[i - 1];
        const QChar b = line.text[i];
        const double overlap = line.characters[i - 1].right() - line.characters[i].left();
        count += a != b && shape(a) == shape(b) && shape(a) != 'j' && overlap > 0.1 * advanceOf(line);
    }
    return count;
}

// Whether a match is no opaque run but for a sign too many.
bool isTooShort(const RecognizedLine &line, const Match &match)
{
    static const QRegularExpression opaque("^[A-Za-z0-9_-]+$");
    const QStringView text = QStringView(line.text).sliced(match.start, match.length);
    constexpr qsizetype kMostGained = 10; // signs, as a word has them
    return line.characters.size() == line.text.size() && match.length >= kOpaqueRun &&
           match.length <= kOpaqueRun + kMostGained && opaque.match(text).hasMatch() &&
           !beginsLikeAKey(text) && pitchOf(line) <= 0 &&
           (match.length - twiceRead(line, match) < kOpaqueRun || hasABlank(line, match));
}

} // namespace

double advanceOf(const RecognizedLine &line)
{
    return line.box.width() / double(std::max<qsizetype>(line.text.size(), 1));
}

double pitchOf(const RecognizedLine &line)
{
    QList<double> steps;
    QList<double> centers;
    for (qsizetype i = 0; i < line.characters.size(); ++i) {
        if (line.characters[i].isEmpty())
            continue;
        centers.append(center(line.characters[i]));
        if (i > 0 && !line.characters[i - 1].isEmpty())
            steps.append(centers.last() - centers[centers.size() - 2]);
    }
    constexpr qsizetype kFewest = 8;
    if (steps.size() < kFewest)
        return 0;
    const double usual = quantile(steps, 0.5);
    const auto even =
        std::ranges::count_if(steps, [usual](double step) { return std::abs(step - usual) < 0.15 * usual; });
    return usual > 0 && 10 * even >= 8 * steps.size() ? columnWidth(centers, usual) : 0;
}

QList<Match> matchesByInk(const RecognizedLine &line, FurtherKinds further)
{
    auto found = merged(matchesInReadLine(line.text, further) + shortenedRuns(line) +
                        acrossFalseBlanks(line) + acrossLostBlanks(line));
    found.removeIf([&line](const Match &match) { return isTooShort(line, match); });
    return found;
}

} // namespace SensitiveText
