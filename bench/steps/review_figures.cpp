#include "steps_figures.h"

#include "base/notice.h"
#include "base/pending_work.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_platform.h"
#include "library/library.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "steps/steps_guide_model.h"
#include "steps/ui/step_list.h"
#include "steps/ui/step_picture_view.h"
#include "steps/ui/step_row.h"
#include "steps/ui/steps_review_window.h"
#include "ui/appearance.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTemporaryDir>
#include <ctime>

namespace {

// What this thread itself took of the processor, in milliseconds: on a machine that others use, too, it tells
// more than the clock.
double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

// Tells when the first card was painted.
class FirstPaint : public QObject {
public:
    QElapsedTimer timer;
    qint64 milliseconds = -1;
    double since = processorTime();
    double processor = 0;
    std::function<void()> painted;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (milliseconds < 0 && event->type() == QEvent::Paint && qobject_cast<StepRow *>(watched))
            QTimer::singleShot(0, this, [this] {
                if (milliseconds >= 0)
                    return;
                milliseconds = timer.elapsed();
                processor = processorTime() - since;
                painted();
            });
        return false;
    }
};

// The longest that a turn of the event loop computed, in milliseconds.
class LongestHold : public QObject {
public:
    void begin()
    {
        longest = 0;
        m_tick.setInterval(0);
        connect(&m_tick, &QTimer::timeout, this, [this] {
            const double now = processorTime();
            longest = std::max(longest, now - std::exchange(m_since, now));
        });
        m_since = processorTime();
        m_tick.start();
    }
    double longest = 0;

private:
    QTimer m_tick;
    double m_since = 0;
};

void send(QWidget &widget, QEvent::Type type, QPointF at)
{
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, widget.mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void tellDrag(StepsReviewWindow &window, StepsGuideModel &model)
{
    StepPictureView &picture = window.list().row(model.steps()[0].id)->picture();
    send(picture, QEvent::MouseButtonPress, {200, 200});
    double longest = 0;
    double total = 0;
    constexpr int kMoves = 240;
    for (int i = 0; i < kMoves; ++i) {
        const double start = processorTime();
        send(picture, QEvent::MouseMove, QPointF(200 + i, 150 + i));
        QApplication::processEvents();
        longest = std::max(longest, processorTime() - start);
        total += processorTime() - start;
    }
    send(picture, QEvent::MouseButtonRelease, {400, 300});
    print(QStringLiteral("a dragged marker: %1 ms a move, %2 ms at most")
              .arg(total / kMoves, 0, 'f', 2)
              .arg(longest, 0, 'f', 1));
}

} // namespace

int tellReview(QApplication &application)
{
    QTemporaryDir folder;
    const auto guide = longGuide(folder.path());
    if (!guide)
        return 1;
    const Appearance appearance(application);
    FakePlatform machine(folder.path());
    FakeClock clock;
    NoticeBoard notices;
    Defaults defaults{QString()};
    AppSettings prefs(defaults, machine.secrets, machine.loginItem, machine.paths, notices);
    Library library(prefs, machine.trash, clock);
    PendingWork pending;
    TextRecognizer recognizer(machine.text, machine.faces, {});
    ClaudeClient claude(machine.http, prefs);
    GuideExports exports({library, machine.workspace, notices, pending});
    const qint64 before = mostMemory();

    FirstPaint first;
    LongestHold hold;
    first.painted = [&] { hold.begin(); };
    application.installEventFilter(&first);
    first.timer.start();
    first.since = processorTime();
    StepsGuideModel model(*guide, nullptr, {recognizer, claude, prefs, notices, exports});
    StepsReviewWindow window(model);
    window.show();
    const qint64 shown = first.timer.elapsed();
    QEventLoop loop;
    QTimer watch;
    watch.setInterval(5);
    QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
        if (model.previews().isIdle() && !model.status() && first.milliseconds >= 0)
            loop.quit();
    });
    watch.start();
    loop.exec();
    print(QStringLiteral("%1 steps: shown in %2 ms, first card painted after %3 ms (%5 of the processor), "
                         "all previews after %4 ms")
              .arg(guide->steps.size())
              .arg(shown)
              .arg(first.milliseconds)
              .arg(first.timer.elapsed())
              .arg(first.processor, 0, 'f', 0));
    print(QStringLiteral("the event loop was held for %1 ms at most").arg(hold.longest, 0, 'f', 1));
    tellDrag(window, model);
    hold.longest = 0;
    for (int at = 0; at <= window.list().verticalScrollBar()->maximum(); at += 400) {
        window.list().verticalScrollBar()->setValue(at);
        QApplication::processEvents(QEventLoop::AllEvents, 16);
    }
    print(QStringLiteral("scrolled through: held for %1 ms at most").arg(hold.longest, 0, 'f', 1));
    print(QStringLiteral("most memory: %1 MB, of which %2 MB before").arg(mostMemory()).arg(before));
    return 0;
}
