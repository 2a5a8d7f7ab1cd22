#include "platform/recognition/page_reading.h"

#include <array>
#include <limits>
#include <opencv2/imgproc.hpp>

namespace {

// ---- From glyphs to cells and symbols ----

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

double center(const QRectF &box)
{
    return box.x() + box.width() / 2;
}
double center(const QRect &box)
{
    return box.x() + box.width() / 2.0;
}

// Pairs symbols with cells in order, so that the sum of their distances is least. A wide cell may hold
// several symbols that touch; then they get no cell.
void align(ReadLine &line)
{
    const size_t n = line.symbols.size();
    const size_t m = line.cells.size();
    const double unit = line.capHeight;
    constexpr double SkipSymbol = 0.7;
    constexpr double SkipCell = 0.7;
    constexpr double Touching = 0.25;
    enum Step : char { None, Pair, Symbol_, Cell, Touch };
    std::vector<double> cost((n + 1) * (m + 1), std::numeric_limits<double>::infinity());
    std::vector<Step> step((n + 1) * (m + 1), None);
    const auto at = [m](size_t i, size_t j) { return i * (m + 1) + j; };
    const auto relax = [&](size_t i, size_t j, double value, Step by) {
        if (value < cost[at(i, j)]) {
            cost[at(i, j)] = value;
            step[at(i, j)] = by;
        }
    };
    cost[0] = 0;
    for (size_t i = 0; i <= n; ++i) {
        for (size_t j = 0; j <= m; ++j) {
            const double here = cost[at(i, j)];
            if (!std::isfinite(here))
                continue;
            if (i < n)
                relax(i + 1, j, here + SkipSymbol, Symbol_);
            if (j < m)
                relax(i, j + 1, here + SkipCell, Cell);
            if (i < n && j < m)
                relax(i + 1, j + 1,
                      here + std::abs(center(line.symbols[i].box) - center(line.cells[j])) / unit, Pair);
            // A further symbol in the cell before.
            if (i < n && j > 0 && (step[at(i, j)] == Pair || step[at(i, j)] == Touch)) {
                const QRect &cell = line.cells[j - 1];
                const double x = center(line.symbols[i].box);
                if (x > cell.left() && x < cell.right() + 1 && cell.width() > 0.9 * line.capHeight)
                    relax(i + 1, j, here + Touching, Touch);
            }
        }
    }
    size_t i = n;
    size_t j = m;
    bool shared = false;
    while (i > 0 || j > 0) {
        switch (step[at(i, j)]) {
        case Pair:
            --i;
            --j;
            line.symbols[i].cell = int(j);
            line.symbols[i].isAlone = !shared;
            shared = false;
            break;
        case Touch:
            --i;
            line.symbols[i].cell = int(j) - 1;
            shared = true;
            break;
        case Symbol_:
            --i;
            break;
        case Cell:
            --j;
            break;
        case None:
            return;
        }
    }
}

// ---- Shapes ----

// A character's ink brought to one size, so that shapes which fell differently on the grid of pixels compare.
constexpr int ShapeSide = 16;

struct Shape {
    QSize size;
    int below = 0;                                     // how far it reaches under the baseline
    std::array<float, ShapeSide * ShapeSide> values{}; // of zero mean and unit length
};

Shape shapeOf(const QImage &ink, const QRect &cell, int baseline)
{
    Shape shape{cell.size(), cell.bottom() + 1 - baseline, {}};
    const cv::Mat map(ink.height(), ink.width(), CV_8UC1, const_cast<uchar *>(ink.constBits()),
                      size_t(ink.bytesPerLine()));
    cv::Mat scaled;
    map(cv::Rect(cell.x(), cell.y(), cell.width(), cell.height())).convertTo(scaled, CV_32F);
    cv::resize(scaled, scaled, cv::Size(ShapeSide, ShapeSide), 0, 0, cv::INTER_AREA);
    cv::GaussianBlur(scaled, scaled, {}, 0.8);
    scaled -= cv::mean(scaled);
    const double length = std::max(1e-3, cv::norm(scaled));
    std::copy_n(scaled.ptr<float>(), shape.values.size(), shape.values.begin());
    for (float &value : shape.values)
        value = float(value / length);
    return shape;
}

double likeness(const Shape &a, const Shape &b)
{
    double sum = 0;
    for (size_t i = 0; i < a.values.size(); ++i)
        sum += double(a.values[i]) * b.values[i];
    return sum;
}

// Whether they can be one character of one font at one size.
bool haveOneSize(const Shape &a, const Shape &b)
{
    const int slack = std::max(a.size.height(), b.size.height()) > 24 ? 2 : 1;
    return std::abs(a.size.width() - b.size.width()) <= slack &&
           std::abs(a.size.height() - b.size.height()) <= slack && std::abs(a.below - b.below) <= slack;
}

// Readings that stand for one another when a shape is seen alone. In fixed-width fonts a capital I differs
// from a small L, in most others it doesn't: there only the sense of a word tells them apart.
bool areConfusable(const QString &a, const QString &b, bool isFixedWidth)
{
    static const std::array<QStringView, 13> sets{u"0OoQD@©°", u"1l|][", u"5Ss$§", u"8B&", u"2Zz",
                                                  u"6Gb",      u"9gq",   u"cC¢",   u"vV",  u"wW",
                                                  u"xX",       u"fF£",   u"J]j)"};
    static const std::array<QStringView, 3> ofFixedWidth{u"1lILi|", u"JI", u"uU"};
    if (a.size() != 1 || b.size() != 1)
        return false;
    const auto holdsBoth = [&](QStringView set) { return set.contains(a[0]) && set.contains(b[0]); };
    return std::ranges::any_of(sets, holdsBoth) ||
           (isFixedWidth && std::ranges::any_of(ofFixedWidth, holdsBoth));
}

// A run of letters and digits among the symbols of a line.
struct Run {
    size_t from;
    size_t to; // one past its last symbol
    int letters = 0;
    int digits = 0;
    int turns = 0; // from letters to digits and back, and from small letters to capitals
    // A word or a number, which is read as a whole with the sense of the language.
    bool isPlain() const { return turns == 0 && to - from >= 2; }
};

char kindOf(const Symbol &symbol)
{
    const QChar c = symbol.text.isEmpty() ? QChar() : symbol.text[0];
    return c.isDigit() ? 'd' : c.isLower() ? 'l' : c.isUpper() ? 'u' : '.';
}

std::vector<Run> runsOf(const std::vector<Symbol> &symbols)
{
    std::vector<Run> runs;
    for (size_t i = 0; i < symbols.size(); ++i) {
        const char kind = kindOf(symbols[i]);
        const bool goes = i > 0 && !symbols[i].blankBefore && kind != '.' && kindOf(symbols[i - 1]) != '.';
        if (!goes)
            runs.push_back({i, i});
        Run &run = runs.back();
        run.to = i + 1;
        run.digits += kind == 'd';
        run.letters += kind == 'l' || kind == 'u';
        if (!goes)
            continue;
        const char last = kindOf(symbols[i - 1]);
        run.turns += kind == 'u' && last == 'l';
        run.turns += (kind == 'd') != (last == 'd');
    }
    return runs;
}

// A symbol with what its shape is compared by.
struct Evidence {
    size_t line;
    size_t symbol;
    Shape shape;
    double weight; // most in a word or a number, least among mixed signs
    bool isPlain;
};

std::vector<Evidence> evidenceOf(const QImage &ink, const std::vector<ReadLine> &lines)
{
    std::vector<Evidence> all;
    for (size_t l = 0; l < lines.size(); ++l) {
        const ReadLine &line = lines[l];
        for (const Run &run : runsOf(line.symbols)) {
            for (size_t s = run.from; s < run.to; ++s) {
                const Symbol &symbol = line.symbols[s];
                if (!symbol.isAlone)
                    continue;
                const double weight = std::max(0.05, symbol.confidence) * (run.isPlain()    ? 3
                                                                           : run.turns <= 1 ? 1
                                                                                            : 0.5);
                all.push_back({l, s, shapeOf(ink, line.cells[size_t(symbol.cell)], line.baseline), weight,
                               run.isPlain()});
            }
        }
    }
    return all;
}

constexpr double FaintLikeness = 0.85;  // below, shapes say nothing of each other
constexpr double LikenessScale = 0.025; // how fast a neighbour's say fades with its unlikeness
constexpr double ClearMajority = 1.2;

// Among mixed signs, gives each symbol the reading that its most alike shapes on the page have.
void vote(const QImage &ink, std::vector<ReadLine> &lines)
{
    const std::vector<Evidence> all = evidenceOf(ink, lines);
    std::vector<std::pair<size_t, QString>> changes;
    for (size_t i = 0; i < all.size(); ++i) {
        const Evidence &one = all[i];
        if (one.isPlain)
            continue;
        const ReadLine &line = lines[one.line];
        const QString &own = line.symbols[one.symbol].text;
        QHash<QString, double> votes{{own, one.weight}};
        for (size_t j = 0; j < all.size(); ++j) {
            if (i == j || !haveOneSize(one.shape, all[j].shape))
                continue;
            const QString &other = lines[all[j].line].symbols[all[j].symbol].text;
            const bool isFixedWidth = line.pitch > 0 && lines[all[j].line].pitch > 0;
            if (other != own && !areConfusable(own, other, isFixedWidth))
                continue;
            const double alike = likeness(one.shape, all[j].shape);
            if (alike > FaintLikeness)
                votes[other] += all[j].weight * std::exp((alike - 1) / LikenessScale);
        }
        const auto best = std::max_element(votes.begin(), votes.end());
        if (best.key() != own && best.value() > ClearMajority * votes[own])
            changes.emplace_back(i, best.key());
    }
    for (const auto &[index, text] : changes)
        lines[all[index].line].symbols[all[index].symbol].text = text;
}

// ---- Features of single shapes ----

// The mean ink in a part of a cell, given in fractions of it, against the strongest ink of the whole cell.
double inkIn(const QImage &ink, const QRect &cell, double left, double top, double right, double bottom)
{
    int most = 1;
    double sum = 0;
    int count = 0;
    const QRect part(QPoint(cell.x() + int(std::lround(left * cell.width())),
                            cell.y() + int(std::lround(top * cell.height()))),
                     QPoint(cell.x() + std::max(1, int(std::lround(right * cell.width()))) - 1,
                            cell.y() + std::max(1, int(std::lround(bottom * cell.height()))) - 1));
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
        const uchar *row = ink.constScanLine(y);
        for (int x = cell.left(); x <= cell.right(); ++x) {
            most = std::max<int>(most, row[x]);
            if (part.contains(x, y)) {
                sum += row[x];
                ++count;
            }
        }
    }
    return count == 0 ? 0 : sum / count / most;
}

// Zeros of fixed-width fonts mostly have a dot or a stroke inside, which no O has.
constexpr double FilledCenter = 0.4;
constexpr double EmptyCenter = 0.22;

double centerOf(const QImage &ink, const QRect &cell)
{
    return inkIn(ink, cell, 0.36, 0.36, 0.64, 0.64);
}

QString read0OrO(const QImage &ink, const QRect &cell, bool zerosAreFilled)
{
    const double center = centerOf(ink, cell);
    if (center > FilledCenter)
        return "0";
    return center < EmptyCenter && zerosAreFilled ? "O" : QString();
}

QString read5OrS(const QImage &ink, const QRect &cell)
{
    const double corner = inkIn(ink, cell, 0, 0, 0.28, 0.12);
    const double hook = inkIn(ink, cell, 0.75, 0.12, 1, 0.34);
    if (corner > hook + 0.25)
        return "5";
    return hook > corner + 0.1 ? "S" : QString();
}

// By the serifs: on both sides of the top for I, on the left of it for 1 and l; a base on both sides for 1.
QString read1lOrI(const QImage &ink, const QRect &cell)
{
    const double topRight = inkIn(ink, cell, 0.68, 0, 1, 0.15);
    const double topLeft = inkIn(ink, cell, 0, 0, 0.32, 0.15);
    const double bottomLeft = inkIn(ink, cell, 0, 0.85, 0.32, 1);
    const double bottomRight = inkIn(ink, cell, 0.68, 0.85, 1, 1);
    if (topRight > 0.45 && topLeft > 0.45 && bottomLeft > 0.45 && bottomRight > 0.45)
        return "I";
    if (topRight > 0.25 || bottomRight < 0.3)
        return {};
    if (bottomLeft > 0.45)
        return "1";
    return bottomLeft < 0.25 && topLeft > 0.3 ? "l" : QString();
}

// In fixed-width fonts, where such signs are made to differ, looks at single shapes once more.
void lookCloser(const QImage &ink, std::vector<ReadLine> &lines)
{
    const auto isTall = [](const ReadLine &line, const QRect &cell) {
        return 10 * (line.baseline - cell.top()) >= 9 * line.capHeight;
    };
    const auto isOneOf = [](const Symbol &symbol, QStringView set) {
        return symbol.isAlone && symbol.text.size() == 1 && set.contains(symbol.text[0]);
    };
    bool zerosAreFilled = false;
    for (const ReadLine &line : lines)
        if (line.pitch > 0)
            for (const Symbol &symbol : line.symbols)
                zerosAreFilled |=
                    isOneOf(symbol, u"0O") && centerOf(ink, line.cells[size_t(symbol.cell)]) > FilledCenter;
    for (ReadLine &line : lines) {
        if (line.pitch <= 0)
            continue;
        const auto small = std::ranges::count_if(line.cells, [&](const QRect &cell) {
            return 100 * (line.baseline - cell.top()) < 86 * line.capHeight &&
                   2 * cell.height() > line.capHeight;
        });
        for (const Run &run : runsOf(line.symbols)) {
            if (run.isPlain())
                continue;
            for (size_t s = run.from; s < run.to; ++s) {
                Symbol &symbol = line.symbols[s];
                if (!symbol.isAlone)
                    continue;
                const QRect &cell = line.cells[size_t(symbol.cell)];
                QString seen;
                if (isOneOf(symbol, u"0Oo°") && !isTall(line, cell) && small >= 2)
                    seen = "o";
                else if (isOneOf(symbol, u"0O") && isTall(line, cell))
                    seen = read0OrO(ink, cell, zerosAreFilled);
                else if (isOneOf(symbol, u"5S") && isTall(line, cell))
                    seen = read5OrS(ink, cell);
                else if (isOneOf(symbol, u"1lI|") && isTall(line, cell))
                    seen = read1lOrI(ink, cell);
                else if (isOneOf(symbol, u"cCsSvVwWxXzZuU") && small >= 2)
                    seen = isTall(line, cell) ? symbol.text.toUpper() : symbol.text.toLower();
                if (!seen.isEmpty())
                    symbol.text = seen;
            }
        }
    }
}

// ---- Blanks and missing signs ----

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

// In a fixed-width font each character has one column: a second reading of the same ink goes.
void dropSecondReadings(ReadLine &line)
{
    const double pitch = line.pitch;
    std::erase_if(line.symbols, [&](const Symbol &symbol) {
        if (symbol.cell >= 0)
            return false;
        const double x = center(symbol.box);
        return std::ranges::any_of(line.symbols, [&](const Symbol &other) {
            if (!other.isAlone)
                return false;
            const QRect &cell = line.cells[size_t(other.cell)];
            return cell.width() <= 1.1 * pitch && std::abs(x - center(cell)) < 0.75 * pitch;
        });
    });
}

// Underscores are often taken for blanks.
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
        const auto after = std::ranges::find_if(
            line.symbols, [&](const Symbol &symbol) { return center(symbol.box) > center(cell); });
        if (after == line.symbols.begin() || after == line.symbols.end())
            continue; // a rule under something rather than a sign between signs
        line.symbols.insert(after, Symbol{"_", QRectF(cell), 0.9, false, int(c), true});
    }
}

void placeBlanks(ReadLine &line)
{
    const double pitch = line.pitch;
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
        if (pitch > 0)
            symbol.blankBefore = gap > 0.85 * pitch;
        else if (gap > 0.5 * line.capHeight && symbol.isAlone && before.isAlone)
            symbol.blankBefore = true;
        else if (gap < 0.1 * line.capHeight && symbol.isAlone && before.isAlone)
            symbol.blankBefore = false;
    }
}

} // namespace

void mend(const QImage &ink, std::vector<ReadLine> &lines)
{
    for (ReadLine &line : lines) {
        measure(line);
        align(line);
        line.pitch = pitchOf(line);
        if (line.pitch > 0)
            dropSecondReadings(line);
        restoreUnderscores(line);
        placeBlanks(line);
    }
    vote(ink, lines);
    lookCloser(ink, lines);
}

namespace {

// The ink of each symbol in pixels. Together they hold all ink of the line: symbols that touch share their
// piece, and a piece that no symbol was paired with belongs to the nearest.
std::vector<QRectF> inkBoxes(const ReadLine &line)
{
    std::vector<QRectF> boxes;
    for (const Symbol &symbol : line.symbols)
        boxes.push_back(symbol.isAlone ? QRectF(line.cells[size_t(symbol.cell)]) : symbol.box);
    std::vector<bool> isTaken(line.cells.size(), false);
    for (size_t from = 0; from < boxes.size();) {
        const int c = line.symbols[from].cell;
        size_t to = from + 1;
        while (c >= 0 && to < boxes.size() && line.symbols[to].cell == c)
            ++to;
        if (c >= 0)
            isTaken[size_t(c)] = true;
        if (to - from > 1) { // stretched together over their piece
            const QRectF cell(line.cells[size_t(c)]);
            const double left = boxes[from].left();
            const double stretch = cell.width() / std::max(1.0, boxes[to - 1].right() - left);
            for (size_t s = from; s < to; ++s)
                boxes[s] = QRectF(cell.left() + (boxes[s].left() - left) * stretch, boxes[s].top(),
                                  boxes[s].width() * stretch, boxes[s].height());
        }
        from = to;
    }
    if (boxes.empty())
        return boxes;
    for (size_t c = 0; c < line.cells.size(); ++c) {
        if (isTaken[c])
            continue;
        const QRectF cell(line.cells[c]);
        for (const double x : {cell.left(), cell.right()}) {
            const auto nearest = std::ranges::min_element(boxes, {}, [x](const QRectF &box) {
                return std::max({0.0, box.left() - x, x - box.right()});
            });
            // No farther than a letter: what lies beyond was read as nothing.
            nearest->setLeft(std::min(nearest->left(), std::max(x, nearest->left() - line.capHeight)));
            nearest->setRight(std::max(nearest->right(), std::min(x, nearest->right() + line.capHeight)));
        }
    }
    return boxes;
}

} // namespace

RecognizedLine recognizedLine(const ReadLine &line, QSize picture, int top)
{
    const double width = picture.width();
    const double height = picture.height();
    // Usual fonts reach a quarter of a capital's height above it, and a third below the baseline.
    const double highest = line.baseline - 1.25 * line.capHeight;
    const double lowest = line.baseline + 0.33 * line.capHeight;
    const auto normalized = [&](const QRectF &box) {
        const double upper = std::max(0.0, std::min(box.top(), highest) + top);
        const double lower = std::min(height, std::max(box.bottom(), lowest) + top);
        return QRectF(box.x() / width, 1 - lower / height, box.width() / width, (lower - upper) / height);
    };
    RecognizedLine result;
    result.box = normalized(line.region.box);
    double confidence = 0;
    const std::vector<QRectF> boxes = inkBoxes(line);
    for (size_t s = 0; s < line.symbols.size(); ++s) {
        const Symbol &symbol = line.symbols[s];
        if (symbol.blankBefore) {
            result.text += ' ';
            result.characters.append(QRectF());
        }
        result.text += symbol.text;
        const QRectF box = normalized(boxes[s]);
        for (qsizetype i = 0; i < symbol.text.size(); ++i)
            result.characters.append(box);
        confidence += symbol.confidence;
    }
    if (!line.symbols.empty())
        result.confidence = confidence / double(line.symbols.size());
    return result;
}
