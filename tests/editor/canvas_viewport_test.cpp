#include "editor/canvas_viewport.h"

#include <gmock/gmock.h>

namespace {

CanvasViewport viewport(QSizeF view, QSizeF image, double backing = 1)
{
    CanvasViewport result;
    result.view = view;
    result.image = image;
    result.backing = backing;
    return result;
}

MATCHER_P(IsNear, point, "")
{
    return std::abs(arg.x() - point.x()) < 1e-6 && std::abs(arg.y() - point.y()) < 1e-6;
}

} // namespace

TEST(CanvasViewport, FitsLargePicturesAndNeverEnlargesSmallOnes)
{
    EXPECT_DOUBLE_EQ(viewport({1056, 656}, {2000, 600}).fitScale(), 0.5);
    // 100 percent of device pixels.
    EXPECT_DOUBLE_EQ(viewport({1056, 656}, {100, 100}).fitScale(), 1);
    EXPECT_DOUBLE_EQ(viewport({1056, 656}, {100, 100}, 2).fitScale(), 0.5);
    EXPECT_DOUBLE_EQ(viewport({1056, 656}, {100, 100}, 2).displayZoom(), 1);
    EXPECT_DOUBLE_EQ(viewport({100, 100}, {100000, 100}).fitScale(), 0.02);
}

TEST(CanvasViewport, LeavesRoomForABackdrop)
{
    CanvasViewport view = viewport({1056, 1056}, {1999, 1000});
    view.backdrop = true;
    // 8 percent of the longer side, in whole pixels, on both sides.
    EXPECT_DOUBLE_EQ(view.fitScale(), 1000.0 / (1999 + 2 * 159));
}

TEST(CanvasViewport, ClampsTheZoom)
{
    CanvasViewport view = viewport({800, 600}, {1000, 1000}, 2);
    view.setZoom(100, {});
    EXPECT_EQ(view.zoom, 8);
    view.setZoom(0.001, {});
    EXPECT_EQ(view.zoom, 0.05);
    EXPECT_DOUBLE_EQ(view.scale(), 0.025);
}

TEST(CanvasViewport, KeepsThePointUnderTheAnchorWhileZooming)
{
    CanvasViewport view = viewport({800, 600}, {4000, 3000});
    view.setZoom(1, {400, 300});
    const QPointF anchor(300, 200);
    for (double zoom : {1.3, 2.0, 0.9}) {
        const QPointF before = view.toImage(anchor);
        view.setZoom(zoom, anchor);
        EXPECT_THAT(view.toImage(anchor), IsNear(before)) << zoom;
    }
    view.setZoom({}, {10, 10});
    EXPECT_EQ(view.pan, QPointF());
    EXPECT_THAT(view.toImage(QPointF(400, 300)), IsNear(QPointF(2000, 1500))) << "back in the middle";
}

TEST(CanvasViewport, LetsAPictureBePushedUntilAMarginShows)
{
    CanvasViewport view = viewport({800, 600}, {1000, 400});
    view.panBy({50, 50});
    EXPECT_EQ(view.pan, QPointF()) << "nothing moves while fitting";
    view.setZoom(1, {400, 300});
    view.panBy({5000, 5000});
    EXPECT_THAT(view.origin(), IsNear(QPointF(40, 100))) << "the height fits and stays centred";
    view.panBy({-5000, 0});
    EXPECT_THAT(view.origin(), IsNear(QPointF(800 - 1000 - 40, 100)));
}
