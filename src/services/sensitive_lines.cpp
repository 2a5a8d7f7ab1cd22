#include "services/sensitive_lines.h"

#include <QRegularExpression>
#include <cmath>

namespace SensitiveText {

namespace {

double center(const QRectF &box)
{
    return box.x() + box.width() / 2;
}

// The mean width of a line's characters, blanks between them too.
double advanceOf(const RecognizedLine &line)
{
    return line.box.width() / double(std::max<qsizetype>(line.text.size(), 1));
}

// The distance between the characters of a line when all stand in columns, otherwise 0.
double pitchOf(const RecognizedLine &line)
{
    QList<double> steps;
    for (qsizetype i = 1; i < line.characters.size(); ++i)
        if (!line.characters[i].isEmpty() && !line.characters[i - 1].isEmpty())
            steps.append(center(line.characters[i]) - center(line.characters[i - 1]));
    constexpr qsizetype Fewest = 8;
    if (steps.size() < Fewest)
        return 0;
    std::ranges::sort(steps);
    const double usual = steps[steps.size() / 2];
    const auto even =
        std::ranges::count_if(steps, [usual](double step) { return std::abs(step - usual) < 0.15 * usual; });
    return 10 * even >= 8 * steps.size() ? usual : 0;
}

// ---- Runs that lost a sign ----

constexpr qsizetype OpaqueRun = 32; // signs; a shorter run is none of anybody's keys
constexpr qsizetype MostLost = 3;

// Where characters stand in columns, the columns tell how long a run is, also when reading lost some of it.
QList<Match> shortenedRuns(const RecognizedLine &line)
{
    static const QRegularExpression run(
        QStringLiteral("[A-Za-z0-9_-]{%1,%2}").arg(OpaqueRun - MostLost).arg(OpaqueRun - 1));
    QList<Match> found;
    for (auto it = run.globalMatch(line.text); it.hasNext();) {
        const auto match = it.next();
        const double pitch = pitchOf(line);
        if (pitch <= 0)
            break;
        const double between =
            center(line.characters[match.capturedEnd() - 1]) - center(line.characters[match.capturedStart()]);
        const auto columns = std::lround(between / pitch) + 1;
        if (columns >= OpaqueRun && columns - match.capturedLength() <= MostLost)
            found.append({match.capturedStart(), match.capturedLength()});
    }
    return found;
}

// ---- Keys over several lines ----

bool areOneFont(const RecognizedLine &a, const RecognizedLine &b)
{
    const auto areAlike = [](double x, double y, double most) {
        return std::max(x, y) <= most * std::min(x, y);
    };
    // The width of the characters of a short line tells little.
    constexpr qsizetype Few = 6;
    return areAlike(a.box.height(), b.box.height(), 1.3) &&
           (std::min(a.text.size(), b.text.size()) < Few || areAlike(advanceOf(a), advanceOf(b), 1.35));
}

// How far a line stands under another, in heights of a line.
double stepDown(const RecognizedLine &above, const RecognizedLine &below)
{
    const double height = std::max(above.box.height(), below.box.height());
    return (above.box.center().y() - below.box.center().y()) / height;
}

// The line right under another in one column of text; -1 when there is none.
qsizetype lineUnder(const QList<RecognizedLine> &lines, qsizetype above)
{
    constexpr double Nearest = 0.6;
    constexpr double Farthest = 2.2; // generous spacing; a blank line is farther
    qsizetype best = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRectF &box = lines[i].box;
        const double step = stepDown(lines[above], lines[i]);
        const bool overlap = box.left() < lines[above].box.right() && box.right() > lines[above].box.left();
        if (overlap && step > Nearest && step < Farthest &&
            (best < 0 || step < stepDown(lines[above], lines[best])))
            best = i;
    }
    return best;
}

// The right edge of the text around two lines, the one under the other: how far any line of their font
// reaches that begins where the lower does.
double rightEdge(const QList<RecognizedLine> &lines, qsizetype upper, qsizetype lower)
{
    const double slack = advanceOf(lines[upper]);
    double edge = std::max(lines[upper].box.right(), lines[lower].box.right());
    for (const RecognizedLine &line : lines)
        if (std::abs(line.box.left() - lines[lower].box.left()) < slack && areOneFont(line, lines[upper]))
            edge = std::max(edge, line.box.right());
    return edge;
}

bool continuesAtTheEdge(const QList<RecognizedLine> &lines, qsizetype upper, qsizetype lower)
{
    const RecognizedLine &above = lines[upper];
    const RecognizedLine &below = lines[lower];
    const double letter = advanceOf(above);
    constexpr double MostIndent = 12; // letters by which the first line may be set in
    return areOneFont(above, below) && below.box.left() < above.box.left() + 0.8 * letter &&
           below.box.left() > above.box.left() - MostIndent * letter &&
           above.box.right() > rightEdge(lines, upper, lower) - 1.6 * letter;
}

bool isRunSign(QChar c)
{
    return c.isLetterOrNumber() || QStringView(u"_-.@+%").contains(c);
}

bool endsInARun(const QString &text)
{
    return !text.isEmpty() && isRunSign(plainSign(text.back()));
}
bool beginsWithARun(const QString &text)
{
    return !text.isEmpty() && isRunSign(plainSign(text.front()));
}

// Whether a line is one run from edge to edge; blanks that were read into it don't count.
bool isOneRun(const QString &text)
{
    static const QRegularExpression wordOrNumber("^(?:[A-Z]?[a-z]{3,}|[A-Z]{3,}|[0-9]*)(?![A-Za-z0-9])");
    const QStringList pieces = plainSigns(text).split(' ');
    const auto areSigns = [](const QString &piece) { return std::ranges::all_of(piece, isRunSign); };
    const auto isWord = [](const QString &piece) { return wordOrNumber.match(piece).hasMatch(); };
    constexpr qsizetype Most = 3;
    return std::ranges::all_of(pieces, areSigns) &&
           (pieces.size() == 1 ||
            (pieces.size() <= Most && std::ranges::none_of(pieces, isWord) && isJumbled(pieces.join(""))));
}

// Lines that may hold one broken key, with their signs in a row. All but the first and the last are one run.
struct Chain {
    struct Place {
        qsizetype line;
        qsizetype sign;
    };
    QList<qsizetype> lines;
    QString text;
    QList<Place> places; // of each sign of the text

    void append(const QList<RecognizedLine> &all, qsizetype line)
    {
        lines.append(line);
        const QString signs = plainSigns(all[line].text);
        const bool isRun = lines.size() > 1 && isOneRun(signs);
        for (qsizetype i = 0; i < signs.size(); ++i) {
            if (isRun && signs[i] == ' ')
                continue;
            text += signs[i];
            places.append({line, i});
        }
    }
};

Chain chainFrom(const QList<RecognizedLine> &lines, qsizetype first)
{
    Chain chain;
    chain.append(lines, first);
    for (qsizetype above = first; endsInARun(lines[above].text);) {
        if (above != first && !isOneRun(lines[above].text))
            break;
        const qsizetype below = lineUnder(lines, above);
        if (below < 0 || !beginsWithARun(lines[below].text) || !continuesAtTheEdge(lines, above, below))
            break;
        chain.append(lines, below);
        above = below;
    }
    return chain;
}

// The part of a match that stands on one line.
struct Part {
    qsizetype line;
    Match match;
    QString text;
};

QList<Part> partsOf(const QList<RecognizedLine> &lines, const Chain &chain, const Match &match)
{
    QList<Part> parts;
    for (qsizetype i = match.start; i < match.end(); ++i) {
        const auto [line, sign] = chain.places[i];
        if (parts.isEmpty() || parts.last().line != line)
            parts.append({line, {sign, 0}, {}});
        parts.last().match.length = sign + 1 - parts.last().match.start;
    }
    for (Part &part : parts)
        part.text = plainSigns(lines[part.line].text).sliced(part.match.start, part.match.length);
    return parts;
}

bool isAddress(const QString &text)
{
    static const QRegularExpression address(R"(^(?:[^@]+@[^@]+|(?:\d{1,3}\.){3}\d{1,3})$)");
    return address.match(text).hasMatch();
}

// Whether nothing but a mark or a quote stands behind the last part of a key.
bool endsItsLine(const RecognizedLine &line, const Part &part)
{
    return std::ranges::none_of(QStringView(line.text).sliced(part.match.end()),
                                [](QChar c) { return c.isLetterOrNumber() || c == ' '; });
}

// Whether a match over the end of a line is a broken key, rather than two words or numbers that happen to
// stand at the end of one line and the beginning of the next.
bool isBroken(const QList<RecognizedLine> &lines, const QList<Part> &parts)
{
    QString whole;
    for (const Part &part : parts)
        whole += part.text;
    const Part &first = parts.first();
    const Part &last = parts.last();
    if (isAddress(whole)) // sentences hold addresses and numbers too: only where letters stand in columns
        return parts.size() == 2 && pitchOf(lines[first.line]) > 0 && !last.text.contains('@') &&
               matches(first.text).isEmpty() && matches(last.text).isEmpty();
    const bool isTyped = beginsLikeAKey(whole);
    if (!isTyped) {
        // A list of names of one length is no broken name.
        const bool isList = first.text.size() == lines[first.line].text.size() &&
                            last.text.size() == lines[last.line].text.size() &&
                            first.text.size() == last.text.size();
        if (whole.size() < OpaqueRun || isList || !isJumbled(first.text))
            return false;
    }
    constexpr qsizetype Few = 4; // signs that are the rest of a key when nothing else stands on their line
    const bool alone = endsItsLine(lines[last.line], last);
    return (isTyped ? mayBeJumbled(whole) : isJumbled(whole)) &&
           (isJumbled(last.text) || (alone && (last.text.size() <= Few || mayBeJumbled(last.text)))) &&
           std::ranges::all_of(parts.sliced(1, parts.size() - 2),
                               [](const Part &part) { return mayBeJumbled(part.text); });
}

} // namespace

QList<QList<Match>> matchesInReadLines(const QList<RecognizedLine> &lines)
{
    QList<QList<Match>> found;
    for (const RecognizedLine &line : lines)
        found.append(merged(matchesInReadLine(line.text) + shortenedRuns(line)));
    for (qsizetype first = 0; first < lines.size(); ++first) {
        const Chain chain = chainFrom(lines, first);
        if (chain.lines.size() < 2)
            continue;
        for (const Match &match : matchesInReadLine(chain.text)) {
            const QList<Part> parts = partsOf(lines, chain, match);
            // What begins further down is found from there.
            if (parts.size() < 2 || parts.first().line != first || !isBroken(lines, parts))
                continue;
            for (const Part &part : parts)
                found[part.line] = merged(found[part.line] << part.match);
        }
    }
    return found;
}

} // namespace SensitiveText
