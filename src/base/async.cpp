#include "base/async.h"

#include <QCoreApplication>

QFuture<Result<void>> delayed(int milliseconds)
{
    auto promise = std::make_shared<QPromise<Result<void>>>();
    promise->start();
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, qApp, [promise] {
        promise->addResult(Result<void>{});
        promise->finish();
    });
    return promise->future();
}
