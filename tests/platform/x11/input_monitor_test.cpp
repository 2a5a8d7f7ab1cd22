#include "platform/input_monitor.h"
#include "platform/x11/other_window.h"
#include "platform/x11/x11_input_monitor.h"

#include <QRasterWindow>
#include <QStringList>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

class InputMonitorOnX11 : public testing::Test {
protected:
    void listen(InputEvents events)
    {
        X11InputMonitors monitors;
        auto opened = monitors.listen(events, [this](InputMonitor &monitor) {
            QObject::connect(&monitor, &InputMonitor::pressed, &m_receiver,
                             [this](const PointerPress &press) { m_presses.append(press); });
            QObject::connect(&monitor, &InputMonitor::keyPressed, &m_receiver,
                             [this](const KeyStroke &stroke) {
                                 m_strokes.append(stroke);
                                 m_told.push_back(told(stroke));
                             });
        });
        ASSERT_TRUE(opened) << qPrintable(opened.error().message);
        m_monitor = std::move(*opened);
    }
    static std::string told(const KeyStroke &stroke)
    {
        QString text;
        for (const auto &[modifier, name] :
             {std::pair(Qt::ControlModifier, "C-"), std::pair(Qt::MetaModifier, "M-"),
              std::pair(Qt::AltModifier, "A-"), std::pair(Qt::ShiftModifier, "S-")})
            text += stroke.modifiers.testFlag(modifier) ? QString::fromLatin1(name) : QString();
        return (text + stroke.character + ':' + QString::number(stroke.keyCode)).toStdString();
    }
    bool heard(qsizetype strokes)
    {
        return eventually([&] { return m_strokes.size() >= strokes; });
    }

    QObject m_receiver;
    std::unique_ptr<InputMonitor> m_monitor;
    QList<PointerPress> m_presses;
    QList<KeyStroke> m_strokes;
    std::vector<std::string> m_told;
};

} // namespace

TEST_F(InputMonitorOnX11, TellsClicksOnOtherProgramsAndOnOwnWindowsApart)
{
    listen(InputEvent::Clicks);
    OtherWindow other(3, QRect(100, 100, 200, 200));
    QRasterWindow own;
    own.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    own.setGeometry(500, 100, 200, 200);
    own.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&own));
    run("xdotool", {"mousemove", "150", "160", "click", "1", "click", "4", "click", "3", "mousemove", "600",
                    "200", "click", "1", "key", "a"});
    ASSERT_TRUE(eventually([&] { return m_presses.size() >= 3; }));
    ASSERT_EQ(m_presses.size(), 3) << "the wheel is no click";
    EXPECT_EQ(m_presses[0].position, QPointF(150, 160));
    EXPECT_EQ(m_presses[0].button, PointerPress::Button::Left);
    EXPECT_FALSE(m_presses[0].isOwn);
    EXPECT_EQ(m_presses[1].button, PointerPress::Button::Right);
    EXPECT_EQ(m_presses[2].native, QPoint(600, 200));
    EXPECT_TRUE(m_presses[2].isOwn);
    EXPECT_TRUE(m_strokes.isEmpty()) << "keys weren't asked for";
}

TEST_F(InputMonitorOnX11, TellsKeysByTheLayoutInUse)
{
    run("setxkbmap", {"us"});
    listen(InputEvent::Keys);
    run("xdotool", {"key", "a", "key", "shift+a", "key", "ctrl+shift+c", "key", "super+alt+Return", "key",
                    "Delete", "key", "KP_Left"});
    ASSERT_TRUE(heard(11));
    EXPECT_THAT(m_told, testing::IsSupersetOf({"a:0", "S-A:0", "C-S-C:8", "M-A-:36", ":117", ":123"}));

    m_strokes.clear();
    m_told.clear();
    run("setxkbmap", {"fr"});
    run("xdotool",
        {"keydown", "37", "key", "24", "keyup", "37"}); // by their places: Ctrl and the key above A
    EXPECT_TRUE(eventually([&] { return std::ranges::find(m_told, "C-a:0") != m_told.end(); }))
        << testing::PrintToString(m_told);
    run("setxkbmap", {"us"});
}
