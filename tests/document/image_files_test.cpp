#include "document/image_files.h"
#include "support/temporary_folder.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <zlib.h>

namespace {

// Text-like strokes, a gradient and flat areas, so that every row filter has its turn.
QImage sample(int width, int height, QImage::Format format)
{
    QImage image(width, height, format);
    image.fill(format == QImage::Format_ARGB32_Premultiplied ? QColor(0, 0, 0, 0) : QColor(250, 250, 252));
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, width, height);
    gradient.setColorAt(0, QColor(90, 70, 250));
    gradient.setColorAt(1, QColor(250, 170, 60, 128));
    painter.fillRect(width / 4, height / 4, width / 2, height / 2, gradient);
    for (int i = 0; i < height; i += 7)
        painter.fillRect((i * 37) % width, i, width / 9, 2, QColor(i % 255, 30, 60));
    return image;
}

double difference(const QImage &a, const QImage &b)
{
    double total = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor one = a.pixelColor(x, y);
            const QColor other = b.pixelColor(x, y);
            total += std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
                     std::abs(one.blue() - other.blue());
        }
    }
    return total / (3.0 * a.width() * a.height());
}

void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST(ImageFiles, WritesPngThatEveryReaderTakesBitForBit)
{
    const TemporaryFolder folder;
    for (const QSize size : {QSize(1, 1), QSize(3, 700), QSize(641, 387), QSize(2000, 1)}) {
        for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
            const QImage image = sample(size.width(), size.height(), format);
            const QString path = folder.path("a.png");
            ASSERT_TRUE(ImageFiles::write(image, path));
            EXPECT_EQ(ImageFiles::pixelSize(path), size);
            const auto read = ImageFiles::read(path);
            ASSERT_TRUE(read) << read.error().message.toStdString();
            EXPECT_EQ(read->convertToFormat(QImage::Format_RGBA8888),
                      image.convertToFormat(QImage::Format_RGBA8888));
        }
    }
}

TEST(ImageFiles, WritesOpaquePicturesWithoutAlphaAndNoMetadata)
{
    const QImage opaque =
        sample(120, 90, QImage::Format_RGB32).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QByteArray png = ImageFiles::encode(opaque, ImageFiles::Type::Png);
    EXPECT_EQ(png.at(25), 2); // colour type: three channels
    for (const char *chunk : {"tEXt", "iTXt", "zTXt", "tIME", "eXIf", "pHYs"})
        EXPECT_FALSE(png.contains(chunk)) << chunk;
}

TEST(ImageFiles, KeepsLossyFormatsCloseToThePicture)
{
    const TemporaryFolder folder;
    const QImage image = sample(640, 400, QImage::Format_RGB32);
    for (const char *name : {"a.jpg", "b.heic", "c.JPEG"}) {
        ASSERT_TRUE(ImageFiles::write(image, folder.path(name))) << name;
        const auto read = ImageFiles::read(folder.path(name));
        ASSERT_TRUE(read) << name;
        ASSERT_EQ(read->size(), image.size());
        EXPECT_LT(difference(*read, image), 2.0) << name;
        EXPECT_EQ(ImageFiles::pixelSize(folder.path(name)), image.size());
    }
    // Coloured hairlines keep their colours; what is transparent lies on white.
    QImage hairlines(64, 16, QImage::Format_ARGB32_Premultiplied);
    for (int x = 0; x < 64; ++x)
        for (int y = 0; y < 16; ++y)
            hairlines.setPixelColor(x, y, x >= 32 ? Qt::transparent : x % 2 ? Qt::red : Qt::blue);
    const QImage kept = *ImageFiles::decode(ImageFiles::encode(hairlines, ImageFiles::Type::Jpeg));
    EXPECT_LT(difference(kept.copy(0, 0, 32, 16), hairlines.copy(0, 0, 32, 16)), 40);
    EXPECT_GT(kept.pixelColor(60, 8).lightness(), 250);
    const QByteArray tiff = ImageFiles::encode(image, ImageFiles::Type::Tiff);
    EXPECT_EQ(ImageFiles::decode(tiff)->convertToFormat(QImage::Format_RGB32), image);
    EXPECT_LT(tiff.size(), image.sizeInBytes() / 2);
}

TEST(ImageFiles, ChoosesTheTypeByTheExtension)
{
    EXPECT_EQ(ImageFiles::type("a.JPEG"), ImageFiles::Type::Jpeg);
    EXPECT_EQ(ImageFiles::type("a.heic"), ImageFiles::Type::Heic);
    for (const char *name : {"a.gif", "a.tiff", "a"})
        EXPECT_EQ(ImageFiles::type(name), ImageFiles::Type::Png) << name;
}

TEST(ImageFiles, BoundsJpegDataByItsLongerEdgeAndNeverEnlarges)
{
    const QImage image = sample(3000, 1500, QImage::Format_RGB32);
    EXPECT_EQ(ImageFiles::decode(ImageFiles::jpegData(image, 1500, 0.8))->size(), QSize(1500, 750));
    EXPECT_EQ(ImageFiles::decode(ImageFiles::jpegData(image, 4000, 0.8))->size(), QSize(3000, 1500));
    EXPECT_GT(ImageFiles::jpegData(image, 1500, 0.95).size(), ImageFiles::jpegData(image, 1500, 0.3).size());
    EXPECT_TRUE(ImageFiles::jpegData(QImage(), 100, 0.8).isEmpty());
}

TEST(ImageFiles, TurnsAPhotoAsItsCameraWasHeld)
{
    const TemporaryFolder folder;
    QImage image = sample(64, 32, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).fillRect(0, 0, 16, 32, Qt::black); // the left side comes to the top
    const QByteArray turned("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0", 32);
    QByteArray photo = ImageFiles::encode(image, ImageFiles::Type::Jpeg);
    photo.insert(2, QByteArray("\xff\xe1\0\x22", 4) + turned);
    put(folder.path("photo.jpg"), photo);
    EXPECT_EQ(ImageFiles::pixelSize(folder.path("photo.jpg")), QSize(32, 64));
    for (const auto &read : {*ImageFiles::read(folder.path("photo.jpg")),
                             *ImageFiles::thumbnail(folder.path("photo.jpg"), 64)}) {
        ASSERT_EQ(read.size(), QSize(32, 64));
        EXPECT_LT(read.pixelColor(16, 4).lightness(), 60);
        EXPECT_GT(read.pixelColor(4, 60).lightness(), 200);
    }
}

TEST(ImageFiles, RefusesForeignBrokenAndCutOffFilesWithASentence)
{
    const TemporaryFolder folder;
    const QImage image = sample(200, 200, QImage::Format_RGB32);
    const QByteArray png = ImageFiles::encode(image, ImageFiles::Type::Png);
    const QByteArray jpeg = ImageFiles::encode(image, ImageFiles::Type::Jpeg);
    put(folder.path("cut.png"), png.left(png.size() / 2));
    put(folder.path("cut.jpg"), jpeg.left(jpeg.size() / 2));
    const QByteArray tiff = ImageFiles::encode(image, ImageFiles::Type::Tiff);
    put(folder.path("cut.tif"), tiff.left(tiff.size() / 2));
    QByteArray pixelless = png;
    pixelless.replace(16, 8, QByteArray(8, '\0'));
    put(folder.path("none.png"), pixelless);
    put(folder.path("text.png"), "this is no picture");
    put(folder.path("empty.png"), "");
    QByteArray flipped = png;
    for (qsizetype i = 60; i < flipped.size() - 20; i += 11)
        flipped[i] = static_cast<char>(flipped[i] ^ 0x5a);
    put(folder.path("broken.png"), flipped);

    const auto sentence = [&](const char *name) {
        return ImageFiles::read(folder.path(name)).error().message;
    };
    EXPECT_EQ(sentence("cut.png"), "cut.png is cut off: its end is missing.");
    EXPECT_EQ(sentence("cut.jpg"), "cut.jpg is cut off: its end is missing.");
    EXPECT_EQ(sentence("cut.tif"), "cut.tif is cut off: its end is missing.");
    EXPECT_EQ(sentence("none.png"), "none.png is damaged.");
    EXPECT_EQ(sentence("text.png"), "text.png is not a picture that Lumenpost can read.");
    EXPECT_EQ(sentence("empty.png"), "empty.png is empty.");
    EXPECT_EQ(sentence("broken.png"), "broken.png is damaged.");
    EXPECT_EQ(sentence("gone.png"), "There is no file gone.png.");
    EXPECT_FALSE(ImageFiles::thumbnail(folder.path("broken.png"), 100));
    EXPECT_FALSE(ImageFiles::cachedThumbnail(folder.path("broken.png"), 100));
    EXPECT_FALSE(QFile::exists(ImageFiles::cachePath(folder.path("broken.png"), 256)));
}

TEST(ImageFiles, NoticesAMissingEndInEveryFormat)
{
    const QImage image = sample(200, 160, QImage::Format_RGB32);
    const auto saved = [&](const char *format) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        EXPECT_TRUE(image.save(&buffer, format)) << format;
        return buffer.data();
    };
    // A thumbnail inside the first segment ends with the marker that the picture's own end has lost.
    const QByteArray thumbnail =
        ImageFiles::encode(sample(40, 30, QImage::Format_RGB32), ImageFiles::Type::Jpeg);
    const QByteArray exif = QByteArray("Exif\0\0", 6) + thumbnail;
    QByteArray length(2, '\0');
    qToBigEndian(static_cast<quint16>(exif.size() + 2), length.data());
    QByteArray photo = ImageFiles::encode(image, ImageFiles::Type::Jpeg);
    photo.insert(2, "\xff\xe1" + length + exif);

    const std::pair<const char *, QByteArray> files[]{
        {"photo with thumbnail", photo},
        {"png", saved("png")},
        {"bmp", saved("bmp")},
        {"webp", saved("webp")},
        {"gif", QByteArray::fromBase64("R0lGODlhBAAEAPAAAP8AAAAAACH5BAAAAAAALAAAAAAEAAQAAAIEhI9pBQA7")},
        {"tiff", ImageFiles::encode(image, ImageFiles::Type::Tiff)},
        {"heic", ImageFiles::encode(image, ImageFiles::Type::Heic)},
    };
    for (const auto &[name, bytes] : files) {
        EXPECT_TRUE(ImageFiles::decode(bytes)) << name;
        for (const double share : {0.1, 0.3, 0.6, 0.9})
            EXPECT_FALSE(ImageFiles::decode(bytes.left(static_cast<qsizetype>(bytes.size() * share))))
                << name << ' ' << share;
    }
}

TEST(ImageFiles, RefusesByItsHeaderWhatIsTooLargeToWorkWith)
{
    const qint64 most = ImageFiles::mostPixels();
    QByteArray png = ImageFiles::encode(sample(8, 8, QImage::Format_RGB32), ImageFiles::Type::Png);
    qToBigEndian<quint32>(20000, png.data() + 16);
    qToBigEndian<quint32>(static_cast<quint32>(most / 20000 + 1), png.data() + 20);
    qToBigEndian<quint32>(
        static_cast<quint32>(crc32(0, reinterpret_cast<const Bytef *>(png.data()) + 12, 17)),
        png.data() + 29);
    QByteArray jpeg = ImageFiles::encode(sample(8, 8, QImage::Format_RGB32), ImageFiles::Type::Jpeg);
    const qsizetype frame = jpeg.indexOf("\xff\xc0");
    ASSERT_GT(frame, 0);
    qToBigEndian<quint16>(26000, jpeg.data() + frame + 5);
    qToBigEndian<quint16>(20000, jpeg.data() + frame + 7);
    for (const QByteArray &bytes : {png, jpeg}) {
        const auto read = ImageFiles::decode(bytes);
        ASSERT_FALSE(read);
        EXPECT_TRUE(read.error().message.startsWith("The picture is too large: it has 20000 × "))
            << read.error().message.toStdString();
    }
}

TEST(ImageFiles, SaysNothingOnTheTerminalAboutBrokenFiles)
{
    QByteArray png = ImageFiles::encode(sample(90, 90, QImage::Format_RGB32), ImageFiles::Type::Png);
    QByteArray tiff = ImageFiles::encode(sample(90, 90, QImage::Format_RGB32), ImageFiles::Type::Tiff);
    std::fill(png.begin() + 50, png.end() - 16, 'x');
    std::fill(tiff.begin() + 8, tiff.begin() + tiff.size() / 2, 'x');
    testing::internal::CaptureStderr();
    EXPECT_FALSE(ImageFiles::decode(png));
    EXPECT_FALSE(ImageFiles::decode(tiff)) << "though its decoder gives some rows";
    QByteArray jpeg = ImageFiles::encode(sample(90, 90, QImage::Format_RGB32), ImageFiles::Type::Jpeg);
    jpeg.insert(jpeg.size() - 2, "xxx");
    std::ignore = ImageFiles::decode(jpeg);
    std::ignore = ImageFiles::decode(tiff.left(20) + QByteArray(400, '\x7f'));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(ImageFiles, WritesNothingThatTheFormatCannotHold)
{
    const TemporaryFolder folder;
    EXPECT_EQ(ImageFiles::pathThatHolds("/a/b.c.jpg", {10, 70000}), "/a/b.c.png");
    EXPECT_EQ(ImageFiles::pathThatHolds("/a/b.HEIC", {40000, 10}), "/a/b.png");
    for (const char *path : {"/a/b.jpg", "/a/b.heic", "/a/b"})
        EXPECT_EQ(ImageFiles::pathThatHolds(path, {5120, 14000}), path);
    EXPECT_EQ(ImageFiles::pathThatHolds("/a/b.png", {10, 200000}), "/a/b.png");

    // The largest that is written can be read again, and one row more is refused.
    for (const char *name : {"a.jpg", "b.heic"}) {
        const QString path = folder.path(name);
        QImage tall(64, ImageFiles::longestSide(ImageFiles::type(path)), QImage::Format_RGB32);
        tall.fill(Qt::darkCyan);
        ASSERT_TRUE(ImageFiles::write(tall, path)) << name;
        EXPECT_EQ(ImageFiles::read(path).value().size(), tall.size());
        ASSERT_TRUE(QFile::remove(path));
        const QImage taller(64, tall.height() + 1, QImage::Format_RGB32);
        EXPECT_FALSE(ImageFiles::write(taller, path));
        EXPECT_TRUE(ImageFiles::encode(taller, ImageFiles::type(path)).isEmpty());
        EXPECT_FALSE(QFile::exists(path));
    }
    for (const char *name : {"a.gif", "a.webp", "a.tiff"}) {
        const auto written = ImageFiles::write(sample(9, 9, QImage::Format_RGB32), folder.path(name));
        EXPECT_EQ(written.error().kind, Error::Kind::Invalid) << name;
    }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(ImageFiles, LeavesTheOldFileWhenTheNewOneCannotBeWritten)
{
    const TemporaryFolder folder;
    const QImage old = sample(20, 20, QImage::Format_RGB32);
    for (const char *name : {"a.png", "a.jpg", "a.heic"}) {
        const QString path = folder.path(name);
        ASSERT_TRUE(ImageFiles::write(old, path));
        const auto kept = ImageFiles::read(path);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit little{100, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &little);
        const auto written = ImageFiles::write(sample(300, 300, QImage::Format_RGB32), path);
        setrlimit(RLIMIT_FSIZE, &before);
        ASSERT_FALSE(written) << name;
        EXPECT_TRUE(written.error().message.startsWith(QStringLiteral("Couldn't write %1: ").arg(name)));
        EXPECT_EQ(ImageFiles::read(path).value(), kept.value()) << name;
    }
}

TEST(ImageFiles, SharesThumbnailsOfOneSizeBucket)
{
    const TemporaryFolder folder;
    const QString path = folder.path("a.png");
    ASSERT_TRUE(ImageFiles::write(sample(800, 400, QImage::Format_RGB32), path));
    EXPECT_EQ(ImageFiles::cachedThumbnail(path, 220)->size(), QSize(256, 128));
    EXPECT_EQ(ImageFiles::cachedThumbnail(path, 250)->size(), QSize(256, 128));
    const QDir cache = QFileInfo(ImageFiles::cachePath(path, 256)).dir();
    EXPECT_EQ(cache.entryList(QDir::Files).size(), 1);
    EXPECT_EQ(ImageFiles::cachedThumbnail(path, 257)->size(), QSize(512, 256));
    EXPECT_EQ(cache.entryList(QDir::Files).size(), 2);
    ASSERT_TRUE(ImageFiles::write(sample(3000, 2, QImage::Format_RGB32), folder.path("thin.png")));
    EXPECT_EQ(ImageFiles::thumbnail(folder.path("thin.png"), 256)->size(), QSize(256, 1));
    // A stored thumbnail is what comes back, not a fresh one.
    put(ImageFiles::cachePath(path, 512),
        ImageFiles::encode(sample(5, 5, QImage::Format_RGB32), ImageFiles::Type::Jpeg));
    EXPECT_EQ(ImageFiles::cachedThumbnail(path, 400)->size(), QSize(5, 5));
}

TEST(ImageFiles, NamesAThumbnailByWhatIdentifiesTheFile)
{
    const TemporaryFolder folder;
    const QString path = folder.path("a.png");
    put(path, QByteArray(1000, 'x'));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::fromMSecsSinceEpoch(1700000000900), QFile::FileModificationTime));
    file.close();
    // The first 12 bytes of the SHA-256 of "a.png|1000|1700000000|256".
    const QString cached = ImageFiles::cachePath(path, 256);
    EXPECT_EQ(QFileInfo(cached).fileName(), "e1cb36c0d306706d79a39fb9.jpg");
    EXPECT_FALSE(cached.startsWith(folder.path()))
        << "what is made anew isn't synchronised with the pictures";
}

TEST(ImageFiles, SurvivesTheOddFilesOfOtherReaders)
{
    const QDir root("/usr/libexec/installed-tests/gdk-pixbuf");
    if (!root.exists())
        GTEST_SKIP() << "gdk-pixbuf-tests is not installed";
    int read = 0;
    int refused = 0;
    QStringList folders{root.path()};
    while (!folders.isEmpty()) {
        const QDir folder(folders.takeFirst());
        for (const QFileInfo &info : folder.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
            if (info.isDir()) {
                folders.append(info.filePath());
                continue;
            }
            const auto image = ImageFiles::read(info.filePath());
            image ? ++read : ++refused;
            if (image) {
                EXPECT_FALSE(image->isNull());
            } else {
                EXPECT_TRUE(image.error().message.endsWith('.')) << info.fileName().toStdString();
            }
            std::ignore = ImageFiles::pixelSize(info.filePath());
        }
    }
    EXPECT_GT(read, 10);
    EXPECT_GT(refused, 5);
}
