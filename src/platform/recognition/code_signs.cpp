#include "platform/recognition/code_signs.h"

#include <numbers>

namespace {

// The ink of a cell against its strongest.
class Picture {
public:
    Picture(const QImage &ink, const QRect &cell) : m_width(cell.width()), m_height(cell.height())
    {
        double most = 1;
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < m_width; ++x) {
                m_values.push_back(ink.constScanLine(cell.top() + y)[cell.left() + x]);
                most = std::max(most, m_values.back());
            }
        for (double &value : m_values)
            value /= most;
    }

    int width() const { return m_width; }
    int height() const { return m_height; }
    double at(int x, int y) const { return m_values[size_t(y * m_width + x)]; }
    double at(double x, int y) const // between two columns
    {
        const int left = std::clamp(int(std::floor(x)), 0, m_width - 1);
        const double part = std::clamp(x - left, 0.0, 1.0);
        return (1 - part) * at(left, y) + part * at(std::min(left + 1, m_width - 1), y);
    }

    // Rows that are inked from end to end; neighbours are one stroke.
    std::vector<int> strokes() const
    {
        constexpr double kFull = 0.6; // of the strongest ink, in the mean
        std::vector<int> rows;
        for (int y = 0; y < m_height; ++y) {
            double sum = 0;
            for (int x = 0; x < m_width; ++x)
                sum += at(x, y);
            if (sum < kFull * m_width)
                continue;
            if (rows.empty() || y - rows.back() > 1)
                rows.push_back(y);
            else
                rows.back() = y;
        }
        return rows;
    }

    bool hasInk(int left, int right, int top, int bottom) const
    {
        constexpr double kClear = 0.35;
        for (int y = std::max(top, 0); y < std::min(bottom, m_height); ++y)
            for (int x = std::max(left, 0); x < std::min(right, m_width); ++x)
                if (at(x, y) > kClear)
                    return true;
        return false;
    }

    // How far the ink of these columns reaches from its top to its bottom.
    int spread(int left, int right) const
    {
        int top = 0;
        int bottom = m_height;
        while (top < m_height && !hasInk(left, right, top, top + 1))
            ++top;
        while (bottom > top && !hasInk(left, right, bottom - 1, bottom))
            --bottom;
        return bottom - top;
    }

    // Whether the second half is the first one once more; a ligature may draw them closer together.
    bool isTwice(double pitch) const
    {
        constexpr double kAlike = 0.85; // halves of "&&", "++" and the like have .9 and more
        for (const double part : {1.0, 0.92, 0.84})
            if (likenessAt(part * pitch) > kAlike)
                return true;
        return false;
    }

private:
    double likenessAt(double step) const
    {
        double both = 0;
        double first = 0;
        double second = 0;
        const int columns = std::min(int(step), m_width - int(std::lround(step)));
        for (int y = 0; y < m_height; ++y)
            for (int x = 0; x < columns; ++x) {
                const double a = at(x, y);
                const double b = at(x + step, y);
                both += a * b;
                first += a * a;
                second += b * b;
            }
        return columns > 2 ? both / std::sqrt(std::max(first * second, 1e-9)) : 0;
    }

    int m_width;
    int m_height;
    std::vector<double> m_values;
};

// What a ligature over so many columns stands for; empty where it is none.
QString ligature(const Picture &picture, int columns)
{
    const std::vector<int> strokes = picture.strokes();
    if (columns == 3)
        return strokes.size() == 3 ? QStringLiteral("===") : QString();
    const int third = picture.width() / 3;
    const auto reaches = [&](int left, int right) { // above and under the strokes
        return std::pair(picture.hasInk(left, right, 0, strokes.front() - 1),
                         picture.hasInk(left, right, strokes.back() + 2, picture.height()));
    };
    constexpr auto kBoth = std::pair(true, true);
    constexpr auto kNone = std::pair(false, false);
    if (strokes.empty() || strokes.size() > 2)
        return {};
    const auto left = reaches(0, third);
    const auto right = reaches(picture.width() - third, picture.width());
    if (strokes.size() == 2) {
        if (right == kBoth && left == kNone)
            return "=>";
        return reaches(third / 2, picture.width() - third / 2) == kBoth && right != kBoth && left != kBoth
                   ? QStringLiteral("!=")
                   : QString();
    }
    if (right == kBoth && left == kNone)
        return "->";
    return left == kBoth && right == kNone ? QStringLiteral("<-") : QString();
}

bool isLetterOrNumber(const ReadSign &sign)
{
    return !sign.text.isEmpty() && sign.text[0].isLetterOrNumber();
}

void put(ReadLine &line, int cell, const QString &text, const std::vector<size_t> &instead)
{
    const QRectF box(line.cells[size_t(cell)]);
    for (auto it = instead.rbegin(); it != instead.rend(); ++it)
        line.signs.erase(line.signs.begin() + long(*it));
    const auto at = std::ranges::find_if(line.signs, [&](const ReadSign &sign) {
        return sign.cell >= 0 ? sign.cell > cell : center(sign.box) > center(box);
    });
    const double width = box.width() / double(text.size());
    std::vector<ReadSign> signs;
    for (qsizetype i = 0; i < text.size(); ++i)
        signs.push_back({.text = text[i],
                         .box = QRectF(box.left() + double(i) * width, box.top(), width, box.height()),
                         .confidence = kSureOfSign,
                         .cell = cell});
    line.signs.insert(at, signs.begin(), signs.end());
}

// Where the middles of columns lie, in columns.
double phaseOf(const ReadLine &line)
{
    double x = 0;
    double y = 0;
    for (const QRect &cell : line.cells) {
        if (cell.width() > 1.3 * line.pitch)
            continue;
        const double angle = 2 * std::numbers::pi * center(cell) / line.pitch;
        x += std::cos(angle);
        y += std::sin(angle);
    }
    return std::atan2(y, x) / (2 * std::numbers::pi);
}

} // namespace

void mendCodeSigns(const QImage &ink, ReadLine &line)
{
    if (line.pitch <= 0)
        return;
    for (size_t c = 0; c < line.cells.size(); ++c) {
        const QRect &cell = line.cells[c];
        const double columns = cell.width() / line.pitch;
        const auto isOfCell = [c](const ReadSign &sign) { return sign.cell == int(c); };
        if (columns < 1.5 || columns > 3.2 || std::ranges::any_of(line.signs, isOfCell))
            continue;
        std::vector<size_t> lost; // signs that were read there and found no ink
        for (size_t s = 0; s < line.signs.size(); ++s)
            if (line.signs[s].cell < 0 &&
                std::abs(center(line.signs[s].box) - center(cell)) < 1.6 * line.pitch)
                lost.push_back(s);
        if (std::ranges::any_of(lost, [&](size_t s) { return isLetterOrNumber(line.signs[s]); }))
            continue;
        const Picture picture(ink, cell);
        QString text = ligature(picture, int(std::lround(columns)));
        if (text.isEmpty() && columns < 2.4 && lost.size() == 1 && picture.isTwice(line.pitch))
            text = line.signs[lost[0]].text + line.signs[lost[0]].text;
        if (!text.isEmpty())
            put(line, int(c), text, lost);
    }
}

void mendCodeWords(const QImage &ink, ReadLine &line)
{
    if (line.pitch <= 0)
        return;
    const double phase = phaseOf(line);
    for (size_t s = 0; s < line.signs.size(); ++s) {
        ReadSign &sign = line.signs[s];
        if (!sign.isAlone)
            continue;
        const QRect &cell = line.cells[size_t(sign.cell)];
        if (sign.text == "]" && s > 0 && line.signs[s - 1].text == "|" && cell.width() < 0.34 * line.pitch)
            sign.text = "|";
        const double off = std::remainder(center(cell) / line.pitch - phase, 1.0);
        if (QStringView(u"<>=≤≥").contains(sign.text) && std::abs(off) > 0.3) {
            const Picture picture(ink, cell);
            const int third = std::max(1, picture.width() / 3);
            sign.text = picture.spread(0, third) < picture.spread(picture.width() - third, picture.width())
                            ? QStringLiteral("<=")
                            : QStringLiteral(">=");
        }
    }
    for (const Run &run : runsOf(line.signs)) {
        if (run.to - run.from < 3 || !QStringView(u"Oo").contains(line.signs[run.from].text) ||
            line.signs[run.from + 1].text != "x")
            continue;
        const bool isHex = std::all_of(
            line.signs.begin() + long(run.from) + 2, line.signs.begin() + long(run.to),
            [](const ReadSign &sign) { return QStringView(u"0123456789abcdefABCDEF").contains(sign.text); });
        if (isHex)
            line.signs[run.from].text = "0";
    }
}

bool isLoneBracket(const ReadLine &line, const std::vector<ReadLine> &page)
{
    constexpr double kLikely = 0.9;
    constexpr int kFewest = 3; // lines of a program
    if (line.signs.size() != 1 || !QStringView(u"{}()[];").contains(line.signs[0].text) ||
        line.signs[0].confidence < kLikely || line.cells.empty())
        return false;
    int around = 0;
    for (const ReadLine &other : page) {
        if (other.pitch <= 0 || other.cells.empty() || std::abs(other.capHeight - line.capHeight) > 3)
            continue;
        const double columns = (center(line.cells[0]) - other.pitch * phaseOf(other)) / other.pitch;
        around += std::abs(columns - std::round(columns)) < 0.25;
    }
    return around >= kFewest;
}
