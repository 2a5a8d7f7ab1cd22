#include "platform/wayland/sway_window.h"
#include "platform/wayland/wayland_pasteboard.h"

#include <gtest/gtest.h>

namespace {

// What another program reads.
QByteArray pasted(const QString &type)
{
    QProcess paste;
    paste.start("wl-paste", {"--no-newline", "--type", type});
    eventually([&] { return paste.state() == QProcess::NotRunning; });
    return paste.readAllStandardOutput();
}

TEST(SwayClipboard, IsReadByOthersThoughNoWindowIsOpen)
{
    const auto board = WaylandPasteboard::open();
    ASSERT_TRUE(board);
    QByteArray big(3'000'000, 'x'); // more than a pipe holds
    for (qsizetype i = 0; i < big.size(); i += 4096)
        big[i] = char(i / 4096);
    board->setFlavors({{"image/png", big}, {"text/plain", "small"}});
    EXPECT_TRUE(pasted("image/png") == big);
    EXPECT_EQ(pasted("text/plain"), "small");
    QProcess lazy; // asks, and doesn't read to the end
    lazy.start("sh", {"-c", "wl-paste --type image/png | head -c 10"});
    ASSERT_TRUE(eventually([&] { return lazy.state() == QProcess::NotRunning; }));
    EXPECT_TRUE(pasted("image/png") == big);
}

TEST(SwayClipboard, ReadsWhatOthersCopyAndLosesItsTurnToThem)
{
    const auto board = WaylandPasteboard::open();
    board->setText("ours");
    EXPECT_EQ(board->lostAtQuit().size(), 3);
    const auto turn = board->takeTurn();
    QProcess copy;
    copy.start("wl-copy", {"--foreground", "theirs"});
    ASSERT_TRUE(eventually([&] { return board->text() == "theirs"; }));
    EXPECT_TRUE(board->lostAtQuit().isEmpty());
    EXPECT_FALSE(board->placeText("late", turn));
    EXPECT_TRUE(board->placeText("new", board->takeTurn()));
    EXPECT_EQ(pasted("text/plain;charset=utf-8"), "new");
    EXPECT_TRUE(eventually([&] { return copy.state() == QProcess::NotRunning; })) << "it was replaced";
}

} // namespace
