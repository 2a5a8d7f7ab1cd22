// The overlay on a real desktop of two displays, driven by synthetic input alone. The pictures that it gives
// must be what the display showed when it was asked.
#include "base/async.h"
#include "capture/screen_capturer.h"
#include "capture/ui/capture_overlay.h"
#include "platform/platform.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/session/make_platform.h"
#include "platform/workspace.h"
#include "support/xdotool.h"

#include <QEventLoop>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using Overlay = CaptureOverlayController;

class OverlayOnDesktop : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        // A window to click. What it shows may change: the overlay's picture is frozen.
        clock().start("xterm", {"-geometry", "60x20+200+150", "-e", "sh", "-c", "seq 1 19; exec sleep 1000"});
        Platform platform = makePlatform();
        ScreenCapturer capturer(*platform.screens, *platform.pictures);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !capturer.onScreenWindows().isEmpty(); }, 10000));
    }
    static void TearDownTestSuite()
    {
        clock().terminate();
        clock().waitForFinished(3000);
    }
    static QProcess &clock()
    {
        static QProcess process;
        return process;
    }

    void open(QPoint pointerAt)
    {
        xdotool({"mousemove", QString::number(pointerAt.x()), QString::number(pointerAt.y())});
        const auto shots = capturer.captureAllDisplays(Pointer::Hidden);
        ASSERT_TRUE(QTest::qWaitFor([&] { return shots.isFinished(); }, 5000));
        snapshots = shots.result().value();
        outcome.reset();
        overlay = std::make_unique<Overlay>(Overlay::Ports{*platform.pointer, *platform.workspace},
                                            capturer.onScreenWindows(), false, "Drag to select", snapshots,
                                            [this](const Overlay::Outcome &result) { outcome = result; });
        overlay->show();
        EXPECT_TRUE(QTest::qWaitFor([] { return qApp->activeWindow() != nullptr; }, 5000)) << "no keyboard";
    }
    void drag(QPoint from, QPoint to, const QString &modifier = {})
    {
        const auto move = [](QPoint at) {
            return QStringList{"mousemove", QString::number(at.x()), QString::number(at.y()), "sleep",
                               "0.05"};
        };
        QStringList script = move(from);
        if (!modifier.isEmpty())
            script += {"keydown", modifier};
        script +=
            QStringList{"mousedown", "1"} + move((from + to) / 2) + move(to) + QStringList{"mouseup", "1"};
        if (!modifier.isEmpty())
            script += {"keyup", modifier};
        xdotool(script);
    }
    template <typename Kind>
    Kind result()
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, 5000));
        if (!outcome || !std::holds_alternative<Kind>(*outcome)) {
            ADD_FAILURE() << "another kind of result";
            return {};
        }
        return std::get<Kind>(*outcome);
    }
    // Of the whole desktop's pixels.
    QImage shown(const QRect &native) const
    {
        for (const DisplaySnapshot &snapshot : snapshots) {
            if (snapshot.screen.native.contains(native))
                return snapshot.image.copy(native.translated(-snapshot.screen.native.topLeft()));
        }
        return {};
    }

    Platform platform = makePlatform();
    ScreenCapturer capturer{*platform.screens, *platform.pictures};
    QList<DisplaySnapshot> snapshots;
    std::unique_ptr<Overlay> overlay;
    std::optional<Overlay::Outcome> outcome;
};

} // namespace

TEST_F(OverlayOnDesktop, CropsWhatIsDraggedOnEachDisplay)
{
    for (const QPoint origin : {QPoint(0, 0), QPoint(960, 0)}) {
        open(origin + QPoint(500, 500));
        ASSERT_EQ(snapshots.size(), 2);
        drag(origin + QPoint(220, 180), origin + QPoint(521, 383));
        EXPECT_EQ(result<Overlay::Image>().image, shown(QRect(origin + QPoint(220, 180), QSize(301, 203))));
    }
    open({500, 500});
    drag({400, 400}, {350, 300}, "shift");
    EXPECT_EQ(result<Overlay::Image>().image, shown(QRect(300, 300, 100, 100)));
}

TEST_F(OverlayOnDesktop, PicksTheWindowOrTheDisplayUnderAClick)
{
    open({900, 900});
    xdotool({"mousemove", "300", "250", "sleep", "0.05", "click", "1"});
    EXPECT_EQ(result<Overlay::Window>().id, capturer.onScreenWindows().first().id);

    open({500, 500});
    xdotool({"mousemove", "1500", "900", "sleep", "0.05", "click", "1"});
    EXPECT_EQ(result<Overlay::Image>().image, shown(QRect(960, 0, 960, 1080)));
}

TEST_F(OverlayOnDesktop, ObeysTheKeyboardOfTheDisplayWithThePointer)
{
    open({1500, 500});
    xdotool({"key", "Return"});
    EXPECT_EQ(result<Overlay::Image>().image, shown(QRect(960, 0, 960, 1080)));
    open({500, 500});
    xdotool({"key", "KP_Enter"});
    EXPECT_EQ(result<Overlay::Image>().image, shown(QRect(0, 0, 960, 1080)));
    for (const QStringList &cancels : {QStringList{"key", "Escape"}, {"click", "3"}}) {
        open({500, 500});
        xdotool(cancels);
        result<Overlay::Cancelled>();
    }
}

TEST_F(OverlayOnDesktop, HoldsTheKeyboardWhateverOpensOverItAndGivesItBack)
{
    const auto told = [](const QStringList &words) {
        QProcess process;
        process.start("xdotool", words);
        process.waitForFinished();
        return process.readAllStandardOutput().trimmed();
    };
    const QString terminal = QString::number(capturer.onScreenWindows().first().id);
    xdotool({"windowactivate", "--sync", terminal});
    const QByteArray before = told({"getwindowfocus"});
    open({900, 900});
    QProcess thief;
    thief.start("xterm", {"-T", "thief", "-geometry", "40x8+600+600"});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return !told({"search", "--onlyvisible", "--name", "^thief$"}).isEmpty(); }, 10000));
    xdotool({"key", "Escape"});
    result<Overlay::Cancelled>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return told({"getwindowfocus"}) == before; }, 5000))
        << told({"getwindowfocus"}).toStdString() << " has the keyboard, not " << before.toStdString();
    thief.kill();
    thief.waitForFinished();
}

// As the user does, whose finger rests on the shortcut.
TEST_F(OverlayOnDesktop, GetsTheKeyboardOnceItsHolderLetsGo)
{
    QProcess other; // holds it as a menu would
    other.start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/platform_pattern_window"),
                {"1", "1700", "900", "60", "60", "frameless", "holder"});
    ASSERT_TRUE(other.waitForReadyRead(10000));
    open({500, 500});
    xdotool({"key", "space"});
    other.kill();
    other.waitForFinished();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            xdotool({"key", "Escape"});
            return outcome.has_value();
        },
        5000));
    result<Overlay::Cancelled>();
}

TEST_F(OverlayOnDesktop, SelectsByKeysAlone)
{
    open({240, 200});
    xdotool({"key", "--delay", "30", "space", "shift+Right", "shift+Right", "shift+Down", "Right", "Down",
             "space"});
    EXPECT_EQ(result<Overlay::Image>().image, shown(QRect(240, 200, 21, 11)));
}
