#include "capture/frame_stitcher.h"
#include "capture/page_picture.h"
#include "support/pictures.h"

#include <QColorSpace>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

constexpr int kWidth = Page::kWidth;

QImage stacked(const QList<QImage> &parts)
{
    int height = 0;
    for (const QImage &part : parts)
        height += part.height();
    QImage whole(parts.first().width(), height, QImage::Format_RGB32);
    QPainter painter(&whole);
    int y = 0;
    for (const QImage &part : parts) {
        painter.drawImage(0, y, part);
        y += part.height();
    }
    return whole;
}

std::optional<FrameStitcher::Step> matchOf(const QImage &previous, const QImage &next)
{
    FrameStitcher stitcher;
    stitcher.add(previous);
    return stitcher.look(*ComparedPicture::of(next)).step;
}

int shiftOf(const QImage &previous, const QImage &next)
{
    const auto step = matchOf(previous, next);
    return step ? step->shift : 0;
}

} // namespace

TEST(RowSignatures, LeaveOutTheScrollBarAndAlphaButNothingElse)
{
    const QImage image = Page(20).image();
    const auto before = RowSignatures::of(image)->hashes;
    const auto changedAt = [&](int x, QRgb flipped) {
        QImage changed = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        auto *pixel = reinterpret_cast<QRgb *>(changed.scanLine(13)) + x;
        *pixel ^= flipped;
        const auto after = RowSignatures::of(changed)->hashes;
        QList<int> rows;
        for (int y = 0; y < 20; ++y) {
            if (after[y] != before[y])
                rows.append(y);
        }
        return rows;
    };
    for (const int x : {0, 1, 50, kWidth - 49}) {
        for (const QRgb bit : {0x00010000u, 0x00000100u, 0x00000001u, 0x00800000u})
            EXPECT_EQ(changedAt(x, bit), QList<int>{13}) << "column " << x;
        EXPECT_EQ(changedAt(x, 0x80000000), QList<int>{});
    }
    EXPECT_EQ(changedAt(kWidth - 48, 0x00ffffff), QList<int>{});
    EXPECT_EQ(changedAt(kWidth - 1, 0x00ffffff), QList<int>{});
}

TEST(RowSignatures, ReadNarrowPicturesInTheirFirstFourColumns)
{
    EXPECT_EQ(RowSignatures::comparedColumns(1920), 1872);
    EXPECT_EQ(RowSignatures::comparedColumns(53), 5);
    EXPECT_EQ(RowSignatures::comparedColumns(52), 4);
    EXPECT_EQ(RowSignatures::comparedColumns(20), 4);
    EXPECT_EQ(RowSignatures::comparedColumns(2), 2);
    EXPECT_EQ(RowSignatures::comparedColumns(0), 0);
    EXPECT_TRUE(RowSignatures::of(QImage(0, 0, QImage::Format_RGB32))->hashes.empty());
}

TEST(RowSignatures, TellRowsOfOneColour)
{
    QImage image = filled({150, 3}, Qt::darkCyan);
    image.setPixel(101, 1, 0xff000000); // the last compared column
    image.setPixel(102, 2, 0xff000000); // the first of the scroll bar
    EXPECT_EQ(RowSignatures::of(image)->uniform, (std::vector<quint8>{1, 0, 1}));
}

TEST(RowSignatures, DoNotDependOnTheFormatOfThePicture)
{
    const QImage image = Page(9).image();
    const auto hashes = RowSignatures::of(image)->hashes;
    EXPECT_EQ(RowSignatures::of(image.convertToFormat(QImage::Format_RGBA8888))->hashes, hashes);
    EXPECT_EQ(RowSignatures::of(image.convertToFormat(QImage::Format_RGB888))->hashes, hashes);
    QImage linear = image;
    linear.setColorSpace(QColorSpace::SRgbLinear);
    EXPECT_NE(RowSignatures::of(linear)->hashes, hashes);
}

TEST(FrameStitcher, KeepsOnlyFramesThatMovedOn)
{
    const Page page(600);
    FrameStitcher stitcher;
    EXPECT_FALSE(stitcher.result());
    const QImage first = page.frame(100, 200);
    EXPECT_TRUE(stitcher.add(first));
    EXPECT_EQ(*stitcher.result(), first);
    for (const QImage &late : {page.frame(300, 200), first}) { // something that came in later
        stitcher.refresh(late, *ComparedPicture::of(late));
        EXPECT_EQ(*stitcher.result(), late);
    }
    EXPECT_FALSE(stitcher.add(first)) << "did not move";
    EXPECT_FALSE(stitcher.add(page.frame(60, 200))) << "scrolled back";
    EXPECT_FALSE(stitcher.add(page.frame(150, 201))) << "another height";
    EXPECT_FALSE(stitcher.add(page.frame(150, 200).copy(0, 0, kWidth - 1, 200))) << "another width";
    EXPECT_FALSE(stitcher.add(page.frame(400, 200))) << "nothing in common";
    EXPECT_TRUE(stitcher.add(page.frame(150, 200)));
    EXPECT_EQ(stitcher.frames().size(), 2);
    EXPECT_EQ(stitcher.steps(), (QList<FrameStitcher::Step>{{.footer = 0, .shift = 50}}));
    EXPECT_TRUE(sameRows(stitcher.result(), page.rows(100, 250)));
}

TEST(FrameStitcher, IgnoresAScrollBarThatMovesByItself)
{
    const Page page(300);
    QImage next = page.frame(0, 200);
    QPainter(&next).fillRect(kWidth - 48, 20, 48, 90, Qt::gray);
    EXPECT_FALSE(matchOf(page.frame(0, 200), next));
}

TEST(FrameStitcher, DrawsAHeaderAndAFooterOnce)
{
    const Page page(900);
    const QImage header = Page(30, 2).image();
    const QImage footer = Page(21, 3).image();
    FrameStitcher stitcher;
    for (const int offset : {0, 90, 220, 221, 300, 420})
        EXPECT_TRUE(stitcher.add(page.frame(offset, 240, header, footer)));
    for (const FrameStitcher::Step &step : stitcher.steps()) {
        EXPECT_EQ(step.header, 30);
        EXPECT_EQ(step.footer, 21);
    }
    EXPECT_TRUE(sameRows(stitcher.result(), stacked({header, page.rows(30, 240 - 30 - 21 + 420), footer})));
}

TEST(FrameStitcher, NeitherDoublesNorLosesRowsWhereFootersAreTallByChance)
{
    // The blank band stands at the foot of some pairs of frames and not of others.
    Page page(900);
    page.blank(180, 260).blank(500, 530);
    const QImage footer = Page(15, 3).image();
    FrameStitcher stitcher;
    for (const int offset : {0, 10, 40, 110, 230, 290, 340, 350, 430})
        EXPECT_TRUE(stitcher.add(page.frame(offset, 240, {}, footer))) << offset;
    QList<int> footers;
    for (const FrameStitcher::Step &step : stitcher.steps())
        footers.append(step.footer);
    ASSERT_GT(*std::max_element(footers.cbegin(), footers.cend()), 15)
        << "the case no longer tries what it should";
    EXPECT_TRUE(sameRows(stitcher.result(), stacked({page.rows(0, 225 + 430), footer})));
}

TEST(FrameStitcher, TakesRowsFromTheFrameBeforeWhenTheHeaderHidesThem)
{
    // A list of equal items moves by one item, so that nearly all of it looks fixed; then a long step takes
    // the rows where that seeming footer began below the header.
    Page page(900);
    page.repeat(100, 260, 20);
    const QImage header = Page(40, 2).image();
    FrameStitcher stitcher;
    for (const int offset : {0, 20, 130})
        EXPECT_TRUE(stitcher.add(page.frame(offset, 240, header))) << offset;
    ASSERT_GT(stitcher.steps()[0].footer, 240 - 40 - 110);
    EXPECT_TRUE(sameRows(stitcher.result(), stacked({header, page.rows(40, 200 + 130)})));
}

TEST(FrameStitcher, NeedsAMovingRegionOfSeventeenRowsAndTwelveOfOverlap)
{
    const QImage header = Page(100, 2).image();
    const Page page(200);
    // Without any row alike by chance the region under the header is what moves.
    EXPECT_EQ(shiftOf(page.frame(0, 116, header), page.frame(2, 116, header)), 0);
    EXPECT_EQ(shiftOf(page.frame(0, 117, header), page.frame(2, 117, header)), 2);
    EXPECT_EQ(shiftOf(page.frame(0, 60), page.frame(48, 60)), 48);
    EXPECT_EQ(shiftOf(page.frame(0, 60), page.frame(49, 60)), 0);
}

TEST(FrameStitcher, NeedsSixRowsThatAreNotBlank)
{
    for (const int lines : {5, 6}) {
        Page page(200);
        page.blank(0, 40).blank(40 + 4 * lines, 200);
        for (int line = 0; line < lines; ++line)
            page.blank(41 + 4 * line, 44 + 4 * line);
        EXPECT_EQ(shiftOf(page.frame(0, 90), page.frame(20, 90)), lines == 6 ? 20 : 0) << lines;
    }
}

TEST(FrameStitcher, BearsSpoiledRowsAsLongAsOthersTell)
{
    // A hundred rows compared at the right shift of 20.
    const Page page(300);
    const QImage first = page.frame(0, 120);
    for (const int spoiled : {14, 60, 95}) {
        QImage next = page.frame(20, 120);
        for (int y = 0; y < spoiled; ++y) {
            for (const int x : {0, 40})
                next.setPixel(x, y, 0xff123456 + y);
        }
        EXPECT_EQ(shiftOf(first, next), spoiled < 95 ? 20 : 0) << spoiled;
    }
}

TEST(FrameStitcher, TakesTheSmallestOfEquallyGoodShifts)
{
    // A page that repeats every 30 rows; one spoiled row keeps every shift below perfection.
    const Page tile(30);
    QImage first = stacked({tile.image(), tile.image(), tile.image(), tile.image()});
    first.setPixel(0, 0, 0xff000001);
    first.setPixel(0, 119, 0xff000001);
    QImage next = stacked({tile.image(), tile.image(), tile.image(), tile.image()});
    const auto step = matchOf(first, next);
    ASSERT_TRUE(step);
    EXPECT_EQ(step->shift, 30);
}

TEST(FrameStitcher, JoinsPicturesOfEveryFormat)
{
    const Page page(400);
    const QImage first = page.frame(0, 200).convertToFormat(QImage::Format_RGB888);
    const QImage next = page.frame(70, 200).convertToFormat(QImage::Format_RGBA8888);
    FrameStitcher stitcher;
    EXPECT_TRUE(stitcher.add(first));
    EXPECT_TRUE(stitcher.add(next));
    EXPECT_TRUE(sameRows(stitcher.result(), page.rows(0, 270)));
}

// Each folder is a series of frames of a real program with its truth. LUMENPOST_STITCH_DATA names more of
// them.
class RealSeries : public testing::TestWithParam<QString> {};

QStringList seriesFolders()
{
    QMap<QString, QString> folders; // by name: the same series may lie in both places
    for (const QString &parent :
         {QString(LUMENPOST_TEST_DATA "/data"), qEnvironmentVariable("LUMENPOST_STITCH_DATA")}) {
        if (parent.isEmpty())
            continue;
        for (const QString &name : QDir(parent).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            folders[name] = QDir(parent).filePath(name);
    }
    return folders.values();
}

TEST_P(RealSeries, IsJoinedAsThePageIs)
{
    const QDir folder(GetParam());
    QFile file(folder.filePath("truth.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject truth = QJsonDocument::fromJson(file.readAll()).object();

    FrameStitcher stitcher;
    const QJsonArray frames = truth["frames"].toArray();
    for (int i = 0; i < frames.size(); ++i) {
        const QImage frame(folder.filePath(frames[i].toString()));
        ASSERT_FALSE(frame.isNull());
        EXPECT_EQ(stitcher.add(frame), truth["accepted"][i].toBool()) << "frame " << i;
    }
    QJsonArray shifts;
    for (const FrameStitcher::Step &step : stitcher.steps()) {
        shifts.append(step.shift);
        EXPECT_GE(step.footer, truth["footer"].toInt());
    }
    EXPECT_EQ(shifts, truth["shifts"].toArray());

    const std::optional<QImage> result = stitcher.result();
    ASSERT_TRUE(result);
    const QJsonArray columns = truth["compare_columns"].toArray();
    const QJsonArray animated = truth["animated_rows"].toArray();
    EXPECT_TRUE(sameRows(*result, QImage(folder.filePath(truth["expected"].toString())), columns[0].toInt(),
                         columns[1].toInt(), animated[0].toInt(), animated[1].toInt()));
}

INSTANTIATE_TEST_SUITE_P(FrameStitcher, RealSeries, testing::ValuesIn(seriesFolders()), [](const auto &info) {
    return QFileInfo(info.param).fileName().replace('-', '_').toStdString();
});

TEST(FrameStitcher, IsFullBeforeThePictureGrowsTooLargeToBeOpened)
{
    const Page page(900);
    FrameStitcher stitcher(qint64(kWidth) * 300);
    EXPECT_TRUE(stitcher.add(page.frame(0, 200)));
    EXPECT_TRUE(stitcher.add(page.frame(100, 200)));
    EXPECT_FALSE(stitcher.isFull()) << "300 rows just fit";
    EXPECT_FALSE(stitcher.add(page.frame(120, 200)));
    EXPECT_TRUE(stitcher.isFull());
    EXPECT_TRUE(sameRows(stitcher.result(), page.rows(0, 300)));
}
