// How fast the selection overlay comes and follows, on the real display it runs on (see run.sh).
//
//   bench_capture_overlay [--cold]   figures: pictures taken to overlay painted, and repaints of pointer
//   moves bench_capture_overlay --hold     shows the overlay until it is answered, and prints the answer
#include "base/async.h"
#include "capture/screen_capturer.h"
#include "capture/ui/capture_overlay.h"
#include "capture/ui/overlay_view.h"
#include "capture/ui/overlay_window.h"
#include "platform/platform.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/session/make_platform.h"
#include "platform/workspace.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <cstdio>
#include <ctime>

namespace {

template <typename T>
T awaited(const QFuture<Result<T>> &future)
{
    QEventLoop loop;
    T value;
    whenDone(future, &loop, [&](const Result<T> &result) {
        if (!result) {
            std::fprintf(stderr, "%s\n", qPrintable(result.error().message));
            std::exit(1);
        }
        value = *result;
        loop.quit();
    });
    loop.exec();
    return value;
}

// Calls back when the widget was painted and its pixels were handed to the display.
class PaintWatch : public QObject {
public:
    PaintWatch(QWidget *widget, std::function<void()> painted) : m_painted(std::move(painted))
    {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, this,
                               m_painted); // the flush follows the paint in the same turn of the loop
        return false;
    }

private:
    std::function<void()> m_painted;
};

double processorMilliseconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC * 1000;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

class Bench {
public:
    Bench() : m_capturer(*m_platform.screens, *m_platform.pictures) {}

    std::unique_ptr<CaptureOverlayController> open(CaptureOverlayController::Completion completion)
    {
        auto overlay = std::make_unique<CaptureOverlayController>(
            CaptureOverlayController::Ports{*m_platform.pointer, *m_platform.workspace},
            m_capturer.onScreenWindows(), false,
            "Drag to select  ·  Click a window  ·  Return for full screen  ·  Esc to cancel",
            awaited(m_capturer.captureAllDisplays(Pointer::Hidden)), std::move(completion));
        overlay->show();
        return overlay;
    }

    // As the program does in an idle moment after its start.
    void warmUp()
    {
        CaptureOverlayController::warmUp();
        awaited(m_capturer.captureAllDisplays(Pointer::Hidden));
    }

    // From the request to the pixels of the overlay having been handed to the display.
    struct Times {
        double waited = 0;
        double computed = 0; // processor time of this process, which a busy machine doesn't change
    };
    Times timeToPaint()
    {
        const double before = processorMilliseconds();
        QElapsedTimer timer;
        timer.start();
        const auto overlay = open([](const auto &) {});
        QEventLoop loop;
        Times times;
        PaintWatch watch(&overlay->windows().front()->overlayView(), [&] {
            if (times.waited == 0)
                times = {double(timer.nsecsElapsed()) / 1e6, processorMilliseconds() - before};
            loop.quit();
        });
        loop.exec();
        overlay->finish(CaptureOverlayController::Cancelled{});
        // As long as a person takes. Right after a window of ours has gone, pictures are composed from the
        // others' contents, which takes longer.
        settle(1200);
        return times;
    }

    void measureMoves(const char *name, const std::function<QPointF(int)> &path, bool pressed)
    {
        const auto overlay = open([](const auto &) {});
        settle(400);
        OverlayView &view = overlay->windows().front()->overlayView();
        if (pressed)
            send(view, QEvent::MouseButtonPress, path(0), Qt::LeftButton);
        QList<double> times;
        for (int i = 0; i < 200; ++i) {
            QElapsedTimer timer;
            QEventLoop loop;
            PaintWatch watch(&view, [&] { loop.quit(); });
            timer.start();
            send(view, QEvent::MouseMove, path(i + 1), pressed ? Qt::LeftButton : Qt::NoButton);
            QTimer::singleShot(1000, &loop, &QEventLoop::quit); // a move that changes nothing paints nothing
            loop.exec();
            times.append(double(timer.nsecsElapsed()) / 1e6);
        }
        overlay->finish(CaptureOverlayController::Cancelled{});
        settle(200);
        std::printf("%-22s median %6.2f ms   worst %6.2f ms\n", name, median(times),
                    *std::max_element(times.cbegin(), times.cend()));
    }

    QSize screen() const { return m_platform.screens->screens().first().native.size(); }
    double scale() const { return m_platform.screens->screens().first().scale; }

    static void settle(int milliseconds)
    {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    }

private:
    static void send(OverlayView &view, QEvent::Type type, QPointF at, Qt::MouseButton button)
    {
        QMouseEvent event(type, at, view.mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : button,
                          button, {});
        QApplication::sendEvent(&view, &event);
    }

    Platform m_platform = makePlatform();
    ScreenCapturer m_capturer;
};

enum class Start { Warm, Cold };

int measure(Start start)
{
    Bench bench;
    if (start == Start::Warm)
        bench.warmUp();
    std::printf("%dx%d at scale %g\n", bench.screen().width(), bench.screen().height(), bench.scale());
    QList<double> waited;
    QList<double> computed;
    for (int i = 0; i < 9; ++i) {
        const Bench::Times times = bench.timeToPaint();
        waited.append(times.waited);
        computed.append(times.computed);
    }
    std::printf("%-22s first %6.1f ms   median %6.1f ms   processor %6.1f ms\n", "request to painted",
                waited.first(), median(waited), median(computed));
    const QSizeF view = QSizeF(bench.screen()) / bench.scale();
    const QPointF middle(view.width() / 2, view.height() / 2);
    bench.measureMoves(
        "pointer, 3 px a move", [&](int i) { return middle + QPointF(3 * (i % 100), 2 * i); }, false);
    bench.measureMoves(
        "pointer, far moves",
        [&](int i) {
            return QPointF(std::fmod(i * 397.0, view.width()), std::fmod(i * 211.0, view.height()));
        },
        false);
    bench.measureMoves("drag, 5 px a move", [&](int i) { return QPointF(100 + 5 * i, 100 + 3 * i); }, true);
    return 0;
}

int hold(QApplication &application)
{
    Bench bench;
    const auto overlay = bench.open([&](const CaptureOverlayController::Outcome &result) {
        if (const auto *image = std::get_if<CaptureOverlayController::Image>(&result))
            std::printf("image %dx%d\n", image->image.width(), image->image.height());
        else if (const auto *window = std::get_if<CaptureOverlayController::Window>(&result))
            std::printf("window %u\n", window->id);
        else
            std::printf("cancelled\n");
        application.quit();
    });
    return application.exec();
}

} // namespace

int main(int argc, char **argv)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    QApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "--hold") == 0)
        return hold(application);
    return measure(argc > 1 && qstrcmp(argv[1], "--cold") == 0 ? Start::Cold : Start::Warm);
}
