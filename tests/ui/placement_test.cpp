#include "ui/hud_panel.h"
#include "ui/tips.h"
#include "ui/toast.h"

#include <gmock/gmock.h>

namespace {
const QRectF visible(0, 0, 1920, 1040); // a 40-point bar at the bottom of the screen
}

TEST(HudPosition, StandsTwelveUnderTheRegionElseAboveElseInside)
{
    const struct {
        const char *what;
        QRectF region;
        QPointF expected;
        QRectF screen = visible;
    } cases[]{
        {"under it", {400, 200, 600, 300}, {600, 512}},
        {"above a region at the bottom", {400, 700, 600, 300}, {600, 638}},
        {"just the room that is needed", {400, 700, 600, 270}, {600, 982}},
        {"and one point less", {400, 700, 600, 271}, {600, 638}},
        {"no room on either side", {400, 30, 600, 1000}, {600, 8}},
        {"a region that fills the screen", {0, 0, 1920, 1080}, {860, 950}},
        {"its visible part", visible, {860, 950}},
        {"eight from the left", {0, 200, 20, 100}, {8, 312}},
        {"eight from the right", {1900, 200, 20, 100}, {1712, 312}},
        {"on a second screen", {1920, 400, 20, 100}, {1928, 512}, visible.translated(1920, 200)},
    };
    for (const auto &row : cases)
        EXPECT_EQ(hudPosition(row.region, row.screen, {200, 50}), row.expected) << row.what;
}

TEST(ToastPosition, StandsEightyAboveTheUsableBottom)
{
    EXPECT_EQ(toastPosition(visible, {300, 44}), QPointF(810, 916));
    EXPECT_EQ(toastPosition(visible.translated(1920, 0), {300, 44}), QPointF(2730, 916));
}

TEST(TipPosition, OpensUnderTheControlOrAboveItSixFromTheSides)
{
    const std::pair<QRectF, QPointF> cases[]{
        {{100, 100, 40, 30}, {60, 136}}, {{100, 1000, 40, 30}, {60, 954}},   {{100, 960, 40, 30}, {60, 996}},
        {{100, 961, 40, 30}, {60, 915}}, {{1900, 100, 20, 30}, {1794, 136}}, {{0, 100, 20, 30}, {6, 136}},
    };
    for (const auto &[control, expected] : cases)
        EXPECT_EQ(tipPosition(control, visible, {120, 40}), expected) << control.x() << ", " << control.y();
}
