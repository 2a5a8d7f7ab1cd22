#include "document/pixelation.h"

#include "pixels.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFont>
#include <QPainter>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

// A line of text as a program would show it, on a picture of its own.
QImage written(const QString &text, int pixelSize, const QSize &size = {360, 60})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QFont font("JetBrains Mono"); // equal widths: how long a text is, its rectangle shows anyway
    font.setPixelSize(pixelSize);
    painter.setFont(font);
    painter.setPen(QColor(30, 30, 35));
    painter.drawText(24, 36, text);
    return image;
}

// One grey value for each block of the picture, by column and row from the bottom left.
std::vector<double> blocksOf(const QImage &mosaic)
{
    const double side = pixelationBlock(mosaic.size());
    std::vector<double> blocks;
    for (double y = mosaic.height() - side / 2; y > 0; y -= side) {
        for (double x = side / 2; x < mosaic.width(); x += side)
            blocks.push_back(qGray(mosaic.pixel(static_cast<int>(x), static_cast<int>(y))));
    }
    return blocks;
}

// The mosaic that can be undone: plain averages on the same grid.
QImage averaged(const QImage &image)
{
    const double side = pixelationBlock(image.size());
    QImage result = image;
    const int columns = static_cast<int>(std::ceil(image.width() / side));
    const int rows = static_cast<int>(std::ceil(image.height() / side));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            int sum = 0;
            int count = 0;
            const auto each = [&](auto visit) {
                for (int y = 0; y < image.height(); ++y) {
                    if (std::floor((image.height() - y - 0.5) / side) != row)
                        continue;
                    for (int x = 0; x < image.width(); ++x) {
                        if (std::floor((x + 0.5) / side) == column)
                            visit(x, y);
                    }
                }
            };
            each([&](int x, int y) {
                sum += qGray(image.pixel(x, y));
                ++count;
            });
            const int grey = count ? sum / count : 0;
            each([&](int x, int y) { result.setPixel(x, y, qRgb(grey, grey, grey)); });
        }
    }
    return result;
}

// Codes of one length, as like each other as codes are.
QStringList codes()
{
    QStringList result;
    for (int i = 0; i < 20; ++i)
        result << QString("PIN %1").arg((i * 48271 + 11317) % 9000000 + 1000000);
    return result;
}

// The blocks of one mosaic whose noise no other shares: a mark far from the text makes it another picture.
std::vector<double> oneMosaic(QImage image, int serial)
{
    image.setPixel(image.width() - 1, image.height() - 1, qRgb(255, 255, serial % 128));
    image.setPixel(image.width() - 12, image.height() - 1, qRgb(255, 255, serial / 128));
    std::vector<double> blocks = blocksOf(pixelated(image));
    blocks.erase(blocks.begin(), blocks.begin() + blocks.size() / 4); // the lower rows, with the marks
    return blocks;
}

// Guess and compare, by an attacker who knows everything but the key: who makes many mosaics of every
// candidate, learns their means and how their noise hangs together, and takes the candidate that is then most
// likely.
class Attacker {
public:
    Attacker(const std::vector<QImage> &candidates, int copies)
    {
        for (const QImage &candidate : candidates) {
            std::vector<std::vector<double>> seen;
            for (int i = 0; i < copies; ++i)
                seen.push_back(oneMosaic(candidate, m_serial++));
            learn(seen, static_cast<double>(candidates.size()) * copies);
        }
        factorise();
        for (const auto &mean : m_means)
            m_whitened.push_back(whitened(mean));
    }

    int guess(const std::vector<double> &published) const
    {
        const std::vector<double> seen = whitened(published);
        int best = -1;
        double least = 1e300;
        for (size_t i = 0; i < m_whitened.size(); ++i) {
            double distance = 0;
            for (size_t k = 0; k < seen.size(); ++k)
                distance += (seen[k] - m_whitened[i][k]) * (seen[k] - m_whitened[i][k]);
            if (distance < least) {
                least = distance;
                best = static_cast<int>(i);
            }
        }
        return best;
    }
    int nextSerial() { return m_serial++; }

private:
    void learn(const std::vector<std::vector<double>> &seen, double all)
    {
        const size_t size = seen[0].size();
        std::vector<double> mean(size, 0);
        for (const auto &blocks : seen) {
            for (size_t k = 0; k < size; ++k)
                mean[k] += blocks[k] / static_cast<double>(seen.size());
        }
        m_factor.resize(size, std::vector<double>(size, 0));
        for (const auto &blocks : seen) {
            for (size_t p = 0; p < size; ++p) {
                for (size_t q = 0; q <= p; ++q)
                    m_factor[p][q] += (blocks[p] - mean[p]) * (blocks[q] - mean[q]) / all;
            }
        }
        m_means.push_back(mean);
    }
    // Cholesky, with what rounding to whole colours adds to every variance.
    void factorise()
    {
        for (size_t p = 0; p < m_factor.size(); ++p) {
            for (size_t q = 0; q <= p; ++q) {
                double rest = m_factor[p][q] + (p == q ? 0.3 : 0);
                for (size_t k = 0; k < q; ++k)
                    rest -= m_factor[p][k] * m_factor[q][k];
                m_factor[p][q] = p == q ? std::sqrt(std::max(rest, 1e-9)) : rest / m_factor[q][q];
            }
        }
    }
    std::vector<double> whitened(const std::vector<double> &blocks) const
    {
        std::vector<double> result(blocks.size());
        for (size_t p = 0; p < blocks.size(); ++p) {
            double rest = blocks[p];
            for (size_t k = 0; k < p; ++k)
                rest -= m_factor[p][k] * result[k];
            result[p] = rest / m_factor[p][p];
        }
        return result;
    }

    int m_serial = 0;
    std::vector<std::vector<double>> m_means;
    std::vector<std::vector<double>> m_whitened;
    std::vector<std::vector<double>> m_factor; // lower triangle
};

int nearest(const std::vector<double> &published, const std::vector<std::vector<double>> &candidates)
{
    const auto distance = [&](const std::vector<double> &candidate) {
        double sum = 0;
        for (size_t k = 0; k < published.size(); ++k)
            sum += (published[k] - candidate[k]) * (published[k] - candidate[k]);
        return sum;
    };
    return static_cast<int>(std::ranges::min_element(candidates, {}, distance) - candidates.begin());
}

} // namespace

TEST(Pixelation, GuessingAndComparingUndoesPlainAveragesButNotThis)
{
    const QStringList secrets = codes();
    QRandomGenerator random(1);
    for (const int size : {14, 40}) {
        SCOPED_TRACE(size);
        std::vector<QImage> candidates;
        std::vector<std::vector<double>> averages;
        for (const QString &code : secrets) {
            candidates.push_back(written(code, size, {size * 12 + 40, size + 42}));
            averages.push_back(blocksOf(averaged(candidates.back())));
        }
        Attacker attacker(candidates, 120);
        int plainHits = 0;
        int hits = 0;
        for (int i = 0; i < secrets.size(); ++i) {
            std::vector<double> sent = averages[i]; // through a lossy format
            for (double &block : sent)
                block += random.bounded(13) - 6;
            plainHits += nearest(sent, averages) == i;
            for (int published = 0; published < 5; ++published)
                hits += attacker.guess(oneMosaic(candidates[i], attacker.nextSerial())) == i;
        }
        EXPECT_GE(plainHits, 18); // the secret can be guessed at all
        // Of a hundred, five by chance. The noise is another in every run: the bound leaves luck its room.
        EXPECT_LE(hits, 15);
    }
}

// What the noise leaves as it was shows where ink is near: it must not show which letters stand at the ends.
TEST(Pixelation, TouchesTheSameBlocksWhateverLettersStandAtTheEndsOfALine)
{
    for (const auto &[size, left] :
         {std::pair(14, 20), std::pair(40, 60), std::pair(48, 40), std::pair(48, 50), std::pair(48, 60),
          std::pair(48, 70), std::pair(60, 55)}) {
        std::vector<std::vector<bool>> touched;
        for (const QString &text : {QString("10000001"), QString("70000007"), QString("40000004")}) {
            auto &blocks = touched.emplace_back();
            for (const int mark : {0, 90, 180}) {
                QImage image(8 * size, 3 * size + 160, QImage::Format_RGB32);
                image.fill(Qt::white);
                QPainter painter(&image);
                QFont font("DejaVu Sans");
                font.setPixelSize(size);
                painter.setFont(font);
                painter.drawText(left, 2 * size, text);
                painter.fillRect(0, image.height() - 1, 1, 1, QColor(mark, mark, mark));
                painter.end();
                const QImage mosaic = pixelated(image);
                const int side = int(pixelationBlock(image.size()));
                size_t at = 0;
                for (int y = mosaic.height() - 100; y > 0; y -= side)
                    for (int x = side / 2; x < mosaic.width(); x += side, ++at) {
                        if (at == blocks.size())
                            blocks.push_back(false);
                        blocks[at] = blocks[at] || mosaic.pixel(x, y) != qRgb(255, 255, 255);
                    }
            }
        }
        EXPECT_TRUE(touched[0] == touched[1] && touched[1] == touched[2]) << size << " at " << left;
    }
}

TEST(Pixelation, StillLooksLikeAMosaicOfWhatIsThere)
{
    // Left dark, right light, text in between. The noise is another in every run and for every picture: what
    // must hold is told of the middle of several pictures, not of one.
    std::vector<int> darkest;
    std::vector<int> contrasts;
    for (int i = 0; i < 11; ++i) {
        QImage image = written(QStringLiteral("Confidential words 1234 567%1").arg(i), 16);
        QPainter(&image).fillRect(0, 0, 20, 60, QColor(20, 20, 40));
        const QImage mosaic = pixelated(image);
        EXPECT_TRUE(hasColor(mosaic, {4, 56}, qRgb(20, 20, 40), 30));
        EXPECT_TRUE(hasColor(mosaic, {350, 4}, qRgb(255, 255, 255), 0));
        std::vector<int> values;
        for (double x = 60; x < 200; x += pixelationBlock(image.size()))
            values.push_back(qGray(mosaic.pixel(static_cast<int>(x), 32)));
        const auto [low, high] = std::ranges::minmax(values);
        darkest.push_back(low);
        contrasts.push_back(high - low);
    }
    std::ranges::sort(darkest);
    std::ranges::sort(contrasts);
    EXPECT_GT(darkest[5], 110);  // each part keeps its brightness
    EXPECT_GT(contrasts[5], 12); // and the text's blocks vary
}

TEST(Pixelation, KeepsTheHuesAndOpacityOfAPicture)
{
    QImage image(900, 300, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.fillRect(0, 0, 300, 300, QColor(200, 40, 30));
    painter.fillRect(300, 0, 300, 300, QColor(30, 40, 200, 128));
    painter.end();
    const QImage mosaic = pixelated(image);
    EXPECT_EQ(mosaic.size(), image.size());
    EXPECT_TRUE(hasColor(mosaic, {100, 150}, qRgb(200, 40, 30), 1));
    EXPECT_TRUE(hasColor(mosaic, {450, 150}, image.pixel(450, 150), 1));
    EXPECT_EQ(qAlpha(mosaic.pixel(800, 150)), 0);
    for (int x = 0; x < 900; ++x) { // premultiplied all the way
        const auto pixel = reinterpret_cast<const QRgb *>(mosaic.constScanLine(150))[x];
        ASSERT_LE(std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}), qAlpha(pixel));
    }
}

TEST(Pixelation, HidesLettersThatStandOnNothing)
{
    for (const QColor &ink : {QColor(Qt::black), QColor(Qt::white), QColor(200, 60, 40, 200)}) {
        QImage image(360, 60, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setPen(ink);
        painter.drawText(24, 36, "Letters without a ground");
        painter.end();
        const QImage mosaic = pixelated(image);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                ASSERT_TRUE(qAlpha(image.pixel(x, y)) == 0 || qAlpha(mosaic.pixel(x, y)) == 255)
                    << ink.name().toStdString() << " shows through at " << x << ", " << y;
        }
    }
}

TEST(Pixelation, KeepsNoAverageOfFaintLetters)
{
    QImage image = written("faint 1234567 words", 16);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(225, 225, 225) + (qGray(image.pixel(x, y)) / 10) * 0x010101);
    const auto seen = blocksOf(pixelated(image)), means = blocksOf(averaged(image));
    int written = 0;
    int kept = 0;
    for (size_t i = 0; i < means.size(); ++i) {
        if (means[i] > 249)
            continue; // nothing stands there
        ++written;
        kept += std::abs(seen[i] - means[i]) < 1.5;
    }
    ASSERT_GT(written, 15);
    EXPECT_LT(kept, written * 0.7) << written;
}

// Called by the test that follows, in processes of their own.
TEST(Pixelation, DISABLED_TellsItsMosaic)
{
    const QImage mosaic = pixelated(written("a secret", 16));
    const QByteArray pixels(reinterpret_cast<const char *>(mosaic.constBits()), mosaic.sizeInBytes());
    std::puts(("mosaic " + QCryptographicHash::hash(pixels, QCryptographicHash::Md5).toHex()).constData());
}

TEST(Pixelation, HasAKeyThatNoOtherRunHas)
{
    QSet<QByteArray> mosaics;
    for (int run = 0; run < 2; ++run) {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {"--gtest_also_run_disabled_tests", "--gtest_filter=*TellsItsMosaic"});
        ASSERT_TRUE(process.waitForFinished(60000));
        const QByteArray told = process.readAllStandardOutput();
        ASSERT_TRUE(told.contains("mosaic "));
        mosaics.insert(told.mid(told.indexOf("mosaic "), 39));
    }
    EXPECT_EQ(mosaics.size(), 2);
}

TEST(Pixelation, IsTheSameForTheSamePictureAndAnotherForEveryOther)
{
    const QImage image = written("The same words", 16);
    EXPECT_EQ(pixelated(image), pixelated(image.copy()));
    QImage other = image;
    other.setPixel(359, 0, qRgb(254, 255, 255));
    EXPECT_NE(pixelated(image).copy(0, 0, 300, 60), pixelated(other).copy(0, 0, 300, 60));
    for (const QSize &size : {QSize(1, 1), QSize(3, 900), QSize(5000, 2)})
        EXPECT_EQ(pixelated(written("x", 8, size)).size(), size);
    EXPECT_TRUE(pixelated(QImage()).isNull());
}
