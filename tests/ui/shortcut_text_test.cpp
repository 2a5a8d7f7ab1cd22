#include "ui/shortcut_text.h"

#include <gmock/gmock.h>

TEST(ShortcutText, SpellsModifiersInTheDesktopsOrder)
{
    EXPECT_EQ(shortcutText("⌘Z"), "Ctrl+Z");
    EXPECT_EQ(shortcutText("⇧⌘Z"), "Ctrl+Shift+Z");
    EXPECT_EQ(shortcutText("⌥↩"), "Alt+Return");
    EXPECT_EQ(shortcutText("⌫"), "Backspace");
    EXPECT_EQ(shortcutText("⌘−"), "Ctrl+-");
    EXPECT_EQ(shortcutText("⌘]"), "Ctrl+]");
    EXPECT_EQ(shortcutText("V"), "V");
    EXPECT_EQ(shortcutText(""), "");
    EXPECT_EQ(shortcutText("⌃⇧Space"), "Super+Shift+Space");
    EXPECT_EQ(shortcutText("⌃⌥⇧⌘F5"), "Super+Ctrl+Alt+Shift+F5");
}

TEST(ShortcutText, ReplacesSignsInsideSentencesOnly)
{
    EXPECT_EQ(withShortcutWords("Drag to choose the area to keep. ⌘Z undoes it."),
              "Drag to choose the area to keep. Ctrl+Z undoes it.");
    EXPECT_EQ(withShortcutWords("Drag to draw a line. Hold ⇧ to snap to 45°."),
              "Drag to draw a line. Hold Shift to snap to 45°.");
    EXPECT_EQ(withShortcutWords("Type your callout, then Return (⌥↩ for a new line)"),
              "Type your callout, then Return (Alt+Return for a new line)");
    EXPECT_EQ(withShortcutWords(
                  "Pinch or ⌘-scroll on the image. Hold Space and drag to move around. ⌘0 fits, ⌘1 is 100%."),
              "Pinch or Ctrl-scroll on the image. Hold Space and drag to move around. Ctrl+0 fits, Ctrl+1 is "
              "100%.");
    EXPECT_EQ(withShortcutWords("·  ⌘K for all commands"), "·  Ctrl+K for all commands");
    // A sign that is the thing itself.
    const QString stamp = "Drop a symbol, emoji or keyboard key, like ✓, ⚠️ or ⌘.";
    EXPECT_EQ(withShortcutWords(stamp), stamp);
}

TEST(ShortcutText, GivesSequencesThatQtCanBind)
{
    EXPECT_EQ(shortcutSequence("⇧⌘Z"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    EXPECT_EQ(shortcutSequence("⌘−"), QKeySequence(Qt::CTRL | Qt::Key_Minus));
    EXPECT_EQ(shortcutSequence("⌘+"), QKeySequence(Qt::CTRL | Qt::Key_Plus));
    EXPECT_EQ(shortcutSequence("⌃⇧C"), QKeySequence(Qt::META | Qt::SHIFT | Qt::Key_C));
    EXPECT_TRUE(shortcutSequence("").isEmpty());
}
