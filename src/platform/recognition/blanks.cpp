#include "platform/recognition/blanks.h"

#include <array>

namespace {

// Whether two readings can be of one and the same shape.
bool areAlike(const QString &a, const QString &b)
{
    static constexpr std::array<QStringView, 8> kSets{u"0OoQD", u"1lI|i!", u"5Ss", u"8B",
                                                      u"2Zz",   u"6Gb",    u"9gq", u"fF£"};
    return a.compare(b, Qt::CaseInsensitive) == 0 || std::ranges::any_of(kSets, [&](QStringView set) {
               return a.size() == 1 && b.size() == 1 && set.contains(a[0]) && set.contains(b[0]);
           });
}

// In a fixed-width font each character has one column.
bool isInAnothersColumn(const ReadLine &line, const ReadSign &sign)
{
    const double x = center(sign.box);
    return std::ranges::any_of(line.signs,
                               [&](const ReadSign &other) {
                                   if (!other.isAlone)
                                       return false;
                                   const QRect &cell = line.cells[size_t(other.cell)];
                                   return cell.width() <= 1.1 * line.pitch &&
                                          std::abs(x - center(cell)) < 0.75 * line.pitch;
                               }) ||
           std::ranges::any_of(line.signs, [&](const ReadSign &other) {
               if (other.cell < 0)
                   return false;
               const QRect &cell = line.cells[size_t(other.cell)];
               const auto columns = std::lround(cell.width() / line.pitch);
               return columns > 1 && x > cell.left() && x < cell.right() &&
                      std::ranges::count(line.signs, other.cell, &ReadSign::cell) >= columns;
           });
}

// In other fonts, beside a letter that has ink of its own.
bool repeatsItsNeighbor(const ReadLine &line, size_t s)
{
    const auto &signs = line.signs;
    const auto repeats = [&](const ReadSign &other) {
        return other.isAlone && areAlike(other.text, signs[s].text);
    };
    return (s > 0 && !signs[s].blankBefore && repeats(signs[s - 1])) ||
           (s + 1 < signs.size() && !signs[s + 1].blankBefore && repeats(signs[s + 1]));
}

} // namespace

void dropSecondReadings(ReadLine &line)
{
    std::vector<bool> isSecond;
    for (size_t s = 0; s < line.signs.size(); ++s)
        isSecond.push_back(line.signs[s].cell < 0 && (line.pitch > 0 ? isInAnothersColumn(line, line.signs[s])
                                                                     : repeatsItsNeighbor(line, s)));
    size_t kept = 0;
    for (size_t s = 0; s < line.signs.size(); ++s) {
        if (isSecond[s]) {
            if (s + 1 < line.signs.size())
                line.signs[s + 1].blankBefore |= line.signs[s].blankBefore;
            continue;
        }
        if (kept != s)
            line.signs[kept] = std::move(line.signs[s]);
        ++kept;
    }
    line.signs.resize(kept);
}

void restoreUnderscores(ReadLine &line)
{
    for (size_t c = 0; c < line.cells.size(); ++c) {
        const QRect &cell = line.cells[c];
        const bool isRead =
            std::ranges::any_of(line.signs, [c](const ReadSign &s) { return s.cell == int(c); });
        const bool isLow =
            cell.top() >= line.baseline - 1 && cell.top() <= line.baseline + line.capHeight / 2;
        const bool isStroke =
            cell.height() <= std::max(2, line.capHeight / 5) && 2 * cell.width() >= line.capHeight;
        if (isRead || !isLow || !isStroke)
            continue;
        const auto after = std::ranges::find_if(line.signs, [&](const ReadSign &sign) {
            return (sign.cell >= 0 ? center(line.cells[size_t(sign.cell)]) : center(sign.box)) > center(cell);
        });
        if (after == line.signs.begin() || after == line.signs.end())
            continue; // a rule under something rather than a sign between signs
        line.signs.insert(after, ReadSign{"_", QRectF(cell), 0.9, false, int(c), true});
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
    constexpr size_t kEnough = 6;
    if (gaps.size() < kEnough)
        return 0.15 * line.capHeight;
    const auto low = gaps.begin() + std::ptrdiff_t(gaps.size() * 3 / 10);
    std::ranges::nth_element(gaps, low);
    return std::clamp<double>(*low, 0.08 * line.capHeight, 0.4 * line.capHeight);
}

// A 1 stands in the middle of a digit's width.
double roomBeside(const ReadSign &sign, const ReadLine &line)
{
    return sign.text == "1" ? 0.15 * line.capHeight : 0;
}

} // namespace

void placeBlanks(ReadLine &line)
{
    const double pitch = line.pitch;
    const double usual = usualGap(line);
    for (size_t i = 1; i < line.signs.size(); ++i) {
        ReadSign &sign = line.signs[i];
        const ReadSign &before = line.signs[i - 1];
        if (sign.cell < 0 || before.cell < 0)
            continue;
        if (sign.cell == before.cell) {
            sign.blankBefore = false;
            continue;
        }
        const int gap = line.cells[size_t(sign.cell)].left() - line.cells[size_t(before.cell)].right() - 1;
        if (sign.cell != before.cell + 1)
            continue; // ink between them that belongs to neither: the pairing is not to be trusted
        if (pitch > 0) {
            sign.blankBefore = gap > 0.85 * pitch;
            continue;
        }
        const double likely =
            usual + 0.3 * line.capHeight + roomBeside(sign, line) + roomBeside(before, line);
        if (!sign.isAlone || !before.isAlone)
            continue;
        if (gap > likely)
            sign.blankBefore = true;
        else if (gap < 0.1 * line.capHeight)
            sign.blankBefore = false;
    }
}
