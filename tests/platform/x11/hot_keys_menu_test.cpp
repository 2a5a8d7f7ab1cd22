#include "platform/x11/other_window.h"
#include "platform/x11/x11_hot_keys.h"

#include <QRasterWindow>
#include <gtest/gtest.h>

namespace {

constexpr int kControlShift = 0x1200;
constexpr int kF = 3;
constexpr int kNine = 25;
constexpr int kJ = 38;

class HotKeysAndMenus : public testing::Test {
protected:
    HotKeysAndMenus()
    {
        QObject::connect(&m_hotKeys, &HotKeys::pressed, &m_hotKeys,
                         [this](quint32 id) { m_pressed.append(id); });
        EXPECT_TRUE(m_hotKeys.registerKey(1, kF, kControlShift));
        EXPECT_TRUE(m_hotKeys.registerKey(2, kNine, kControlShift));
        EXPECT_TRUE(m_hotKeys.registerKey(3, kJ, kControlShift));
    }
    // Two of the combinations, others that share a key with them, a long press, and the third.
    void typeAll()
    {
        for (const char *keys : {"super+shift+f", "super+f", "super+shift+ctrl+f", "super+shift+9"})
            run("xdotool", {"key", keys});
        run("xdotool", {"keydown", "super", "keydown", "shift", "keydown", "f", "sleep", "0.9", "keyup", "f",
                        "keyup", "shift", "keyup", "super"});
        run("xdotool", {"key", "super+shift+j"});
    }
    void expectEachFiredOnce()
    {
        const QList<quint32> expected{1, 2, 1, 3};
        EXPECT_TRUE(eventually([&] { return m_pressed.contains(3); }));
        EXPECT_EQ(m_pressed, expected);
        m_pressed.clear();
    }

    X11HotKeys m_hotKeys;
    QList<quint32> m_pressed;
};

} // namespace

TEST_F(HotKeysAndMenus, FireOnceWhetherAMenuOfAnotherProgramIsOpenOrNot)
{
    typeAll();
    expectEachFiredOnce();

    QProcess editor;
    editor.start("mousepad", {"--disable-server"});
    ASSERT_TRUE(eventually([] {
        return run("xdotool", {"search", "--onlyvisible", "--class", "mousepad", "windowactivate", "--sync"});
    }));
    const auto menus = [] {
        QProcess search;
        search.start("xdotool", {"search", "--onlyvisible", "--name", "Mousepad"});
        search.waitForFinished();
        return search.readAllStandardOutput().trimmed().split('\n').size() - 1; // one is its window
    };
    run("xdotool", {"key", "alt+f"});
    ASSERT_TRUE(eventually([&] { return menus() > 0; }));
    typeAll();
    EXPECT_GT(menus(), 0) << "the menu is still open";
    expectEachFiredOnce();
    editor.kill();
    editor.waitForFinished();
}

TEST_F(HotKeysAndMenus, FireWithAMenuOfOurOwn)
{
    QRasterWindow menu;
    menu.setFlags(Qt::Popup);
    menu.setGeometry(200, 200, 100, 100);
    menu.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
    for (const bool holdsTheKeyboard : {false, true}) { // where it doesn't, each press is told in both ways
        ASSERT_TRUE(menu.setKeyboardGrabEnabled(holdsTheKeyboard));
        typeAll();
        expectEachFiredOnce();
    }
}

// As older toolkits have them, which tell nothing of themselves.
TEST_F(HotKeysAndMenus, FireWithAnUnnamedMenuOfTheActiveProgramButNotUnderAScreenLock)
{
    {
        const OtherWindow program(1, {100, 100, 300, 200}, {"menu"});
        ASSERT_NE(program.id(), 0u);
        program.activate();
        typeAll();
        expectEachFiredOnce();
        const OtherWindow lock(2, {0, 0, 1920, 1080}, {"lock"});
        ASSERT_NE(lock.id(), 0u);
        typeAll();
    }
    typeAll();
    expectEachFiredOnce();
}

TEST_F(HotKeysAndMenus, AreSilentWhileAProgramHoldsTheKeyboardForItself)
{
    {
        const OtherWindow holder(1, {100, 100, 300, 200}, {"holder"});
        ASSERT_NE(holder.id(), 0u);
        holder.activate();
        typeAll();
    }
    typeAll();
    expectEachFiredOnce();
}
