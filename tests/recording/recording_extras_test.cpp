#include "recording/recording_extras.h"

#include <gtest/gtest.h>

TEST(KeyBadge, ShowsShortcutsAndNeverWhatIsTyped)
{
    struct Case {
        KeyStroke stroke;
        const char *label; // null: nothing
    };
    const auto ctrl = Qt::ControlModifier, shift = Qt::ShiftModifier, alt = Qt::AltModifier,
               super = Qt::MetaModifier;
    const Case cases[] = {
        {{0, "a", {}, false}, nullptr},
        {{0, "A", shift, false}, nullptr},
        {{-1, "ß", {}, false}, nullptr},
        {{-1, "é", shift, true}, nullptr},
        {{0, "A", ctrl | shift, false}, "⇧⌘ A"},
        {{36, "", super | alt, false}, "⌃⌥ ↩"},
        {{36, "", {}, false}, "↩"},
        {{49, " ", {}, false}, "Space"},
        {{117, "", {}, false}, "⌦"},
        {{124, "", shift, true}, "⇧ →"},
        {{-1, "ö", ctrl, false}, "⌘ Ö"},
        {{-1, "", ctrl, false}, nullptr}, // the modifier by itself
    };
    for (const Case &each : cases)
        EXPECT_EQ(KeyBadge::label(each.stroke),
                  each.label ? std::optional(QString::fromUtf8(each.label)) : std::nullopt)
            << qPrintable(each.stroke.character) << each.stroke.keyCode;
}

TEST(KeyBadge, StandsOverTheLowerEdge)
{
    const QRectF region(100, 200, 800, 600);
    EXPECT_EQ(KeyBadge::frame({20, 30}, region), QRectF(460, 710, 80, 50)) << "80 points at least";
    EXPECT_EQ(KeyBadge::frame({164, 30}, region), QRectF(400, 710, 200, 50));
}

TEST(ClickRipple, SpreadsAndFadesOrOnlyFades)
{
    const ClickRipple ripple = *ClickRipple::of({PointerPress::Button::Left, {100, 100}, {}, false, {}});
    EXPECT_EQ(ripple.frame(), QRectF(68, 68, 64, 64));
    EXPECT_FALSE(ClickRipple::of({PointerPress::Button::Middle, {}, {}, false, {}}));
    EXPECT_DOUBLE_EQ(ClickRipple::lookAt(0, false).scale, 0.3);
    EXPECT_DOUBLE_EQ(ClickRipple::lookAt(0.275, false).opacity, 0.5);
    EXPECT_DOUBLE_EQ(ClickRipple::lookAt(9, false).scale, 1);
    EXPECT_DOUBLE_EQ(ClickRipple::lookAt(0, true).scale, 1);
    EXPECT_DOUBLE_EQ(ClickRipple::lookAt(0.275, true).opacity, 0.5);
}

TEST(Strokes, NeedADrag)
{
    Strokes strokes;
    strokes.press({1, 1});
    strokes.release();
    EXPECT_TRUE(strokes.isEmpty());
    strokes.press({1, 1});
    strokes.drag({2, 2});
    EXPECT_EQ(strokes.all().size(), 1) << "seen while it is drawn";
    strokes.release();
    strokes.drag({3, 3});
    EXPECT_EQ(strokes.all(), (QList<QList<QPointF>>{{{1, 1}, {2, 2}}}));
    strokes.clear();
    EXPECT_TRUE(strokes.isEmpty());
}

TEST(ElapsedText, KeepsMinutes)
{
    EXPECT_EQ(elapsedText(65.9), "1:05");
    EXPECT_EQ(elapsedText(3700), "61:40");
    EXPECT_EQ(elapsedText(0), "0:00");
}
