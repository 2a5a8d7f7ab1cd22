#include "app/single_instance.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QLocalSocket>
#include <QTest>
#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

class SingleInstanceTest : public testing::Test {
protected:
    static constexpr int kShort = 50; // milliseconds
    static constexpr int kLong = 20000;

    // What a start on a thread of its own gave; this thread's event loop runs meanwhile.
    Result<SingleInstance::Role> startElsewhere(const QStringList &words)
    {
        auto started = std::async(std::launch::async, [&] {
            SingleInstance second(path, kLong);
            return second.start(words);
        });
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return started.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, kLong));
        return started.get();
    }

    const TemporaryFolder folder;
    const QString path = folder.path("lumenpost.socket");
};

} // namespace

TEST_F(SingleInstanceTest, GivesOneOfManyThatStartAtTheSameMomentTheRole)
{
    constexpr int kStarts = 8;
    for (int round = 0; round < 25; ++round) {
        std::atomic_int ready = 0;
        std::atomic_int running = 0;
        std::vector<std::thread> starts;
        for (int i = 0; i < kStarts; ++i) {
            starts.emplace_back([&] {
                SingleInstance instance(path, kShort);
                ++ready;
                while (ready < kStarts) {
                }
                const auto role = instance.start({});
                running += role && *role == SingleInstance::Role::Running;
                // All are alive until the last has an answer.
                ++ready;
                while (ready < 2 * kStarts)
                    std::this_thread::yield();
            });
        }
        for (std::thread &start : starts)
            start.join();
        ASSERT_EQ(running, 1) << "round " << round;
    }
}

TEST_F(SingleInstanceTest, HandsWordsOverAndFollowsOneThatWasKilled)
{
    QFile left(path); // of a killed instance
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.close();
    {
        SingleInstance first(path, kLong);
        QStringList words;
        QObject::connect(&first, &SingleInstance::received, &first, [&](const QStringList &w) { words = w; });
        const auto role = first.start({});
        ASSERT_TRUE(role && *role == SingleInstance::Role::Running);
        const auto second = startElsewhere({"/tmp/a b.png", "ä"});
        EXPECT_TRUE(second && *second == SingleInstance::Role::HandedOver);
        EXPECT_EQ(words, (QStringList{"/tmp/a b.png", "ä"}));
    }
    const auto next = startElsewhere({});
    EXPECT_TRUE(next && *next == SingleInstance::Role::Running);
}

TEST_F(SingleInstanceTest, CutsAMessageOffThatNeverEnds)
{
    SingleInstance first(path, kLong);
    int received = 0;
    QObject::connect(&first, &SingleInstance::received, &first, [&] { ++received; });
    ASSERT_TRUE(first.start({}));
    QLocalSocket talker;
    talker.connectToServer(path);
    ASSERT_TRUE(talker.waitForConnected(kLong));
    const QByteArray piece(1 << 16, 'x');
    int pieces = 0;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            if (talker.bytesToWrite() == 0 && ++pieces < 64)
                talker.write(piece);
            return talker.state() == QLocalSocket::UnconnectedState;
        },
        kLong));
    EXPECT_EQ(received, 0);
    EXPECT_TRUE(startElsewhere({"a"}));
    EXPECT_EQ(received, 1);
}

TEST_F(SingleInstanceTest, TakesNothingFromALivingOneThatDoesNotAnswer)
{
    SingleInstance first(path, kLong);
    QStringList words;
    QObject::connect(&first, &SingleInstance::received, &first, [&](const QStringList &w) { words += w; });
    ASSERT_TRUE(first.start({}));
    {
        SingleInstance second(path, kShort); // on this thread: nobody answers meanwhile
        const auto refused = second.start({"early"});
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error().kind, Error::Kind::Unavailable);
    }
    const auto third = startElsewhere({"late"});
    EXPECT_TRUE(third && *third == SingleInstance::Role::HandedOver);
    EXPECT_TRUE(words.contains("late")) << "it still listens";
}
