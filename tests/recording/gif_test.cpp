#include "recording/gif_palette.h"
#include "recording/gif_writer.h"
#include "recording/movie_export.h"

#include "fakes/fake_films.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <numeric>

namespace {

// What a decoder that isn't ours shows, frame by frame.
QList<QImage> decoded(const QByteArray &gif, QList<int> *delays = nullptr)
{
    QBuffer buffer;
    buffer.setData(gif);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "gif");
    QList<QImage> frames;
    while (reader.canRead()) {
        const QImage frame = reader.read();
        if (frame.isNull())
            break;
        frames.append(frame.convertToFormat(QImage::Format_RGB32));
        if (delays)
            delays->append(reader.nextImageDelay());
    }
    return frames;
}

QByteArray written(const QList<QImage> &pictures)
{
    QByteArray bytes;
    GifWriter writer(pictures.first().size(), [&bytes](const QByteArray &more) {
        bytes += more;
        return true;
    });
    for (int i = 0; i < int(pictures.size()); ++i)
        EXPECT_TRUE(writer.add(pictures[i], GifExport::delayOf(i)));
    EXPECT_TRUE(writer.finish());
    return bytes;
}

QImage plain(QSize size, QColor color)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(color);
    return picture;
}

QImage noise(QSize size, unsigned seed)
{
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            seed = seed * 1664525 + 1013904223;
            picture.setPixel(x, y, 0xff000000U | seed >> 8);
        }
    }
    return picture;
}

double meanError(const QImage &a, const QImage &b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            sum +=
                std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
    }
    return sum / (3.0 * a.width() * a.height());
}

} // namespace

TEST(GifWriter, KeepsColoursOfAnInterfaceExact)
{
    QImage first = plain({120, 80}, QColor(0x1e, 0x1f, 0x22));
    QPainter painter(&first);
    for (int i = 0; i < 200; ++i)
        painter.fillRect(i % 40 * 3, i / 40 * 4, 3, 4, QColor(i, 255 - i, i * 7 % 256));
    painter.end();
    QImage second = first;
    QPainter(&second).fillRect(30, 20, 11, 9, QColor(0xff, 0xfe, 0xfd));
    QImage third = second; // what is new is wider above than below
    for (const QRect &part : {QRect(60, 40, 40, 2), QRect(50, 50, 5, 2)})
        QPainter(&third).fillRect(part, QColor(0xff, 0xfe, 0xfd));
    const QList<QImage> pictures{first, second, second, third, first};
    EXPECT_EQ(decoded(written(pictures)), pictures);
}

TEST(GifWriter, StoresOnlyWhatChanged)
{
    QImage first({150, 170}, QImage::Format_RGB32);
    QPainter(&first).fillRect(first.rect(), QBrush(noise({15, 17}, 1)));
    QImage second = first;
    QPainter(&second).drawImage(30, 20, first, 67, 65, 20, 20);
    const auto once = written({first}).size();
    EXPECT_LT(written({first, first}).size() - once, 64);
    EXPECT_LT(written({first, second}).size() - once, 600) << "with the colours that are there";
    QPainter(&second).fillRect(30, 20, 10, 10, QColor(1, 254, 3));
    EXPECT_EQ(decoded(written({first, second})).value(1).pixelColor(35, 25), QColor(1, 254, 3))
        << "or with new ones";
}

// Every code length and the table's overflow occur in noise.
TEST(GifWriter, IsReadableWhateverThePictureHolds)
{
    for (const QSize size : {QSize(1, 1), QSize(7, 3), QSize(640, 360)}) {
        const QList<QImage> pictures{noise(size, 5), noise(size, 6)};
        const QList<QImage> shown = decoded(written(pictures));
        ASSERT_EQ(shown.size(), 2) << size.width();
        for (int i = 0; i < 2; ++i)
            EXPECT_LT(meanError(shown[i], pictures[i]), 14) << "noise in 255 colours";
    }
}

TEST(GifPalette, KeepsWhatCoversMostAndSharesOutTheRest)
{
    std::vector<QRgb> pixels(20000, qRgb(250, 251, 252));
    pixels.insert(pixels.end(), 5000, qRgb(10, 20, 30));
    for (int i = 0; i < 20000; ++i)
        pixels.push_back(qRgb(i % 256, i / 79 % 256, i * 31 % 256));
    const GifPalette palette(pixels, 255);
    EXPECT_LE(palette.colors().size(), 255U);
    EXPECT_EQ(palette.colors()[std::size_t(palette.indexOf(qRgb(250, 251, 252)))], qRgb(250, 251, 252));
    EXPECT_EQ(palette.colors()[std::size_t(palette.indexOf(qRgb(10, 20, 30)))], qRgb(10, 20, 30));
}

TEST(GifExport, HasTwelveFramesASecondForAMinuteAtMost)
{
    for (const auto &[length, frames] : {std::pair(90.0, 720), std::pair(10.05, 120), std::pair(0.01, 1),
                                         std::pair(7.0 - 5.0, 24), std::pair(60.0, 720)})
        EXPECT_EQ(GifExport::frameCount(length), frames) << length;
    EXPECT_DOUBLE_EQ(GifExport::timeOf(6), 0.5);
    EXPECT_EQ(GifExport::delayOf(0), 8);
    EXPECT_EQ(GifExport::delayOf(1), 8);
    EXPECT_EQ(GifExport::delayOf(2), 9);
    int sum = 0;
    for (int i = 0; i < 720; ++i)
        sum += GifExport::delayOf(i);
    EXPECT_EQ(sum, 6000) << "the clock holds";
}

TEST(MovieExport, LeavesTheOldFileWhenItFails)
{
    const QTemporaryDir folder;
    const QString target = folder.filePath("old.mp4");
    QFile old(target);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    FakeMovies movies;
    movies.refusal = "The disk is full.";
    WorkProgress progress;
    const auto made = MovieExport::mp4(movies, "film.mov", target, {}, progress);
    EXPECT_EQ(made.error().message, "The disk is full.");
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1)
        << "nothing half done stays";
}

TEST(MovieExport, TakesThePartThatTheFilmHas)
{
    const MovieInfo film{10, QSize(320, 240), 30, "h264", 0};
    EXPECT_EQ(*MovieExport::boundsOf(film, {}), std::pair(0.0, 10.0));
    EXPECT_EQ(*MovieExport::boundsOf(film, {2, 99}), std::pair(2.0, 10.0));
    for (const MoviePart &empty : {MoviePart{10, {}}, MoviePart{5, 5}, MoviePart{6, 5}})
        EXPECT_EQ(MovieExport::boundsOf(film, empty).error().kind, Error::Kind::Invalid);
}
