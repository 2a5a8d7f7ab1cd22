#include "base/async.h"

#include <QCoreApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class Owner : public QObject {
public:
    Task<> waitFor(QFuture<Result<int>> future, QList<QString> *seen)
    {
        const Result<int> result = co_await guarded(std::move(future), this);
        if (!result) {
            seen->append(result.error().isCancelled() ? "cancelled" : result.error().message);
            co_return;
        }
        seen->append(QString::number(*result));
    }
};

} // namespace

TEST(Async, GivesTheResultToALivingOwner)
{
    QList<QString> seen;
    Owner owner;
    QPromise<Result<int>> promise;
    promise.start();
    owner.waitFor(promise.future(), &seen);
    EXPECT_TRUE(seen.isEmpty());
    promise.addResult(7);
    promise.finish();
    QTRY_COMPARE_WITH_TIMEOUT(seen, QList<QString>{"7"}, 2000);
    EXPECT_EQ(seen, QList<QString>{"7"});
}

TEST(Async, CancelsAnAwaitWhoseOwnerDied)
{
    QList<QString> seen;
    QPromise<Result<int>> promise;
    promise.start();
    {
        Owner owner;
        owner.waitFor(promise.future(), &seen);
    }
    EXPECT_EQ(seen, QList<QString>{"cancelled"});
    promise.addResult(7);
    promise.finish();
    QCoreApplication::processEvents();
    EXPECT_EQ(seen.size(), 1);
}

TEST(Async, NeverCallsBackADeadOwner)
{
    bool called = false;
    QPromise<Result<int>> promise;
    promise.start();
    {
        QObject owner;
        whenDone(promise.future(), &owner, [&called](const Result<int> &) { called = true; });
    }
    promise.addResult(1);
    promise.finish();
    QCoreApplication::processEvents();
    EXPECT_FALSE(called);
}
