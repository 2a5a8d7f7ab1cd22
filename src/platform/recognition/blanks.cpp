#include "platform/recognition/blanks.h"

#include <array>

namespace {

// Whether two readings can be of one and the same shape.
bool areAlike(const QString &a, const QString &b)
{
    static constexpr std::array<QStringView, 8> sets{u"0OoQD", u"1lI|i!", u"5Ss", u"8B",
                                                     u"2Zz",   u"6Gb",    u"9gq", u"fF£"};
    return a.compare(b, Qt::CaseInsensitive) == 0 || std::ranges::any_of(sets, [&](QStringView set) {
               return a.size() == 1 && b.size() == 1 && set.contains(a[0]) && set.contains(b[0]);
           });
}

// In a fixed-width font each character has one column.
bool isInAnothersColumn(const ReadLine &line, const Symbol &symbol)
{
    const double x = center(symbol.box);
    return std::ranges::any_of(line.symbols, [&](const Symbol &other) {
        if (!other.isAlone)
            return false;
        const QRect &cell = line.cells[size_t(other.cell)];
        return cell.width() <= 1.1 * line.pitch && std::abs(x - center(cell)) < 0.75 * line.pitch;
    });
}

// In other fonts, beside a letter that has ink of its own.
bool repeatsItsNeighbor(const ReadLine &line, size_t s)
{
    const auto &symbols = line.symbols;
    const auto repeats = [&](const Symbol &other) {
        return other.isAlone && areAlike(other.text, symbols[s].text);
    };
    return (s > 0 && !symbols[s].blankBefore && repeats(symbols[s - 1])) ||
           (s + 1 < symbols.size() && !symbols[s + 1].blankBefore && repeats(symbols[s + 1]));
}

} // namespace

void dropSecondReadings(ReadLine &line)
{
    std::vector<bool> isSecond;
    for (size_t s = 0; s < line.symbols.size(); ++s)
        isSecond.push_back(
            line.symbols[s].cell < 0 &&
            (line.pitch > 0 ? isInAnothersColumn(line, line.symbols[s]) : repeatsItsNeighbor(line, s)));
    size_t kept = 0;
    for (size_t s = 0; s < line.symbols.size(); ++s) {
        if (isSecond[s]) {
            if (s + 1 < line.symbols.size())
                line.symbols[s + 1].blankBefore |= line.symbols[s].blankBefore;
            continue;
        }
        if (kept != s)
            line.symbols[kept] = std::move(line.symbols[s]);
        ++kept;
    }
    line.symbols.resize(kept);
}

void restoreUnderscores(ReadLine &line)
{
    for (size_t c = 0; c < line.cells.size(); ++c) {
        const QRect &cell = line.cells[c];
        const bool isRead =
            std::ranges::any_of(line.symbols, [c](const Symbol &s) { return s.cell == int(c); });
        const bool isLow =
            cell.top() >= line.baseline - 1 && cell.top() <= line.baseline + line.capHeight / 2;
        const bool isStroke =
            cell.height() <= std::max(2, line.capHeight / 5) && 2 * cell.width() >= line.capHeight;
        if (isRead || !isLow || !isStroke)
            continue;
        const auto after = std::ranges::find_if(line.symbols, [&](const Symbol &symbol) {
            return (symbol.cell >= 0 ? center(line.cells[size_t(symbol.cell)]) : center(symbol.box)) >
                   center(cell);
        });
        if (after == line.symbols.begin() || after == line.symbols.end())
            continue; // a rule under something rather than a sign between signs
        line.symbols.insert(after, Symbol{"_", QRectF(cell), 0.9, false, int(c), true});
    }
}

namespace {

// The usual gap between neighbours in a word that don't touch, in pixels: low among all, which hold the
// blanks.
double usualGap(const ReadLine &line)
{
    std::vector<int> gaps;
    for (size_t c = 1; c < line.cells.size(); ++c)
        if (const int gap = line.cells[c].left() - line.cells[c - 1].right() - 1; gap > 0)
            gaps.push_back(gap);
    constexpr size_t Enough = 6;
    if (gaps.size() < Enough)
        return 0.15 * line.capHeight;
    const auto low = gaps.begin() + std::ptrdiff_t(gaps.size() * 3 / 10);
    std::ranges::nth_element(gaps, low);
    return std::clamp<double>(*low, 0.08 * line.capHeight, 0.4 * line.capHeight);
}

// A 1 stands in the middle of a digit's width.
double roomBeside(const Symbol &symbol, const ReadLine &line)
{
    return symbol.text == "1" ? 0.15 * line.capHeight : 0;
}

} // namespace

void placeBlanks(ReadLine &line)
{
    const double pitch = line.pitch;
    const double usual = usualGap(line);
    for (size_t i = 1; i < line.symbols.size(); ++i) {
        Symbol &symbol = line.symbols[i];
        const Symbol &before = line.symbols[i - 1];
        if (symbol.cell < 0 || before.cell < 0)
            continue;
        if (symbol.cell == before.cell) {
            symbol.blankBefore = false;
            continue;
        }
        const int gap = line.cells[size_t(symbol.cell)].left() - line.cells[size_t(before.cell)].right() - 1;
        if (symbol.cell != before.cell + 1)
            continue; // ink between them that belongs to neither: the pairing is not to be trusted
        if (pitch > 0) {
            symbol.blankBefore = gap > 0.85 * pitch;
            continue;
        }
        const double likely =
            usual + 0.3 * line.capHeight + roomBeside(symbol, line) + roomBeside(before, line);
        if (!symbol.isAlone || !before.isAlone)
            continue;
        if (gap > likely)
            symbol.blankBefore = true;
        else if (gap < 0.1 * line.capHeight)
            symbol.blankBefore = false;
    }
}
