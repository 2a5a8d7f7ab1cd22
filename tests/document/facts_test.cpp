// What the pictures of sample projects must show, whatever engine draws them.

#include "document/editor_document.h"
#include "document/pixelation.h"
#include "document/project_file.h"
#include "document/renderer.h"
#include "pixels.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    QImage base;
    QImage picture; // exported
};

Case rendered(const char *name)
{
    const auto contents = ProjectFile::read(QString(LUMENPOST_TEST_DATA "/projects/") + name);
    if (!contents) {
        ADD_FAILURE() << contents.error().message.toStdString();
        return {};
    }
    const EditorDocument document(
        {contents->base, contents->project.objects(), contents->project.effects(), {}});
    return {contents->base, document.exported()};
}

constexpr double kHalf = 0.5; // of a pixel: how far an edge may lie from its place

} // namespace

TEST(RenderFacts, GradientBorderAndShadowOfAllEffects)
{
    const Case c = rendered("effects-all");
    const QImage &p = c.picture;
    ASSERT_EQ(p.size(), QSize(1178, 678));
    EXPECT_TRUE(hasColor(p, {0, 0}, qRgb(87, 102, 250), 5));
    EXPECT_TRUE(hasColor(p, {1177, 677}, qRgb(168, 82, 245), 5));
    EXPECT_TRUE(hasColor(p, {1177, 0}, qRgb(148, 87, 246), 5));
    EXPECT_TRUE(hasColor(p, {0, 677}, qRgb(107, 97, 249), 5));
    EXPECT_TRUE(hasColor(p, {589, 0}, qRgb(117, 94, 248), 5));
    EXPECT_TRUE(hasColor(p, {81, 339}, qRgb(51, 51, 51)));
    EXPECT_TRUE(hasColor(p, {88, 339}, qRgb(51, 51, 51)));
    EXPECT_TRUE(hasColor(p, {589, 589}, qRgb(51, 51, 51)));
    EXPECT_TRUE(hasColor(p, {589, 596}, qRgb(51, 51, 51)));
    EXPECT_TRUE(isUnchanged(p.copy(89, 89, 1000, 500), c.base, {20, 0, 960, 500}));
    EXPECT_TRUE(isUnchanged(p.copy(89, 89, 1000, 500), c.base, {0, 20, 1000, 460}));
    // Alpha of black over the gradient, from the brightest channel.
    const auto darkness = [&](int x, int y) {
        const double t = (x * 1178.0 + y * 678.0) / (1178.0 * 1178 + 678.0 * 678);
        return 1 - qBlue(p.pixel(x, y)) / (255 * (0.98 + t * (0.96 - 0.98)));
    };
    EXPECT_NEAR(darkness(589, 608), 0.225, 0.04);
    EXPECT_NEAR(darkness(589, 609), 0.225, 0.04);
    EXPECT_GT(darkness(589, 597), 0.24);
    EXPECT_NEAR(darkness(80, 339), 0.225, 0.04);
    EXPECT_NEAR(darkness(1097, 339), 0.225, 0.04);
    EXPECT_LT(darkness(589, 80), 0.2);
    for (const QPoint edge : {QPoint(589, 0), QPoint(589, 677), QPoint(0, 339), QPoint(1177, 339)})
        EXPECT_LT(darkness(edge.x(), edge.y()), 0.02);
}

TEST(RenderFacts, ShadowAloneAndABackdropStyleBeyondTheList)
{
    const Case c = rendered("effects-shadow");
    ASSERT_EQ(c.picture.size(), QSize(740, 530));
    EXPECT_TRUE(isUnchanged(c.picture.copy(60, 60, 620, 410), c.base, c.base.rect()));
    for (const QPoint corner : {QPoint(0, 0), QPoint(739, 0), QPoint(0, 529), QPoint(739, 529)})
        EXPECT_TRUE(hasColor(c.picture, corner, qRgba(0, 0, 0, 0)));
    for (const int y : {481, 482}) {
        const QRgb pixel = c.picture.pixel(370, y);
        EXPECT_NEAR(qAlpha(pixel) / 255.0, 0.225, 0.04);
        EXPECT_EQ(qRed(pixel) + qGreen(pixel) + qBlue(pixel), 0);
    }
    const QImage graphite = rendered("effects-clamp-high").picture;
    ASSERT_EQ(graphite.size(), QSize(742, 582));
    EXPECT_TRUE(hasColor(graphite, {0, 0}, qRgb(51, 51, 51)));
    EXPECT_TRUE(hasColor(graphite, {741, 581}, qRgb(107, 107, 107)));
}

TEST(RenderFacts, SpotlightsMakeOneLayerOfDimmingWhereOverlapsAreDarkAgain)
{
    const Case c = rendered("spotlight-overlap");
    const auto dimmed = [](QRgb p) {
        return qRgb(qRound(qRed(p) * 0.4), qRound(qGreen(p) * 0.4), qRound(qBlue(p) * 0.4));
    };
    const auto same = [](QRgb p) { return p; };
    EXPECT_TRUE(follows(c.picture, c.base, {416, 200, 88, 100}, dimmed)); // its corners lie in one of them
    EXPECT_TRUE(follows(c.picture, c.base, {400, 216, 120, 68}, dimmed));
    EXPECT_TRUE(follows(c.picture, c.base, {0, 0, c.base.width(), 90}, dimmed));
    EXPECT_TRUE(follows(c.picture, c.base, {0, 90, 200, 300}, dimmed));
    EXPECT_TRUE(follows(c.picture, c.base, {216, 90, 288, 110}, same));
    EXPECT_TRUE(follows(c.picture, c.base, {200, 106, 200, 178}, same));
    EXPECT_TRUE(follows(c.picture, c.base, {520, 216, 280, 188}, same));
}

TEST(RenderFacts, HighlightsMultiplyAndTouchNothingElse)
{
    const Case c = rendered("highlight");
    const auto times = [](double r, double g, double b) {
        return [=](QRgb p) { return qRgb(qRound(qRed(p) * r), qRound(qGreen(p) * g), qRound(qBlue(p) * b)); };
    };
    EXPECT_TRUE(follows(c.picture, c.base, {20, 150, 600, 30}, times(1, .91, .55)));
    EXPECT_TRUE(follows(c.picture, c.base, {40, 180, 560, 30}, times(.64, .91 * .955, .55 * .73)));
    EXPECT_TRUE(follows(c.picture, c.base, {40, 210, 560, 40}, times(.64, .955, .73)));
    EXPECT_TRUE(hasColor(c.picture, {25, 152}, qRgb(255, 232, 140)));
    EXPECT_EQ(c.picture.copy(0, 0, c.base.width(), 150),
              c.base.convertToFormat(c.picture.format()).copy(0, 0, c.base.width(), 150));
    EXPECT_TRUE(isUnchanged(c.picture, c.base, {0, 250, c.base.width(), c.base.height() - 250}, 0));
    EXPECT_TRUE(isUnchanged(c.picture, c.base, {0, 150, 20, 100}, 0));
}

TEST(RenderFacts, BlursShareOneGridOfBlocksAnchoredAtTheBottomLeft)
{
    const Case c = rendered("blur-two");
    const double block = 1000 / 90.0;
    const QRect first(190, 150, 450, 230);
    const QRect second(560, 230, 340, 210);
    const int height = c.base.height();
    for (const QRect &area : {first, second}) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                const int row = static_cast<int>(std::floor((height - y - 0.5) / block));
                const int column = static_cast<int>(std::floor((x + 0.5) / block));
                const auto inRow = [&](int yy) { return std::floor((height - yy - 0.5) / block) == row; };
                if (x > area.left() && std::floor((x - 0.5) / block) == column)
                    ASSERT_EQ(c.picture.pixel(x, y), c.picture.pixel(x - 1, y)) << x << ", " << y;
                if (y > area.top() && inRow(y - 1))
                    ASSERT_EQ(c.picture.pixel(x, y), c.picture.pixel(x, y - 1)) << x << ", " << y;
            }
        }
    }
    // White that goes on for a block around stays exact, under one blur and under both.
    int flat = 0;
    for (int y = 150; y < 440; ++y) {
        for (int x = 190; x < 900; ++x) {
            if (!first.contains(x, y) && !second.contains(x, y))
                continue;
            bool white = true;
            for (int dy = -24; white && dy <= 24; ++dy) {
                for (int dx = -24; white && dx <= 24; ++dx)
                    white = c.base.pixel(x + dx, y + dy) == qRgb(255, 255, 255);
            }
            if (white) {
                ASSERT_TRUE(hasColor(c.picture, {x, y}, qRgb(238, 238, 238)));
                flat += first.contains(x, y) && second.contains(x, y) ? 100 : 1;
            }
        }
    }
    EXPECT_GT(flat, 1000);
    EXPECT_TRUE(isUnchanged(c.picture, c.base, {0, 0, 1000, 150}, 0));
    EXPECT_TRUE(isUnchanged(c.picture, c.base, {0, 150, 190, 350}, 0));
}

TEST(RenderFacts, TheMagnifierShowsTwiceTheBaseAroundItsMiddle)
{
    const Case c = rendered("magnify");
    const QPointF m(220, 170);
    for (int y = 92; y < 248; ++y) {
        for (int x = 122; x < 318; ++x) {
            const double from = std::hypot((x + 0.5 - m.x()) / 100, (y + 0.5 - m.y()) / 80);
            if (from > 0.85) // the ring and its shadow
                continue;
            const QPointF source((x + 0.5 + m.x()) / 2, (y + 0.5 + m.y()) / 2);
            // Only where the base is flat around the source, so that no rule of interpolation matters.
            const QPoint s(static_cast<int>(source.x()), static_cast<int>(source.y()));
            bool flat = true;
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dx = -1; dx <= 1; ++dx)
                    flat &= c.base.pixel(s) == c.base.pixel(s + QPoint(dx, dy));
            }
            if (flat)
                ASSERT_TRUE(hasColor(c.picture, {x, y}, c.base.pixel(s)));
        }
    }
    EXPECT_TRUE(hasColor(c.picture, {120, 170}, qRgb(255, 0, 0)));
    EXPECT_TRUE(hasColor(c.picture, {118, 170}, qRgb(255, 0, 0)));
    EXPECT_TRUE(hasColor(c.picture, {220, 91}, qRgb(255, 0, 0)));
    const QRect touched = QRect(120, 90, 200, 160).adjusted(-22, -22, 22, 22);
    EXPECT_TRUE(isUnchanged(c.picture, c.base, {0, 0, c.base.width(), touched.top()}, 0));
    EXPECT_TRUE(isUnchanged(c.picture, c.base, {touched.right() + 1, 0, 100, 300}, 0));
}

TEST(RenderFacts, TaperedArrowsHaveTheirWidths)
{
    const QImage p = rendered("arrow-tapered").picture;
    EXPECT_NEAR(coveredAlong(p, shareOfRed, 100, 60, 400), 380 - 78, 3 * kHalf); // a row misses the very tip
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 80, 60, 140), 4, kHalf);
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 339, 60, 140), 10, kHalf);
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 340, 60, 140), 40, 2);
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 360, 60, 140), 19.5, 1);
    EXPECT_NEAR(shareOfRed(p.pixel(77, 100)), 0, 0.02);
    EXPECT_NEAR(shareOfRed(p.pixel(380, 100)), 0, 0.02);
}

TEST(RenderFacts, BoxesHaveTheirStrokesCornersAndTints)
{
    const Case c = rendered("boxes");
    const QImage &p = c.picture;
    EXPECT_NEAR(coveredAlong(p, shareOfRed, 130, 40, 100), 12, kHalf);
    EXPECT_NEAR(shareOfRed(p.pixel(54, 130)), 1, 0.02);
    EXPECT_NEAR(shareOfRed(p.pixel(65, 130)), 1, 0.02);
    EXPECT_NEAR(shareOfRed(p.pixel(53, 130)), 0, 0.02);
    EXPECT_NEAR(shareOfRed(p.pixel(66, 130)), 0, 0.02);
    // The diagonal of an outer corner of 18 begins 18 (1 − 1/√2) = 5.3 pixels inside.
    EXPECT_NEAR(shareOfRed(p.pixel(54 + 4, 74 + 4)), 0, 0.1);
    EXPECT_NEAR(shareOfRed(p.pixel(54 + 6, 74 + 6)), 1, 0.1);
    EXPECT_TRUE(isUnchanged(p, c.base, {90, 110, 100, 40}));
    EXPECT_NEAR(shareOfBlue(p.pixel(340, 140)), 0.25, 0.01);
    EXPECT_NEAR(coveredAlong(p, shareOfBlue, 140, 250, 263), 6, kHalf);
    EXPECT_NEAR(coveredAlong(p, shareOfRed, 140, 440, 620), 140, kHalf);
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 530, 70, 210), 100, kHalf);
    EXPECT_NEAR(shareOfRed(p.pixel(460, 140)), 1, 0.02);
    for (const QPoint beside : {QPoint(459, 140), QPoint(600, 140), QPoint(530, 89), QPoint(530, 190)}) {
        const double darkening = 1 - qRed(p.pixel(beside)) / 255.0;
        EXPECT_GE(darkening, 0.06);
        EXPECT_LE(darkening, 0.24);
    }
}

TEST(RenderFacts, LinesEndRoundAndDashesKeepTheirPeriod)
{
    const QImage p = rendered("lines").picture;
    EXPECT_NEAR(coveredAlong(p, shareOfRed, 100, 40, 440), 406 - 74, 2 * kHalf);
    EXPECT_NEAR(shareOfRed(p.pixel(200, 94)), 1, 0.02);
    EXPECT_NEAR(shareOfRed(p.pixel(200, 93)), 0, 0.02);
    for (int k = 0; k < 10; ++k) {
        EXPECT_NEAR(coveredAlong(p, shareOfRed, 160, 68 + 36 * k, 108 + 36 * k), 28, 2 * kHalf) << k;
        EXPECT_NEAR(shareOfRed(p.pixel(108 + 36 * k, 160)), 0, 0.02) << k;
    }
    EXPECT_NEAR(coveredAlong(p, shareOfRed, 160, 430, 480), 464 - 436, 2 * kHalf);
}

TEST(RenderFacts, ACalloutIsOneOutlineWithoutASeam)
{
    const QImage p = rendered("callout-outline").picture;
    for (int y = 100; y < 182; ++y) {
        for (int x = 100; x < 262; ++x)
            ASSERT_TRUE(hasColor(p, {x, y}, qRgb(255, 255, 255))) << x << ", " << y;
    }
    EXPECT_NEAR(coveredAlong(p, shareOfBlue, 140, 60, 100), 4.8, kHalf);
    EXPECT_NEAR(coveredAcross(p, shareOfBlue, 150, 70, 110), 4.8, kHalf);
    EXPECT_NEAR(shareOfBlue(p.pixel(399, 329)), 1, 0.1);
    // Across the tail near its root: the ground, the outline, white, the outline.
    const QRgb inTail = p.pixel(255, 205);
    EXPECT_TRUE(isNear(inTail, qRgb(255, 255, 255), 2)) << told(inTail);
}

TEST(RenderFacts, StepsHaveTheirDiametersAndANumberInTheMiddle)
{
    const QImage p = rendered("steps").picture;
    EXPECT_NEAR(coveredAlong(p, shareOfRed, 108, 60, 140), 2 * std::sqrt(14.0 * 14 - 11.5 * 11.5), 2 * kHalf);
    EXPECT_NEAR(coveredAlong(p, shareOfRed, 206, 260, 400), 2 * std::sqrt(49.0 * 49 - 46.5 * 46.5),
                2 * kHalf);
    EXPECT_NEAR(shareOfBlue(p.pixel(200 - 27, 120)), 1, 0.05);
    EXPECT_NEAR(shareOfBlue(p.pixel(200 - 29, 120)), 0, 0.05);
    // The number's white, balanced around the middle of the largest disc.
    QPointF sum;
    int count = 0;
    for (int y = 120; y < 200; ++y) {
        for (int x = 290; x < 370; ++x) {
            if (qGreen(p.pixel(x, y)) > 128 && std::hypot(x - 330, y - 160) < 40) {
                sum += QPointF(x + 0.5, y + 0.5);
                ++count;
            }
        }
    }
    ASSERT_GT(count, 100);
    EXPECT_NEAR(sum.x() / count, 330, 4);
    EXPECT_NEAR(sum.y() / count, 160, 5);
}

TEST(RenderFacts, AMeasurementHasFlatEndsTicksAPillAndNoShadow)
{
    const Case c = rendered("measure");
    const QImage &p = c.picture;
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 150, 100, 140), 4, kHalf);
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 100, 90, 150), 32, kHalf);
    EXPECT_NEAR(coveredAcross(p, shareOfRed, 399, 90, 150), 32, kHalf);
    EXPECT_NEAR(shareOfRed(p.pixel(97, 120)), 0, 0.02);
    EXPECT_NEAR(shareOfRed(p.pixel(402, 120)), 0, 0.02);
    EXPECT_TRUE(isUnchanged(p, c.base, {110, 123, 60, 40}, 0));
    int left = 250;
    while (std::abs(shareOfRed(p.pixel(left, 104)) - 0.92) < 0.02)
        --left;
    int right = 250;
    while (std::abs(shareOfRed(p.pixel(right, 104)) - 0.92) < 0.02)
        ++right;
    EXPECT_NEAR(left + right, 499, 2);
    EXPECT_GT(right - left, 40);
}

TEST(RenderFacts, OddProjectsLoadWhatTheyCan)
{
    const Case c = rendered("read-odd");
    EXPECT_TRUE(isUnchanged(c.picture, c.base, {195, 75, 110, 90}, 0));
    EXPECT_TRUE(hasColor(c.picture, {110, 120}, SystemColors::red().rgb()));
    EXPECT_NEAR(coveredAcross(c.picture, shareOfBlue, 341, 90, 150), 4.8, 1); // tapered: thin at its tail
    EXPECT_NEAR(shareOfBlue(c.picture.pixel(110, 270)), 1, 0.02);
}
