#include "app/quitting.h"

#include "base/pending_work.h"

#include <QApplication>
#include <QPromise>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

TEST(Quitting, ClosesWindowsFirstAndWaitsForWhatThatStarts)
{
    PendingWork pending;
    Quitting quitting(*qApp, pending);
    QPromise<void> saving;
    saving.start();
    class Window : public QWidget {
    public:
        std::function<void()> onClose;
        void closeEvent(QCloseEvent *) override { onClose(); }
    } window;
    window.onClose = [&] { pending.keep("saving a draft", saving.future()); };
    window.show();
    bool wasOpenAtFirst = false;
    quitting.firstWork = [&] { wasOpenAtFirst = window.isVisible(); };
    QPromise<void> sending;
    sending.start();
    quitting.lastWork = [&] {
        pending.keep("sending", sending.future());
        QTimer::singleShot(0, qApp, [&] { sending.finish(); });
    };
    bool waited = false;
    QTimer::singleShot(0, qApp, [&] {
        QCoreApplication::quit();
        QCoreApplication::quit(); // impatient
        QTimer::singleShot(0, qApp, [&] {
            waited = pending.underWay() == QStringList{"saving a draft"};
            saving.finish();
        });
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(wasOpenAtFirst);
    EXPECT_TRUE(waited);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(pending.isIdle());
}
