#include "base/pending_work.h"

#include "base/log.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QPromise>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

constexpr std::chrono::hours kNever{1};

QPromise<int> startedPromise()
{
    QPromise<int> promise;
    promise.start();
    return promise;
}

} // namespace

TEST(PendingWork, IsIdleOnceAllOfItEndedInWhateverWay)
{
    PendingWork work;
    QSignalSpy idle(&work, &PendingWork::idle);
    QPromise<int> saving = startedPromise();
    {
        const QPromise<int> copying = startedPromise(); // dropped without a result
        work.keep(QStringLiteral("copying"), copying.future());
        work.keep(QStringLiteral("saving"), saving.future());
        EXPECT_EQ(work.underWay(), QStringList({QStringLiteral("copying"), QStringLiteral("saving")}));
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return work.underWay() == QStringList{QStringLiteral("saving")}; }));
    EXPECT_FALSE(work.isIdle());
    saving.addResult(1);
    saving.finish();
    EXPECT_TRUE(QTest::qWaitFor([&] { return idle.count() == 1; }));
    EXPECT_TRUE(work.isIdle());
}

TEST(PendingWork, LetsWhatFollowsFromOnePieceBeginTheNextBeforeItCallsItselfIdle)
{
    PendingWork work;
    QSignalSpy idle(&work, &PendingWork::idle);
    QPromise<int> saving = startedPromise();
    QPromise<int> again = startedPromise();
    work.keep(QStringLiteral("saving"), saving.future());
    QFutureWatcher<int> asker;
    QObject::connect(&asker, &QFutureWatcherBase::finished, &work,
                     [&] { work.keep(QStringLiteral("saving again"), again.future()); });
    asker.setFuture(saving.future());
    saving.finish();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return work.underWay() == QStringList{QStringLiteral("saving again")}; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(idle.count(), 0);
    again.finish();
    EXPECT_TRUE(QTest::qWaitFor([&] { return idle.count() == 1; }));
}

TEST(PendingWork, CallsBackOnceWhenIdleOrGivesUpWithALineInTheLog)
{
    const TemporaryFolder folder;
    Log::setDirectory(folder.path());
    PendingWork work;
    int calls = 0;
    work.whenIdle(kNever, [&] { ++calls; });
    EXPECT_EQ(calls, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return calls == 1; }));

    QPromise<int> saving = startedPromise();
    work.keep(QStringLiteral("saving a.png"), saving.future());
    work.whenIdle(kNever, [&] { ++calls; });
    saving.finish();
    ASSERT_TRUE(QTest::qWaitFor([&] { return calls == 2; }));

    QPromise<int> hanging = startedPromise();
    work.keep(QStringLiteral("uploading b.png"), hanging.future());
    work.whenIdle(std::chrono::milliseconds(1), [&] { ++calls; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return calls == 3; }));
    hanging.finish();
    ASSERT_TRUE(QTest::qWaitFor([&] { return work.isIdle(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 3);
    Log::flush();
    QFile log(folder.path(QStringLiteral("lumenpost.log")));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QByteArray lines = log.readAll();
    EXPECT_EQ(lines.count("Given up"), 1);
    EXPECT_TRUE(lines.contains("uploading b.png\n")) << lines.constData();
}
