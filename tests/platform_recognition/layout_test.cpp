// The steps between ink and letters, each on ink that is made up.
#include "platform/recognition/glyphs.h"
#include "platform/recognition/page_reading.h"
#include "platform/recognition/struck_lines.h"
#include "platform/recognition/text_rows.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace {

QImage inkWith(QSize size, const QList<QRect> &boxes)
{
    QImage ink(size, QImage::Format_Grayscale8);
    ink.fill(0);
    QPainter painter(&ink);
    for (const QRect &box : boxes)
        painter.fillRect(box, QColor(200, 200, 200));
    return ink;
}

// Letters of a fixed-width font, of so many columns each where they touch.
ReadLine columns(const QList<int> &touching, int pitch)
{
    ReadLine line;
    line.region.glyphHeight = 14;
    int column = 0;
    for (qsizetype i = 0; i < touching.size(); ++i) {
        const int margin = touching[i] > 1 ? 1 : 1 + int(i % 3);
        line.region.glyphs.emplace_back(column * pitch + margin, 0, touching[i] * pitch - 2 * margin, 14);
        column += touching[i];
    }
    return line;
}

} // namespace

TEST(TextRows, EndAtAnUprightRule)
{
    Components ink{.glyphs = {}, .uprights = {}, .labels = cv::Mat::zeros(80, 120, CV_32S)};
    for (const int left : {10, 20, 30, 70, 80, 90})
        ink.glyphs.push_back({QRect(left, 30, 7, 14), int(ink.glyphs.size()) + 1, 200});
    EXPECT_EQ(rowsOf(ink).size(), 1U);
    ink.uprights = {QRect(52, 5, 1, 70)};
    EXPECT_EQ(rowsOf(ink).size(), 2U);
}

TEST(StruckLines, LeaveTheStrokesThatCrossThemAndNoneThatEndThere)
{
    const QRect line(10, 40, 100, 2), crossing(30, 30, 3, 20), ending(70, 30, 3, 10);
    QImage ink = inkWith({120, 80}, {line, crossing, ending});
    takeOutStruckLines(ink);
    EXPECT_EQ(ink.pixelColor(31, 41).red(), 200);
    EXPECT_EQ(ink.pixelColor(71, 35).red(), 200);
    for (const int x : {15, 50, 71, 100})
        EXPECT_EQ(ink.pixelColor(x, 41).red(), 0) << x;
}

TEST(ReadLines, ShareThePitchWhereLettersTouch)
{
    std::vector<ReadLine> lines(3, columns(QList<int>(14, 1), 10));
    lines.push_back(columns({1, 2, 1, 3, 2, 1, 2}, 10));
    measure(lines);
    for (const ReadLine &line : lines)
        EXPECT_NEAR(line.pitch, 10, 0.5);
}

TEST(ReadLines, StretchASignOverInkBesideItByALetterAtMost)
{
    ReadLine line;
    line.region.box = QRect(0, 0, 200, 20);
    line.cells = {QRect(10, 0, 40, 20), QRect(144, 0, 4, 20), QRect(150, 0, 10, 20)};
    line.baseline = line.capHeight = 20;
    line.signs = {{.text = "a", .box = QRectF(150, 0, 10, 20), .cell = 2, .isAlone = true}};
    const QRectF box = recognizedLine(line, {200, 20}).characters.first();
    EXPECT_LE(box.left() * 200, 144) << "what was read as nothing else is of the nearest";
    EXPECT_GE(box.left() * 200, 144 - 2 * 20) << "and what is far away of nothing";
}
