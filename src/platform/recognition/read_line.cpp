#include "platform/recognition/read_line.h"

#include <numbers>

namespace {

// Glyphs that stand above each other are one character.
std::vector<QRect> cellsOf(const std::vector<QRect> &glyphs, int letterHeight)
{
    // The two strokes of a straight quotation mark.
    const auto areOneMark = [letterHeight](const QRect &a, const QRect &b) {
        const int gap = b.left() - a.right() - 1;
        return std::max(a.height(), b.height()) * 3 < letterHeight * 2 && std::abs(a.top() - b.top()) <= 1 &&
               std::abs(a.width() - b.width()) <= 1 && std::abs(a.height() - b.height()) <= 1 &&
               a.height() > a.width() && gap > 0 && 2 * gap <= letterHeight;
    };
    std::vector<QRect> cells;
    for (const QRect &glyph : glyphs) {
        if (!cells.empty()) {
            QRect &last = cells.back();
            const int shared =
                std::min(last.right(), glyph.right()) - std::max(last.left(), glyph.left()) + 1;
            if ((shared > 0 && 2 * shared >= std::min(last.width(), glyph.width())) ||
                areOneMark(last, glyph)) {
                last = last.united(glyph);
                continue;
            }
        }
        cells.push_back(glyph);
    }
    return cells;
}

// The most frequent of the values.
int usual(std::vector<int> values)
{
    std::ranges::sort(values);
    int best = 0;
    long most = 0;
    for (auto from = values.begin(); from != values.end();) {
        const auto to = std::upper_bound(from, values.end(), *from);
        if (to - from > most) {
            most = to - from;
            best = *from;
        }
        from = to;
    }
    return best;
}

void measure(ReadLine &line)
{
    line.cells = cellsOf(line.region.glyphs, line.region.glyphHeight);
    std::vector<int> bottoms;
    for (const QRect &cell : line.cells)
        if (2 * cell.height() > line.region.glyphHeight)
            bottoms.push_back(cell.bottom() + 1);
    line.baseline = usual(bottoms);
    int highest = 0;
    std::vector<int> heights;
    for (const QRect &cell : line.cells)
        if (const int height = line.baseline - cell.top(); height > 0)
            heights.push_back(height);
    std::ranges::sort(heights);
    if (!heights.empty())
        highest = heights[heights.size() * 9 / 10];
    line.capHeight = std::max(highest, 4);
}

double varianceOf(const std::vector<double> &values)
{
    double sum = 0;
    for (const double value : values)
        sum += value;
    const double mean = sum / double(values.size());
    double squares = 0;
    for (const double value : values)
        squares += (value - mean) * (value - mean);
    return squares / double(values.size());
}

// The distance between the characters of a fixed-width font; 0 for other fonts. In a fixed-width font the
// distance between neighbours is always the same, in others it is the gap between them.
double pitchOf(const ReadLine &line)
{
    std::vector<double> steps;
    for (size_t i = 1; i < line.cells.size(); ++i)
        steps.push_back(center(line.cells[i]) - center(line.cells[i - 1]));
    if (steps.size() < 5)
        return 0;
    std::vector<double> sorted = steps;
    std::ranges::sort(sorted);
    const double usual = sorted[sorted.size() / 2];
    std::vector<double> alone;
    std::vector<double> gaps;
    for (size_t i = 1; i < line.cells.size(); ++i) {
        const QRect &a = line.cells[i - 1];
        const QRect &b = line.cells[i];
        // Without blanks, and without letters that touch, which are one piece of ink.
        if (steps[i - 1] > 1.4 * usual || a.width() > 1.1 * usual || b.width() > 1.1 * usual)
            continue;
        alone.push_back(steps[i - 1]);
        gaps.push_back(steps[i - 1] - (a.width() + b.width()) / 2.0);
    }
    if (alone.size() < 5 || usual < 4)
        return 0;
    const double ofSteps = varianceOf(alone);
    const double clearly = alone.size() < 10 ? 0.2 : 0.4; // short words can look so by chance
    const bool areEven = alone.size() >= 10 && ofSteps < 0.012 * usual * usual;
    if (!areEven && (ofSteps > clearly * varianceOf(gaps) || ofSteps > 0.03 * usual * usual))
        return 0;
    // Blanks are as wide as the rest, other than among the even digits of other fonts.
    int wide = 0;
    int uneven = 0;
    for (size_t i = 1; i < line.cells.size(); ++i) {
        const double columns = steps[i - 1] / usual;
        if (columns < 1.25 || columns > 4 || line.cells[i].width() > 1.1 * usual ||
            line.cells[i - 1].width() > 1.1 * usual)
            continue;
        ++wide;
        uneven += std::abs(columns - std::round(columns)) > 0.28;
    }
    if (4 * uneven > wide)
        return 0;
    double sum = 0;
    for (const double step : alone)
        sum += step;
    return sum / double(alone.size());
}

// How well the middles of a line's ink stand in columns of a width, from 0 to 1, also where letters touch.
double agreement(const ReadLine &line, double pitch, int &count)
{
    double x = 0;
    double y = 0;
    count = 0;
    for (const QRect &cell : line.cells) {
        if (2 * cell.height() < line.capHeight)
            continue;
        const double columns = std::max(1.0, std::round(cell.width() / pitch));
        const double phase = 2 * std::numbers::pi * (center(cell) - (columns - 1) / 2 * pitch) / pitch;
        ++count;
        x += std::cos(phase);
        y += std::sin(phase);
    }
    return count == 0 ? 0 : std::hypot(x, y) / count;
}

// The width of the columns that a line stands in, near one that was measured, whose error adds up along a
// line; 0 when it stands in none.
double columnsNear(const ReadLine &line, double pitch)
{
    constexpr double kMostOff = 0.03;
    constexpr double kStep = 0.002;
    if (line.cells.size() < 5)
        return 0;
    double best = 0;
    double most = 0;
    int count = 0;
    for (double part = 1 - kMostOff; part <= 1 + kMostOff; part += kStep)
        if (const double value = agreement(line, part * pitch, count); value > most) {
            most = value;
            best = part * pitch;
        }
    return count >= 4 && most > (count < 12 ? 0.9 : 0.8) ? best : 0;
}

// Lines of one fixed-width font have one pitch. Where letters touch it can't be seen in a line alone.
void sharePitch(std::vector<ReadLine> &lines)
{
    for (ReadLine &line : lines) {
        if (line.pitch > 0)
            continue;
        QHash<int, int> votes; // pitches of lines of this size, in quarters of a pixel
        for (const ReadLine &other : lines)
            if (other.pitch > 0 && std::abs(other.capHeight - line.capHeight) <= 1 &&
                other.cells.size() >= 12)
                ++votes[int(std::lround(4 * other.pitch))];
        const auto near = [&votes](int pitch) {
            return votes.value(pitch - 1) + 2 * votes.value(pitch) + votes.value(pitch + 1);
        };
        const QList<int> pitches = votes.keys();
        const auto best = std::ranges::max_element(pitches, {}, near);
        if (best == pitches.end() || votes.value(*best - 1) + votes.value(*best) + votes.value(*best + 1) < 3)
            continue;
        double sum = 0;
        int count = 0;
        for (const ReadLine &other : lines)
            if (other.pitch > 0 && std::abs(other.capHeight - line.capHeight) <= 1 &&
                std::abs(4 * other.pitch - *best) <= 1.5) {
                sum += other.pitch;
                ++count;
            }
        if (count > 0)
            line.pitch = -columnsNear(line, sum / count); // taken on after all have been looked at
    }
    for (ReadLine &line : lines)
        line.pitch = std::abs(line.pitch);
}

char kindOf(const ReadSign &sign)
{
    const QChar c = sign.text.isEmpty() ? QChar() : sign.text[0];
    return c.isDigit() ? 'd' : c.isLower() ? 'l' : c.isUpper() ? 'u' : '.';
}

} // namespace

void measure(std::vector<ReadLine> &lines)
{
    for (ReadLine &line : lines) {
        measure(line);
        line.pitch = pitchOf(line);
    }
    sharePitch(lines);
    for (ReadLine &line : lines)
        if (const double exact = line.pitch > 0 ? columnsNear(line, line.pitch) : 0; exact > 0)
            line.pitch = exact;
}

std::vector<Run> runsOf(const std::vector<ReadSign> &signs)
{
    std::vector<Run> runs;
    for (size_t i = 0; i < signs.size(); ++i) {
        const char kind = kindOf(signs[i]);
        const bool goes = i > 0 && !signs[i].blankBefore && kind != '.' && kindOf(signs[i - 1]) != '.';
        if (!goes)
            runs.push_back({i, i});
        Run &run = runs.back();
        run.to = i + 1;
        run.digits += kind == 'd';
        run.letters += kind == 'l' || kind == 'u';
        if (!goes)
            continue;
        const char last = kindOf(signs[i - 1]);
        run.turns += kind == 'u' && last == 'l';
        run.turns += (kind == 'd') != (last == 'd');
    }
    return runs;
}
