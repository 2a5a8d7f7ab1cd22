#include "ui/hud_panel.h"
#include "ui/tips.h"
#include "ui/toast.h"

#include <gmock/gmock.h>

namespace {
const QRectF visible(0, 0, 1920, 1040); // a 40-point bar at the bottom of the screen
}

TEST(HudPosition, StandsTwelveUnderTheRegion)
{
    EXPECT_EQ(hudPosition({400, 200, 600, 300}, visible, {200, 50}), QPointF(600, 512));
}

TEST(HudPosition, MovesAboveARegionAtTheBottom)
{
    EXPECT_EQ(hudPosition({400, 700, 600, 300}, visible, {200, 50}), QPointF(600, 638));
    // Just the room that is needed under the region, and one point less.
    EXPECT_EQ(hudPosition({400, 700, 600, 270}, visible, {200, 50}).y(), 982);
    EXPECT_EQ(hudPosition({400, 700, 600, 271}, visible, {200, 50}).y(), 638);
}

TEST(HudPosition, StaysInsideTheTopWhenNeitherSideHasRoom)
{
    EXPECT_EQ(hudPosition({400, 30, 600, 1000}, visible, {200, 50}).y(), 8);
}

TEST(HudPosition, LiesInsideARegionThatFillsTheScreen)
{
    EXPECT_EQ(hudPosition({0, 0, 1920, 1080}, visible, {200, 50}), QPointF(860, 950));
    EXPECT_EQ(hudPosition(visible, visible, {200, 50}), QPointF(860, 950));
}

TEST(HudPosition, KeepsEightFromTheSides)
{
    EXPECT_EQ(hudPosition({0, 200, 20, 100}, visible, {200, 50}).x(), 8);
    EXPECT_EQ(hudPosition({1900, 200, 20, 100}, visible, {200, 50}).x(), 1712);
    const QRectF second = visible.translated(1920, 200);
    EXPECT_EQ(hudPosition({1920, 400, 20, 100}, second, {200, 50}), QPointF(1928, 512));
}

TEST(ToastPosition, StandsEightyAboveTheUsableBottom)
{
    EXPECT_EQ(toastPosition(visible, {300, 44}), QPointF(810, 916));
    EXPECT_EQ(toastPosition(visible.translated(1920, 0), {300, 44}), QPointF(2730, 916));
}

TEST(TipPosition, OpensUnderTheControlOrAboveItAtTheBottom)
{
    EXPECT_EQ(tipPosition({100, 100, 40, 30}, visible, {120, 40}), QPointF(60, 136));
    EXPECT_EQ(tipPosition({100, 1000, 40, 30}, visible, {120, 40}), QPointF(60, 954));
    EXPECT_EQ(tipPosition({100, 960, 40, 30}, visible, {120, 40}).y(), 996);
    EXPECT_EQ(tipPosition({100, 961, 40, 30}, visible, {120, 40}).y(), 915);
}

TEST(TipPosition, KeepsSixFromTheSides)
{
    EXPECT_EQ(tipPosition({1900, 100, 20, 30}, visible, {120, 40}).x(), 1794);
    EXPECT_EQ(tipPosition({0, 100, 20, 30}, visible, {120, 40}).x(), 6);
}
