#include "services/sensitive_lines.h"

#include "services/further_kinds.h"
#include "services/sensitive_ink.h"

#include <QRegularExpression>
#include <cmath>

namespace SensitiveText {

namespace {

// Signs; the characters of a shorter line tell little of their width, and may be all low.
constexpr qsizetype kShortLine = 6;

bool areAlike(double x, double y, double most)
{
    return std::max(x, y) <= most * std::min(x, y);
}

bool areOneFont(const RecognizedLine &a, const RecognizedLine &b, double mostHeight = 1.3)
{
    return areAlike(a.box.height(), b.box.height(), mostHeight) &&
           (std::min(a.text.size(), b.text.size()) < kShortLine || areAlike(advanceOf(a), advanceOf(b), 1.5));
}

// How far a line stands under another, in heights of a line.
double stepDown(const RecognizedLine &above, const RecognizedLine &below)
{
    const double height = std::max(above.box.height(), below.box.height());
    return (above.box.center().y() - below.box.center().y()) / height;
}

// Lines are broken between any two letters of a key, after a hyphen, and at the blanks of a number.
bool endsInHyphen(const RecognizedLine &line)
{
    return line.text.endsWith('-');
}
bool endsInTelephone(const RecognizedLine &line)
{
    static const QRegularExpression begun(R"((?:^|\s)(?:\+\d[\d\s().-]*|\(\d{2,4}\))$)");
    return begun.match(line.text).hasMatch();
}

// The width of what had no room at the end of the line above: a letter, or all up to the next place where
// the line could have been broken.
double widthOfFirst(const RecognizedLine &line, bool isLetter)
{
    static const QRegularExpression end("[ -]");
    const qsizetype length = line.text.indexOf(end);
    if (isLetter || length == 0)
        return advanceOf(line);
    return line.boxOf(0, length < 0 ? line.text.size() : length + 1).width();
}

// How the lines of a picture stand to each other.
class Layout {
public:
    explicit Layout(const QList<RecognizedLine> &lines);

    // The next line under one in its column of text; -1 when there is none.
    qsizetype below(qsizetype line) const { return m_below[line]; }
    // Whether the line above ends for want of room, so that a word may go on in the one under it.
    bool continues(qsizetype upper, qsizetype lower) const;

private:
    double rightEdge(qsizetype upper, qsizetype lower) const;

    const QList<RecognizedLine> &m_lines;
    QList<qsizetype> m_below;
    QList<qsizetype> m_above;
};

Layout::Layout(const QList<RecognizedLine> &lines)
    : m_lines(lines), m_below(lines.size(), -1), m_above(lines.size(), -1)
{
    constexpr double kNearest = 0.6;  // heights of a line
    constexpr double kFarthest = 1.7; // as far as generous spacing; rows of tables are farther
    for (qsizetype upper = 0; upper < lines.size(); ++upper) {
        for (qsizetype lower = 0; lower < lines.size(); ++lower) {
            const RecognizedLine &a = lines[upper];
            const RecognizedLine &b = lines[lower];
            const double step = stepDown(a, b);
            if (step < kNearest || step > kFarthest || b.box.left() >= a.box.right() ||
                b.box.right() <= a.box.left())
                continue;
            if (m_below[upper] < 0 || step < stepDown(a, lines[m_below[upper]]))
                m_below[upper] = lower;
            if (m_above[lower] < 0 || step < stepDown(lines[m_above[lower]], b))
                m_above[lower] = upper;
        }
    }
}

// The right edge of the paragraph that holds two lines, the one under the other: how far its lines reach.
// They stand at one distance, and begin where the lower of the two does.
double Layout::rightEdge(qsizetype upper, qsizetype lower) const
{
    const double step = stepDown(m_lines[upper], m_lines[lower]);
    double edge = std::max(m_lines[upper].box.right(), m_lines[lower].box.right());
    const auto follow = [&](qsizetype from, const QList<qsizetype> &nextOf) {
        for (qsizetype next = nextOf[from]; next >= 0; from = next, next = nextOf[from]) {
            const RecognizedLine &line = m_lines[next];
            const double distance = std::abs(stepDown(m_lines[from], line));
            if (std::abs(line.box.left() - m_lines[lower].box.left()) > 0.6 * advanceOf(m_lines[upper]) ||
                std::abs(distance - step) > 0.2 * step || !areOneFont(line, m_lines[upper]))
                return;
            edge = std::max(edge, line.box.right());
        }
    };
    follow(upper, m_above);
    follow(lower, m_below);
    return edge;
}

bool Layout::continues(qsizetype upper, qsizetype lower) const
{
    const RecognizedLine &above = m_lines[upper];
    const RecognizedLine &below = m_lines[lower];
    const double letter = advanceOf(above);
    constexpr double kMostIndent = 12; // letters by which the first line may be set in
    const bool isUnder = below.box.left() < above.box.left() + 0.8 * letter &&
                         below.box.left() > above.box.left() - kMostIndent * letter;
    const double first = widthOfFirst(below, !endsInHyphen(above) && !endsInTelephone(above));
    return isUnder && areOneFont(above, below, below.text.size() < kShortLine ? 1.8 : 1.3) &&
           above.box.right() + first + 0.6 * letter > rightEdge(upper, lower);
}

bool isRunSign(QChar c)
{
    return c.isLetterOrNumber() || QStringView(u"_-.@+/=%()]}").contains(c);
}

bool endsInARun(const QString &text)
{
    // A web token may end at its dot, and that be read as a comma.
    return !text.isEmpty() && (isRunSign(plainSign(text.back())) || text.endsWith(','));
}
bool beginsWithARun(const QString &text)
{
    return !text.isEmpty() && isRunSign(plainSigns(text).front());
}

// Whether a line is one run from edge to edge; blanks that were read into it don't count.
bool isOneRun(const QString &text)
{
    static const QRegularExpression wordOrNumber("^(?:[A-Z]?[a-z]{3,}|[A-Z]{3,}|[0-9]*)(?![A-Za-z0-9])");
    const QStringList pieces = plainSigns(text).split(' ');
    const auto areSigns = [](const QString &piece) { return std::ranges::all_of(piece, isRunSign); };
    const auto isWord = [](const QString &piece) { return wordOrNumber.match(piece).hasMatch(); };
    constexpr qsizetype kMost = 3;
    return std::ranges::all_of(pieces, areSigns) &&
           (pieces.size() == 1 ||
            (pieces.size() <= kMost && std::ranges::none_of(pieces, isWord) && isJumbled(pieces.join(""))));
}

// Lines that may hold one broken key, with their signs in a row. All but the first and the last are one run.
struct Chain {
    struct Place {
        qsizetype line;
        qsizetype sign;
    };
    QString text;
    QList<Place> places; // of each sign of the text

    Chain(const QList<RecognizedLine> &all, const QList<qsizetype> &lines)
    {
        for (const qsizetype line : lines) {
            const QString signs = plainSigns(all[line].text);
            const bool isRun = line != lines.first() && isOneRun(signs);
            for (qsizetype i = 0; i < signs.size(); ++i) {
                if (isRun && signs[i] == ' ')
                    continue;
                text += signs[i];
                places.append({line, i});
            }
        }
    }
};

// The lines from one of them on that may go on in each other.
QList<qsizetype> runOfLines(const QList<RecognizedLine> &lines, const Layout &layout, qsizetype first)
{
    constexpr qsizetype kLongest = 32; // lines, more than the longest tokens have
    QList<qsizetype> run{first};
    while (run.size() < kLongest && endsInARun(lines[run.last()].text) &&
           (run.size() == 1 || isOneRun(lines[run.last()].text))) {
        const qsizetype below = layout.below(run.last());
        if (below < 0 || !beginsWithARun(lines[below].text) || !layout.continues(run.last(), below))
            break;
        run.append(below);
    }
    return run;
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

bool isMailAddress(const QString &text)
{
    static const QRegularExpression address(R"(^[^@]+@[^@]+$)");
    return address.match(text).hasMatch();
}

bool isNetworkAddress(const QString &text)
{
    constexpr qsizetype kShortest = 9; // signs; the numbers of chapters are shorter
    static const QRegularExpression address(R"(^(?:(?:25[0-5]|2[0-4]\d|1?\d?\d)(?:\.|$)){4}(?<!\.)$)");
    return text.size() >= kShortest && address.match(text).hasMatch();
}

bool isTelephone(const QString &text)
{
    constexpr auto kFewestDigits = 9; // years and page numbers make less
    constexpr auto kMostDigits = 15;
    static const QRegularExpression signs(R"(^\+?[\d\s().-]+$)");
    const auto digits = std::ranges::count_if(text, [](QChar c) { return c.isDigit(); });
    return digits >= kFewestDigits && digits <= kMostDigits && signs.match(text).hasMatch();
}

// Whether nothing but a mark or a quote stands behind the last part of a key.
bool endsItsLine(const RecognizedLine &line, const Part &part)
{
    return std::ranges::none_of(QStringView(line.text).sliced(part.match.end()),
                                [](QChar c) { return c.isLetterOrNumber() || c == ' '; });
}

// Whether nothing in it tells a part of a key from words.
bool isOfWords(const QString &text)
{
    static const QRegularExpression words("^(?:(?:[A-Z]?[a-z]+|[A-Z]+|[0-9]+)(?:[-_.]|$))+$");
    return words.match(text).hasMatch();
}

constexpr qsizetype kNarrowest = 24; // signs to an edge that breaks anything

bool isInColumns(const RecognizedLine &line)
{
    return pitchOf(line) > 0 && line.text.size() >= kNarrowest;
}

bool isBrokenKey(const QList<RecognizedLine> &lines, const QList<Part> &parts, const QString &whole)
{
    const Part &first = parts.first();
    const Part &last = parts.last();
    const RecognizedLine &firstLine = lines[first.line];
    const bool isTyped =
        beginsLikeAKey(whole) || (beginsLikeAKey(whole, Prefix::Shortened) && isJumbled(first.text));
    if (!isTyped) {
        // A list of names of one length is no broken name.
        const bool isList = first.text.size() == firstLine.text.size() &&
                            last.text.size() == lines[last.line].text.size() &&
                            first.text.size() == last.text.size();
        if (whole.size() < kOpaqueRun || isList || !isJumbled(first.text))
            return false;
    }
    constexpr qsizetype kFew = 4;   // signs that are the rest of a key when nothing else stands on their line
    constexpr qsizetype kWide = 40; // signs to the edge of a terminal, where little ends by chance
    const bool isAtEdge = firstLine.text.size() >= kWide && isInColumns(firstLine);
    const bool isSure = isTyped || parts.size() > 2;
    // A word under a run that is too short for a key is none of it.
    const bool isShortRest = last.text.size() <= kFew && (isSure || first.text.size() >= kOpaqueRun);
    const bool isRest =
        endsItsLine(lines[last.line], last) &&
        (isShortRest || mayBeJumbled(last.text) || ((isSure || isAtEdge) && !isOfWords(last.text)));
    return (isTyped ? mayBeJumbled(whole) : isJumbled(whole)) && (isJumbled(last.text) || isRest) &&
           std::ranges::all_of(parts.sliced(1, parts.size() - 2),
                               [](const Part &part) { return mayBeJumbled(part.text); });
}

// Whether a match over the end of a line is a broken secret, rather than two words or numbers that happen to
// stand at the end of one line and the beginning of the next.
bool isBroken(const QList<RecognizedLine> &lines, const QList<Part> &parts)
{
    QString whole;
    for (const Part &part : parts)
        whole += part.text;
    const QString &first = parts.first().text;
    const QString &last = parts.last().text;
    const RecognizedLine &firstLine = lines[parts.first().line];
    const bool isHyphened = endsInHyphen(firstLine);
    // Sentences hold addresses and numbers too: those break only where letters stand in columns.
    if (isNetworkAddress(whole))
        return parts.size() == 2 && isInColumns(firstLine);
    if (isTelephone(whole))
        return parts.size() == 2 && (endsInTelephone(firstLine) || isHyphened);
    if (isMailAddress(whole))
        return parts.size() == 2 && matches(first).isEmpty() &&
               (isHyphened || (isInColumns(firstLine) && !last.contains('@') && matches(last).isEmpty()));
    return isBrokenKey(lines, parts, whole);
}

// The line that stands on the same level to the right; -1 when there is none near.
qsizetype besideLine(const QList<RecognizedLine> &lines, qsizetype name)
{
    constexpr double kFarthest = 20; // heights of a line: as wide as forms are
    const QRectF box = lines[name].box;
    qsizetype nearest = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRectF other = lines[i].box;
        // Fractions of a picture are wider than high, which only makes the reach shorter.
        if (other.left() < box.right() || other.left() - box.right() > kFarthest * box.height() ||
            std::abs(other.center().y() - box.center().y()) > box.height() / 2)
            continue;
        if (nearest < 0 || other.left() < lines[nearest].box.left())
            nearest = i;
    }
    return nearest;
}

} // namespace

QList<QList<Match>> matchesInReadLines(const QList<RecognizedLine> &lines, FurtherKinds further)
{
    QList<QList<Match>> found;
    for (const RecognizedLine &line : lines)
        found.append(matchesByInk(line, further));
    for (qsizetype name = 0; further.testFlag(FurtherKind::Named) && name < lines.size(); ++name)
        if (const qsizetype value = isNameOfASecret(lines[name].text) ? besideLine(lines, name) : -1;
            value >= 0)
            found[value] = {{0, lines[value].text.size()}};
    const Layout layout(lines);
    for (qsizetype first = 0; first < lines.size(); ++first) {
        // A key may end before the lines cease to look like one.
        bool isFound = false;
        for (auto run = runOfLines(lines, layout, first); run.size() > 1 && !isFound; run.removeLast()) {
            const Chain chain(lines, run);
            for (const Match &match : matchesInReadLine(chain.text, further)) {
                const QList<Part> parts = partsOf(lines, chain, match);
                // What begins further down is found from there.
                if (parts.size() < 2 || parts.first().line != first || !isBroken(lines, parts))
                    continue;
                isFound = true;
                for (const Part &part : parts)
                    found[part.line] = merged(found[part.line] << part.match);
            }
        }
    }
    return found;
}

} // namespace SensitiveText
