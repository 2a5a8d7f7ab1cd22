// Regions of which only a part scrolls: what stands beside it, floats over it or moves by itself.
#include "capture/floating_parts.h"
#include "capture/frame_stitcher.h"
#include "capture/page_picture.h"

#include <QPainter>
#include <functional>
#include <gtest/gtest.h>

namespace {

constexpr QSize kWindow{600, 400};
constexpr int kScrollBar = 48;

// Lines of marks of random length with blank rows between.
QImage text(QSize size, quint32 seed, QColor ground = Qt::white)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(ground);
    QRandomGenerator random(seed);
    QPainter painter(&image);
    for (int line = 8; line + 9 < size.height(); line += 20) {
        for (int x = 12; x + 20 < size.width() - 20; x += 9 + int(random.bounded(6)))
            painter.fillRect(x, line + int(random.bounded(3)), int(random.bounded(2, 8)),
                             int(random.bounded(3, 9)), QColor::fromRgb(random.generate() & 0x7f7f7f));
    }
    return image;
}

struct Scene {
    QImage page;
    QRect pane; // where it scrolls in the window
    QImage ground{kWindow, QImage::Format_RGB32};
    std::function<void(QPainter &, int frame)> over = [](QPainter &, int) {};

    explicit Scene(const QRect &where, int rows = 1500) : page(text({where.width(), rows}, 1)), pane(where)
    {
        ground.fill(QColor(230, 230, 240));
    }
    QImage frame(int number, int offset) const
    {
        QImage image = ground;
        QPainter painter(&image);
        painter.drawImage(pane, page, QRect(QPoint(0, offset), pane.size()));
        over(painter, number);
        return image;
    }
};

struct Joined {
    FrameStitcher stitcher;
    int kept = 0;
    QImage picture;
};

Joined join(const Scene &scene, const QList<int> &offsets)
{
    Joined joined;
    for (int i = 0; i < offsets.size(); ++i)
        joined.kept += joined.stitcher.add(scene.frame(i, offsets[i]));
    joined.picture = joined.stitcher.result().value_or(QImage());
    return joined;
}

// Whether the column that scrolls is the page down to the last offset.
testing::AssertionResult isExact(const Joined &joined, const Scene &scene, int last, int columns = 0)
{
    const int rows = scene.pane.height() + last;
    const int width = columns > 0 ? columns : std::min(scene.pane.width(), kWindow.width() - kScrollBar);
    return sameRows(joined.picture.copy(scene.pane.x(), scene.pane.y(), width, rows),
                    scene.page.copy(0, 0, width, rows), 0, width);
}

} // namespace

TEST(MovingPart, DrawsSideBarsOnceAndTheirGroundBelow)
{
    for (const QRect pane : {QRect(180, 0, 420, 400), QRect(0, 0, 350, 400), QRect(63, 30, 420, 340)}) {
        Scene scene(pane);
        QPainter(&scene.ground).drawImage(0, 0, text({kWindow.width(), 300}, 2, QColor(230, 230, 240)));
        const QList<int> offsets{0, 50, 230, 410, 600};
        const Joined joined = join(scene, offsets);
        EXPECT_EQ(joined.kept, offsets.size()) << pane.x();
        EXPECT_TRUE(isExact(joined, scene, 600)) << pane.x();
        const int sideX = pane.x() > 0 ? 0 : pane.right() + 1;
        const int sideWidth = pane.x() > 0 ? pane.x() : 150;
        EXPECT_TRUE(sameRows(joined.picture.copy(sideX, 0, sideWidth, 330),
                             scene.ground.copy(sideX, 0, sideWidth, 330), 0, sideWidth));
        QImage below = scene.ground.copy(sideX, 340, sideWidth, 500);
        below.fill(QColor(230, 230, 240));
        EXPECT_TRUE(sameRows(joined.picture.copy(sideX, 400, sideWidth, 500), below, 0, sideWidth));
    }
}

TEST(MovingPart, DrawsWhatFloatsOnlyAtTheEnd)
{
    Scene scene({0, 0, 600, 400});
    scene.over = [](QPainter &painter, int) {
        painter.fillRect(470, 320, 70, 60, Qt::red);
        painter.drawImage(474, 324, text({60, 50}, 5, Qt::red));
    };
    const Joined joined = join(scene, {0, 120, 340, 560, 700});
    EXPECT_EQ(joined.kept, 5);
    EXPECT_TRUE(isExact(joined, scene, 700, 460));
    QList<int> red;
    for (int y = 0; y < joined.picture.height(); ++y) {
        if (joined.picture.pixel(471, y) == QColor(Qt::red).rgb())
            red.append(y);
    }
    EXPECT_EQ(red.size(), 60);
    EXPECT_EQ(red.value(0), 700 + 320);
}

TEST(MovingPart, BearsWhatMovesByItselfAndHeadingsThatStick)
{
    Scene scene({0, 0, 600, 400});
    scene.over = [](QPainter &painter, int frame) {
        painter.drawImage(0, 0, text({600, 40}, 40 + frame / 2, Qt::yellow)); // another every two frames
        painter.drawImage(300, 180, text({120, 60}, 70 + frame, Qt::cyan));
    };
    const QList<int> offsets{0, 120, 340, 560, 700};
    const Joined joined = join(scene, offsets);
    EXPECT_EQ(joined.kept, 5);
    QList<int> shifts;
    for (const FrameStitcher::Step &step : joined.stitcher.steps())
        shifts.append(step.shift);
    EXPECT_EQ(shifts, (QList<int>{120, 220, 220, 140}));
    const QImage left = joined.picture.copy(0, 40, 290, 1060);
    EXPECT_TRUE(sameRows(left, scene.page.copy(0, 40, 290, 1060), 0, 290)) << "a heading in the middle";
}

TEST(MovingPart, DrawsTheShadowOfABannerInTheMarginOnlyAtTheEnd)
{
    Scene scene({40, 0, 560, 400});
    scene.ground.fill(Qt::white);
    scene.over = [](QPainter &painter, int) {
        for (int i = 0; i < 20; ++i)
            painter.fillRect(0, 320 + i, 600, 1, QColor(0, 0, 0, 4 * i));
        painter.fillRect(0, 340, 600, 60, Qt::darkBlue);
    };
    const Joined joined = join(scene, {0, 120, 300, 480, 660});
    EXPECT_EQ(joined.kept, 5);
    QImage above(kWindow.width(), 660 + 320, QImage::Format_RGB32);
    above.fill(Qt::white);
    EXPECT_TRUE(
        sameRows(joined.picture.copy(0, 0, 40, above.height()), above.copy(0, 0, 40, above.height()), 0, 40));
    EXPECT_EQ(joined.picture.pixelColor(5, 660 + 350), QColor(Qt::darkBlue));
}

TEST(MovingPart, DrawsWhatFloatsInTheMiddleOnceAndTheRowsThatItHides)
{
    Scene scene({0, 0, 600, 400});
    scene.over = [](QPainter &painter, int) { painter.drawImage(380, 170, Page(30, 5).image()); };
    const QImage floating = scene.frame(0, 0).copy(380, 170, Page::kWidth, 30);
    const Joined joined = join(scene, {0, 120, 300, 480, 600});
    EXPECT_EQ(joined.kept, 5);
    QImage expected = scene.page.copy(0, 0, 600, 1000);
    QPainter(&expected).drawImage(380, 600 + 170, floating); // in the first frame it hides what others show
    EXPECT_TRUE(sameRows(joined.picture, expected, 0, kWindow.width() - kScrollBar));

    const Joined fewer = join(scene, {0, 190, 380});
    EXPECT_TRUE(FloatingParts::hideRows(scene.frame(0, 0), scene.frame(1, 220), {.shift = 220}));
    EXPECT_FALSE(FloatingParts::hideRows(scene.frame(0, 0), scene.frame(1, 190), {.shift = 190}));
    expected = scene.page.copy(0, 0, 600, 780);
    QPainter(&expected).drawImage(380, 170, floating); // where nothing else shows its rows
    EXPECT_TRUE(sameRows(fewer.picture, expected, 0, kWindow.width() - kScrollBar));
}

TEST(MovingPart, FollowsTheContentBeforeAPictureThatMovesMoreSlowly)
{
    const QImage behind = text({180, 900}, 4, Qt::cyan);
    const QList<int> offsets{0, 120, 300};
    Scene scene({180, 0, 420, 400});
    scene.over = [&](QPainter &painter, int frame) { painter.drawImage(0, -offsets[frame] / 2, behind); };
    const Joined joined = join(scene, offsets);
    EXPECT_EQ(joined.kept, 3);
    EXPECT_TRUE(isExact(joined, scene, 300));
}

TEST(MovingPart, TakesRowsAsTheyHadSettled)
{
    // The lower third of every frame but the last is still pale.
    Scene scene({0, 0, 600, 400});
    scene.over = [](QPainter &painter, int frame) {
        if (frame < 4)
            painter.fillRect(0, 290, 600, 110, QColor(255, 255, 255, 128));
    };
    const Joined joined = join(scene, {0, 120, 300, 480, 660});
    EXPECT_EQ(joined.kept, 5);
    EXPECT_TRUE(isExact(joined, scene, 660));
}

TEST(MovingPart, RefusesWhatDidNotScroll)
{
    Scene scene({180, 0, 420, 400});
    QPainter(&scene.ground).drawImage(0, 0, text({kWindow.width(), 300}, 2));
    FrameStitcher stitcher;
    EXPECT_TRUE(stitcher.add(scene.frame(0, 300)));
    EXPECT_FALSE(stitcher.add(scene.frame(0, 180))) << "scrolled back";
    EXPECT_FALSE(stitcher.add(scene.frame(0, 900))) << "nothing in common";
    // A small thing that climbs by itself, over a page that stands.
    scene.over = [](QPainter &painter, int frame) {
        painter.drawImage(300, 200 - 20 * frame, text({50, 60}, 9, Qt::cyan));
    };
    const QImage risen = scene.frame(1, 300);
    EXPECT_FALSE(stitcher.add(risen));
    EXPECT_TRUE(stitcher.look(*ComparedPicture::of(risen)).isStill);
    const QImage lost = scene.frame(0, 900);
    EXPECT_FALSE(stitcher.look(*ComparedPicture::of(lost)).isStill);
}

TEST(MovingPart, DecidesAmongRowsThatAreAlikeByTheDistanceOfAClick)
{
    const Page page = Page(900).repeat(0, 900, 24);
    FrameStitcher stitcher;
    stitcher.add(page.frame(0, 300));
    EXPECT_TRUE(stitcher.add(page.frame(170, 300), 171)); // 2, 26, 50… fit as well
    EXPECT_EQ(stitcher.steps().last().shift, 170);
    EXPECT_TRUE(stitcher.add(page.frame(280, 300))); // without a distance the smallest of 14, 38…
    EXPECT_EQ(stitcher.steps().last().shift, 14);
    for (const FrameStitcher::Step &step : stitcher.steps())
        EXPECT_FALSE(step.sure);
}

TEST(MovingPart, TakesWhatLooksUnmovedAtTheDistanceOfItsLinesAlong)
{
    // A list of which only the left half has words; its lines are 36 rows apart, and so are the steps.
    Scene scene({120, 0, 480, 400});
    QImage list({480, 1500}, QImage::Format_RGB32);
    list.fill(Qt::white);
    QPainter painter(&list);
    painter.drawImage(0, 0, text({200, 1500}, 1));
    for (int y = 35; y < 1500; y += 36)
        painter.fillRect(0, y, 480, 1, Qt::lightGray);
    painter.end();
    scene.page = list;
    const Joined joined = join(scene, {0, 72, 252, 432, 500});
    EXPECT_EQ(joined.kept, 5);
    EXPECT_TRUE(isExact(joined, scene, 500));
}

TEST(MovingPart, FollowsRowsThatAreAllAlikeByTheDistanceOfAClickWhileTheScrollBarMoves)
{
    const Page page = Page(2400).repeat(300, 2000, 24);
    const auto frameAt = [&](int offset, int thumb) {
        QImage frame = page.frame(offset, 400);
        QPainter painter(&frame);
        painter.fillRect(60, 0, 40, 400, Qt::white);
        painter.fillRect(70, thumb / 6, 20, 60, Qt::gray);
        return frame;
    };
    FrameStitcher stitcher;
    for (int offset = 0; offset <= 1920; offset += 240) {
        EXPECT_TRUE(stitcher.add(frameAt(offset, offset), 240)) << offset;
        EXPECT_FALSE(stitcher.add(frameAt(offset, offset), 240)) << "nothing tells that it moved";
    }
    const QImage picture = stitcher.result().value_or(QImage());
    EXPECT_TRUE(sameRows(picture, page.rows(0, 1920 + 400), 0, 50));
}

TEST(MovingPart, TakesAHighlightThatJumpsAmongIconsForNoStep)
{
    Scene scene({0, 0, 600, 400});
    QPainter painter(&scene.page);
    const QImage icon = text({400, 50}, 8, Qt::cyan);
    for (int y = 0; y < 1500; y += 90)
        painter.drawImage(60, y, icon);
    painter.end();
    int highlit = 0;
    scene.over = [&](QPainter &over, int) {
        over.fillRect(60, highlit, 400, 50, QColor(255, 255, 255, 100));
    };
    FrameStitcher stitcher;
    EXPECT_TRUE(stitcher.add(scene.frame(0, 0)));
    EXPECT_TRUE(stitcher.add(scene.frame(1, 180)));
    highlit = 90;
    EXPECT_FALSE(stitcher.add(scene.frame(2, 180), 180));
    EXPECT_TRUE(stitcher.look(*ComparedPicture::of(scene.frame(2, 180)), 180).isStill);
}
