#include "document/effects.h"

#include "document/soft_shadow.h"
#include "pixels.h"
#include "support/pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <gtest/gtest.h>

namespace {

QImage emptyMask(int width, int height)
{
    QImage mask(width, height, QImage::Format_Alpha8);
    mask.fill(0);
    return mask;
}

} // namespace

TEST(Effects, WithoutAnyThePictureItselfIsTheResult)
{
    const QImage image = filled({60, 40}, QColor(200, 30, 40), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(Effects().applied(image).cacheKey(), image.cacheKey());
    EXPECT_TRUE(Effects().applied(QImage()).isNull());
}

TEST(Effects, RoundedAloneKeepsTheSizeAndOpensTheCorners)
{
    const QImage result = Effects{.rounded = true}.applied(
        filled({120, 90}, QColor(200, 30, 40), QImage::Format_ARGB32_Premultiplied));
    EXPECT_EQ(result.size(), QSize(120, 90));
    for (const QPoint corner : {QPoint(0, 0), QPoint(119, 0), QPoint(0, 89), QPoint(119, 89)})
        EXPECT_EQ(qAlpha(result.pixel(corner)), 0);
    EXPECT_TRUE(hasColor(result, {60, 0}, qRgb(200, 30, 40), 0));
    // The corner's circle of 24: its diagonal leaves 24 (1 − 1/√2) = 7.03 pixels out.
    EXPECT_LT(qAlpha(result.pixel(6, 6)), 60);
    EXPECT_EQ(qAlpha(result.pixel(8, 8)), 255);
}

TEST(Effects, ABackdropAlwaysRoundsAndCastsAShadowAndItsStyleIsClamped)
{
    const QImage below = Effects{.backdrop = true, .backdropStyle = -1}.applied(
        filled({500, 300}, QColor(200, 30, 40), QImage::Format_ARGB32_Premultiplied));
    ASSERT_EQ(below.size(), QSize(580, 380));
    EXPECT_TRUE(hasColor(below, {0, 0}, QColor::fromRgbF(.34f, .40f, .98f).rgb(), 3));
    EXPECT_TRUE(hasColor(below, {41, 41}, below.pixel(40, 39), 8)); // ground, not picture, in the corner
    EXPECT_LT(qBlue(below.pixel(290, 350)), qBlue(below.pixel(290, 5)) - 20);
    EXPECT_EQ(Effects{.backdrop = true}.applied(filled({300, 500})).size(), QSize(380, 580))
        << "by the longer side";
    EXPECT_EQ(Effects::backdropGradient(9).name, "Graphite");
    EXPECT_EQ(Effects::backdropGradient(2).name, "Ocean");
}

TEST(Effects, ASmallFrameAndATranslucentBorderAreDrawnToo)
{
    Effects effects{.border = true, .borderColor = QColor(0, 0, 255, 128), .shadow = true};
    const QImage result =
        effects.applied(filled({20, 10}, QColor(200, 30, 40), QImage::Format_ARGB32_Premultiplied));
    ASSERT_EQ(result.size(), QSize(156, 146));
    EXPECT_TRUE(hasColor(result, {78, 73}, qRgb(200, 30, 40)));
    EXPECT_GT(qBlue(result.pixel(64, 73)), 150);
    EXPECT_GT(qAlpha(result.pixel(78, 95)), 20); // shadow
}

TEST(SoftShadow, BlursLikeAGaussianAtEverySize)
{
    for (const double sigma : {0.8, 2.0, 3.9, 5.0, 12.0, 20.0}) {
        // A straight edge blurred by a Gaussian is its integral.
        QImage mask = emptyMask(200, 180);
        for (int y = 0; y < 180; ++y)
            std::fill(mask.scanLine(y) + 100, mask.scanLine(y) + 200, uchar(255));
        blurMask(mask, sigma);
        for (int x = 40; x < 140; ++x) {
            const double expected = 255 * 0.5 * (1 + std::erf((x + 0.5 - 100) / sigma / std::sqrt(2)));
            EXPECT_NEAR(mask.constScanLine(90)[x], expected, 6) << "sigma " << sigma << " at " << x;
        }
    }
}

TEST(SoftShadow, TilesAndClipsDoNotShow)
{
    const SoftShadow shadow{4, Qt::black, {3, 5}};
    QPainterPath path;
    path.addEllipse(QRectF(30.5, 40.25, 400, 300));
    path.addEllipse(QRectF(100, 100, 150, 100));
    const auto draw = [&](QImage &image, const QRect &clip) {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(clip);
        shadow.paint(painter, path.boundingRect(), [&](QPainter &mask) { mask.fillPath(path, Qt::white); });
    };
    QImage tiled(500, 400, QImage::Format_ARGB32_Premultiplied);
    tiled.fill(Qt::transparent);
    draw(tiled, tiled.rect());
    QImage mask = emptyMask(500, 400);
    QPainter masking(&mask);
    masking.setRenderHint(QPainter::Antialiasing);
    masking.translate(3, 5);
    masking.fillPath(path, Qt::white);
    masking.end();
    blurMask(mask, 2);
    QImage pieces = tiled;
    pieces.fill(Qt::transparent);
    for (int x = 0; x < 500; x += 37)
        draw(pieces, {x, 0, 37, 400});
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 500; ++x) {
            ASSERT_NEAR(qAlpha(tiled.pixel(x, y)), mask.constScanLine(y)[x], 2) << x << ", " << y;
            ASSERT_NEAR(qAlpha(pieces.pixel(x, y)), mask.constScanLine(y)[x], 2) << x << ", " << y;
        }
    }
}

TEST(SoftShadow, AStretchedFrameIsTheShadowOfTheWholeFrame)
{
    const SoftShadow shadow{20, Qt::black, {0, 6}};
    const QRectF frame(60, 50, 300, 200);
    QImage stretched(420, 320, QImage::Format_ARGB32_Premultiplied);
    stretched.fill(Qt::transparent);
    QImage whole = stretched;
    QPainter a(&stretched);
    a.setRenderHint(QPainter::Antialiasing);
    shadow.paintFrame(a, frame, 24, SoftShadow::Inside::Painted);
    a.end();
    QPainterPath path;
    path.addRoundedRect(frame, 24, 24);
    QPainter b(&whole);
    b.setRenderHint(QPainter::Antialiasing);
    shadow.paint(b, frame, [&](QPainter &mask) { mask.fillPath(path, Qt::white); });
    b.end();
    for (int y = 0; y < 320; ++y) {
        for (int x = 0; x < 420; ++x)
            ASSERT_NEAR(qAlpha(stretched.pixel(x, y)), qAlpha(whole.pixel(x, y)), 3) << x << ", " << y;
    }
}
