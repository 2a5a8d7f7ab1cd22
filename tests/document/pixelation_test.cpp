#include "document/pixelation.h"

#include "pixels.h"

#include <QFont>
#include <QPainter>
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
    QFont font("Inter");
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

// Guess and compare: which of the candidates, pixelated by whoever attacks, is most like what was published.
// The attacker knows everything but the noise, so plain averages, the published algorithm's own expectation
// for each candidate, is what there is to compare with.
int guess(const std::vector<double> &published, const std::vector<std::vector<double>> &candidates)
{
    int best = -1;
    double least = 1e300;
    for (size_t i = 0; i < candidates.size(); ++i) {
        double distance = 0;
        for (size_t k = 0; k < published.size(); ++k)
            distance += (published[k] - candidates[i][k]) * (published[k] - candidates[i][k]);
        if (distance < least) {
            least = distance;
            best = static_cast<int>(i);
        }
    }
    return best;
}

// Codes of one length, as like each other as codes are.
QStringList codes()
{
    QStringList result;
    for (int i = 0; i < 20; ++i)
        result << QString("PIN %1").arg((i * 48271 + 11317) % 9000000 + 1000000);
    return result;
}

// The best estimate of what the algorithm gives for a picture without its noise: the mean of the mosaics of
// many pictures that differ in one far-away pixel, as each of them has noise of its own.
std::vector<double> expectation(const QImage &image, int copies)
{
    std::vector<double> sum;
    for (int i = 0; i < copies; ++i) {
        QImage copy = image;
        for (int x = 0; x < 8; ++x) // the picture's bottom right corner, far from the text
            copy.setPixel(copy.width() - 1 - x, copy.height() - 1, qRgb(255, 255, 254 - (i >> x & 1)));
        const std::vector<double> blocks = blocksOf(pixelated(copy));
        sum.resize(blocks.size(), 0);
        for (size_t k = 0; k < blocks.size(); ++k)
            sum[k] += blocks[k] / copies;
    }
    return sum;
}

} // namespace

TEST(Pixelation, GuessingAndComparingUndoesPlainAveragesButNotThis)
{
    const QStringList secrets = codes();
    for (const int size : {12, 14, 16}) {
        SCOPED_TRACE(size);
        std::vector<std::vector<double>> plain;
        std::vector<std::vector<double>> ours;
        for (const QString &code : secrets) {
            plain.push_back(blocksOf(averaged(written(code, size))));
            ours.push_back(expectation(written(code, size), 24));
        }
        int plainHits = 0;
        int hits = 0;
        for (int i = 0; i < secrets.size(); ++i) {
            plainHits += guess(blocksOf(averaged(written(secrets[i], size))), plain) == i;
            // Published once, with noise that the attacker's copies don't share: another corner pixel.
            QImage published = written(secrets[i], size);
            published.setPixel(0, 0, qRgb(250, 250, 250));
            hits += guess(blocksOf(pixelated(published)), ours) == i;
        }
        EXPECT_EQ(plainHits, secrets.size()); // the attack itself works
        EXPECT_LE(hits, 5);                   // chance is one in twenty
    }
}

TEST(Pixelation, StillLooksLikeAMosaicOfWhatIsThere)
{
    // Left dark, right light, text in between: each third keeps its brightness, and the text's blocks vary.
    QImage image = written("Confidential words 1234 5678", 16);
    QPainter(&image).fillRect(0, 0, 20, 60, QColor(20, 20, 40));
    const QImage mosaic = pixelated(image);
    const double side = pixelationBlock(image.size());
    EXPECT_TRUE(hasColor(mosaic, {4, 56}, qRgb(20, 20, 40), 30));
    EXPECT_TRUE(hasColor(mosaic, {350, 4}, qRgb(255, 255, 255), 0));
    std::vector<double> values;
    for (double x = 60; x < 200; x += side) {
        const QRgb pixel = mosaic.pixel(static_cast<int>(x), 32);
        values.push_back(qGray(pixel));
        EXPECT_GT(qGray(pixel), 110);
    }
    EXPECT_GT(*std::ranges::max_element(values) - *std::ranges::min_element(values), 12);
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
