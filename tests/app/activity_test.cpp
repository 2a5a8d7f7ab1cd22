#include "app/activity.h"

#include "base/log.h"
#include "fakes/fake_clock.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

using Capture = Activity::Capture;

class ActivityTest : public testing::Test {
protected:
    ActivityTest() { Log::setDirectory(folder.path()); }

    QByteArray log() const
    {
        Log::flush();
        QFile file(folder.path("lumenpost.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TemporaryFolder folder;
    FakeClock clock;
    Activity activity{clock};
};

} // namespace

TEST_F(ActivityTest, RefusesByTheStateThatTheProgramIsIn)
{
    const struct {
        Capture state;
        const char *reason; // of a refused capture; null when it is let in
        bool letsPresetsIn, letsStepsIn;
    } rows[]{
        {Capture::Idle, nullptr, true, true},
        {Capture::CountingDown, "another capture is in progress", false, false},
        {Capture::Shooting, "another capture is in progress", false, false},
        {Capture::Selecting, "another capture is in progress", false, false},
        {Capture::Scrolling, "another capture is in progress", false, false},
        {Capture::Recording, "recording in progress", false, false},
    };
    for (const auto &row : rows) {
        Activity table(clock);
        if (row.state != Capture::Idle) {
            const auto run = table.beginCapture(1);
            ASSERT_TRUE(run);
            ASSERT_TRUE(table.enter(*run, row.state));
        }
        EXPECT_EQ(table.acceptsPreset(), row.letsPresetsIn);
        QFile::remove(folder.path("lumenpost.log"));
        EXPECT_EQ(table.beginCapture(0).has_value(), row.reason == nullptr);
        EXPECT_EQ(log().contains("Capture ignored"), row.reason != nullptr);
        if (row.reason)
            EXPECT_TRUE(log().contains(row.reason)) << row.reason;

        Activity steps(clock);
        if (row.state != Capture::Idle)
            steps.enter(*steps.beginCapture(1), row.state);
        QFile::remove(folder.path("lumenpost.log"));
        EXPECT_EQ(steps.beginSteps(), row.letsStepsIn);
        EXPECT_TRUE(log().isEmpty()) << "a refused session says nothing";
    }
}

TEST_F(ActivityTest, LetsAPictureBeTakenWhileASessionOfStepsRuns)
{
    ASSERT_TRUE(activity.beginSteps());
    EXPECT_FALSE(activity.beginSteps());
    activity.setStepsRunning();
    EXPECT_TRUE(activity.acceptsPreset());
    const auto run = activity.beginCapture(0);
    ASSERT_TRUE(run);
    activity.end(*run);
    EXPECT_EQ(activity.steps(), Activity::Steps::Running);
    activity.endSteps();
    EXPECT_TRUE(activity.isIdle());
}

TEST_F(ActivityTest, ClearsOnlyWhatCanBeLostAndOnlyAfterThirtySeconds)
{
    const std::pair<Capture, bool> rows[]{{Capture::CountingDown, true},
                                          {Capture::Shooting, true},
                                          {Capture::Selecting, false},
                                          {Capture::Scrolling, true},
                                          {Capture::Recording, false}};
    for (const auto &[state, isCleared] : rows) {
        Activity table(clock);
        const auto run = table.beginCapture(1);
        table.enter(*run, state);
        clock.advance(30);
        table.clearStuckCapture();
        EXPECT_TRUE(table.isCurrent(*run));
        clock.advance(1);
        table.clearStuckCapture();
        EXPECT_EQ(table.isCurrent(*run), !isCleared) << int(state);
        // The lost one comes back while another runs: it can neither end nor move that one.
        if (isCleared) {
            const auto next = table.beginCapture(0);
            EXPECT_FALSE(table.enter(*run, Capture::Selecting));
            table.end(*run);
            EXPECT_TRUE(table.isCurrent(*next));
        }
    }
    EXPECT_TRUE(log().contains("[ERROR] Capture state was stuck for 31s — resetting"));
}
