#include "platform/recognition/sign_rules.h"

namespace {

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
constexpr double kFilledCenter = 0.3; // of 11 pixels: .33 to .57; an O has less than .05
constexpr double kEmptyCenter = 0.22;

double centerOf(const QImage &ink, const QRect &cell)
{
    return inkIn(ink, cell, 0.36, 0.36, 0.64, 0.64);
}

QString read0OrO(const QImage &ink, const QRect &cell, bool zerosAreFilled)
{
    const double center = centerOf(ink, cell);
    if (center > kFilledCenter)
        return "0";
    return center < kEmptyCenter && zerosAreFilled ? "O" : QString();
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

bool isTall(const ReadLine &line, const QRect &cell)
{
    // A pixel less than the tallest where brackets are that; small letters are two less and more.
    return line.baseline - cell.top() >= line.capHeight - std::max(1, line.capHeight / 10);
}

bool isOneOf(const ReadSign &sign, QStringView set)
{
    return sign.text.size() == 1 && set.contains(sign.text[0]);
}

// Letters without an upper part: with them a line shows how high its capitals are.
bool hasSmallLetters(const ReadLine &line)
{
    return std::ranges::count_if(line.cells, [&](const QRect &cell) {
               return 100 * (line.baseline - cell.top()) < 86 * line.capHeight &&
                      2 * cell.height() > line.capHeight;
           }) >= 2;
}

// A small L of a fixed-width font has its stem in the middle, a capital one at the left.
bool isSmallL(const QImage &ink, const QRect &cell)
{
    return inkIn(ink, cell, 0.38, 0.2, 0.62, 0.75) > inkIn(ink, cell, 0, 0.2, 0.24, 0.75) + 0.25;
}

// The reading that a shape of a fixed-width font asks for; empty when it asks for none.
QString seenInColumns(const QImage &ink, const ReadLine &line, const ReadSign &sign, bool zerosAreFilled)
{
    const QRect &cell = line.cells[size_t(sign.cell)];
    if (!isTall(line, cell))
        return {};
    if (isOneOf(sign, u"0Oo"))
        return read0OrO(ink, cell, zerosAreFilled);
    // They reach under the line or over it, which a zero with its dot never does.
    if (isOneOf(sign, u"Q@®©") && zerosAreFilled && cell.bottom() < line.baseline)
        return centerOf(ink, cell) > kFilledCenter ? QStringLiteral("0") : QString();
    if (isOneOf(sign, u"5S"))
        return read5OrS(ink, cell);
    if (isOneOf(sign, u"1lI|"))
        return read1lOrI(ink, cell);
    return {};
}

// In other fonts a zero is narrower than a capital O, and a small L is nothing but a stroke.
QString seenByWidth(const ReadLine &line, const ReadSign &sign)
{
    const QRect &cell = line.cells[size_t(sign.cell)];
    const double width = double(cell.width()) / line.capHeight;
    if (isOneOf(sign, u"0O") && isTall(line, cell) && line.capHeight >= 8)
        return width > 0.93 ? "O" : width < 0.78 ? "0" : QString();
    if (isOneOf(sign, u"L") && width < 0.3)
        return "l";
    return {};
}

// Letters that have one form in two sizes.
QString seenByHeight(const ReadLine &line, const ReadSign &sign)
{
    const QRect &cell = line.cells[size_t(sign.cell)];
    if (isOneOf(sign, u"0Oo°") && !isTall(line, cell))
        return "o";
    if (isOneOf(sign, u"cCsSvVwWxXzZuU"))
        return isTall(line, cell) ? sign.text.toUpper() : sign.text.toLower();
    return {};
}

// Hexadecimal numbers are written in one case: among their digits other letters, and letters of the rarer
// case, are misread.
void mendHexadecimal(std::vector<ReadSign> &signs, const Run &run)
{
    constexpr size_t kShortest = 12;
    if (run.to - run.from < kShortest)
        return;
    int digits = 0;
    int small = 0;
    int capital = 0;
    int others = 0;
    for (size_t s = run.from; s < run.to; ++s) {
        const ReadSign &sign = signs[s];
        digits += isOneOf(sign, u"0123456789");
        small += isOneOf(sign, u"abcdef");
        capital += isOneOf(sign, u"ABCDEF");
        others += !isOneOf(sign, u"0123456789abcdefABCDEF");
    }
    const int letters = small + capital;
    const int length = int(run.to - run.from);
    if (4 * digits < length || 3 * std::min(small, capital) > letters || 10 * others > length)
        return;
    static const QHash<QString, QString> digitFor{{"O", "0"}, {"o", "0"}, {"l", "1"}, {"I", "1"}, {"|", "1"},
                                                  {"S", "5"}, {"s", "5"}, {"Z", "2"}, {"G", "6"}, {"£", "f"},
                                                  {"é", "6"}, {"g", "9"}, {"q", "9"}, {"¢", "c"}, {"€", "e"}};
    for (size_t s = run.from; s < run.to; ++s) {
        QString &text = signs[s].text;
        if (isOneOf(signs[s], u"abcdefABCDEF"))
            text = capital > small ? text.toUpper() : text.toLower();
        else
            text = digitFor.value(text, text);
    }
}

// Signs that stand in the midst of letters and digits only where one of those was misread.
void mendStrangers(std::vector<ReadSign> &signs)
{
    static const QHash<QString, QString> plainFor{{"£", "f"}, {"¢", "c"}, {"€", "e"}, {"¥", "Y"}, {"§", "S"}};
    const auto continues = [&](size_t s) {
        return s < signs.size() && !signs[s].text.isEmpty() && signs[s].text[0].isLetterOrNumber();
    };
    for (size_t s = 1; s + 1 < signs.size(); ++s) {
        if (signs[s].blankBefore || signs[s + 1].blankBefore || !continues(s - 1) || !continues(s + 1) ||
            signs[s].confidence >= kSureOfSign)
            continue;
        signs[s].text = plainFor.value(signs[s].text, signs[s].text);
    }
}

// Fixed-width fonts are for programs, whose quotation marks are straight.
void straightenQuotes(std::vector<ReadSign> &signs)
{
    for (ReadSign &sign : signs)
        if (isOneOf(sign, u"“”„"))
            sign.text = "\"";
        else if (isOneOf(sign, u"‘’"))
            sign.text = "'";
}

// The language data has no ±. It is read as the + of it, and told by the bar under that.
void mendPlusMinus(const QImage &ink, ReadLine &line)
{
    constexpr double kBar =
        0.5; // ink in the lower corners: .6 and more under a ±, nothing beside the stem of a +
    for (ReadSign &sign : line.signs) {
        if (!sign.isAlone || sign.text != "+")
            continue;
        const QRect &cell = line.cells[size_t(sign.cell)];
        const bool hasBar =
            std::max(inkIn(ink, cell, 0, 0.84, 0.3, 0.94), inkIn(ink, cell, 0, 0.88, 0.3, 1)) > kBar &&
            std::max(inkIn(ink, cell, 0.7, 0.84, 1, 0.94), inkIn(ink, cell, 0.7, 0.88, 1, 1)) > kBar;
        if (hasBar)
            sign.text = QStringLiteral("±");
    }
}

// Letters with an accent among letters and digits without sense.
void mendAccents(std::vector<ReadSign> &signs, const Run &run)
{
    constexpr int kSenseless = 2;
    if (run.digits > 0 && run.turns >= kSenseless)
        for (size_t s = run.from; s < run.to; ++s)
            if (isOneOf(signs[s], u"é") && signs[s].confidence < kSureOfSign)
                signs[s].text = "6";
}

} // namespace

void mendLookalikes(const QImage &ink, std::vector<ReadLine> &lines)
{
    bool zerosAreFilled = false;
    for (const ReadLine &line : lines)
        if (line.pitch > 0)
            for (const ReadSign &sign : line.signs)
                zerosAreFilled |= sign.isAlone && isOneOf(sign, u"0O") &&
                                  centerOf(ink, line.cells[size_t(sign.cell)]) > kFilledCenter;
    for (ReadLine &line : lines) {
        const bool knowsHeight = hasSmallLetters(line) && (line.pitch > 0 || line.capHeight >= 12);
        mendStrangers(line.signs);
        mendPlusMinus(ink, line);
        if (line.pitch > 0) {
            straightenQuotes(line.signs);
            for (ReadSign &sign : line.signs)
                if (sign.isAlone && isOneOf(sign, u"L") && isSmallL(ink, line.cells[size_t(sign.cell)]))
                    sign.text = "l";
        }
        for (const Run &run : runsOf(line.signs)) {
            if (run.isPlain())
                continue;
            for (size_t s = run.from; s < run.to; ++s) {
                ReadSign &sign = line.signs[s];
                if (!sign.isAlone)
                    continue;
                QString seen =
                    line.pitch > 0 ? seenInColumns(ink, line, sign, zerosAreFilled) : seenByWidth(line, sign);
                if (seen.isEmpty() && knowsHeight)
                    seen = seenByHeight(line, sign);
                if (!seen.isEmpty())
                    sign.text = seen;
            }
            mendAccents(line.signs, run);
            mendHexadecimal(line.signs, run);
        }
    }
}
