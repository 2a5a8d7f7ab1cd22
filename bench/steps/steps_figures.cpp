// Figures of guides from clicks, on a desktop of its own:
//   bench_steps presses          tells each press of the left button, its caption and how long its picture
//                                took
//   bench_steps guide            previews and exports of a long guide; STEPS=150
//   bench_steps review           its review window: the first card, all previews, a dragged marker, memory;
//                                STEPS=150 WIDTH=1920
#include "steps_figures.h"

#include "base/async.h"
#include "document/image_files.h"
#include "document/renderer.h"
#include "platform/accessible_elements.h"
#include "platform/platform.h"
#include "platform/press_pictures.h"
#include "platform/screens.h"
#include "platform/session/make_platform.h"
#include "steps/guide_export.h"
#include "steps/guide_previews.h"
#include "steps/step_captions.h"
#include "steps/steps_export.h"

#include <QApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPainter>
#include <QTemporaryDir>
#include <cstdio>
#include <sys/resource.h>

void print(const QString &line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

// A page of text, different for each step.
QImage page(int number, int width)
{
    const double scale = width / 1920.0;
    QImage image(width, width * 9 / 16, QImage::Format_RGB32);
    image.fill(QColor(246, 246, 250));
    QPainter painter(&image);
    painter.scale(scale, scale);
    painter.fillRect(0, 0, 260, 1080, QColor(230, 232, 240));
    for (int line = 0; line < 48; ++line) {
        painter.drawText(300, 40 + line * 21,
                         QStringLiteral("Line %1 of page %2: the quick brown fox jumps over the lazy dog, "
                                        "again and again, until the end of the line is reached")
                             .arg(line)
                             .arg(number));
        painter.drawText(20, 40 + line * 21, QStringLiteral("Entry %1").arg(line * number));
    }
    return image;
}

int wanted(const char *name, int usual)
{
    const int value = qEnvironmentVariableIntValue(name);
    return value > 0 ? value : usual;
}

std::optional<Guide> longGuide(const QString &folder)
{
    Guide guide;
    guide.title = QStringLiteral("Bench");
    guide.redact = true;
    for (int i = 0; i < wanted("STEPS", 150); ++i) {
        GuideStep step;
        step.id = QUuid::createUuid();
        step.image = StepPicture(page(i, wanted("WIDTH", 1920)));
        if (const auto kept = step.image.moveTo(folder + QStringLiteral("/%1.png").arg(i)); !kept)
            return std::nullopt;
        step.click = QPointF(600 + i, 400);
        step.redactions = {QRectF(0.2, 0.5, 0.2, 0.02)};
        step.caption = QStringLiteral("Click “Entry %1”").arg(i);
        guide.steps.append(step);
    }
    return guide;
}

qint64 mostMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

namespace {

QString applicationUnder(const Press &press)
{
    for (const ListedWindow &window : press.windows) {
        if (window.layer == 0 && holds(window.frame, press.point))
            return window.owner;
    }
    return QStringLiteral("?");
}

int tellPresses(QGuiApplication &application)
{
    Platform platform = makePlatform();
    platform.elements->prepare();
    QObject::connect(platform.presses.get(), &PressPictures::pressed, qApp, [&](const Press &press) {
        auto timer = std::make_shared<QElapsedTimer>();
        timer->start();
        whenDone(platform.elements->elementAt(press.target), qApp,
                 [press, timer](const std::optional<AccessibleElement> &found) {
                     const auto element = found ? std::optional(found->element) : std::nullopt;
                     const QString role = element ? element->role.value_or("-") : QStringLiteral("none");
                     print(QString("%1\t%2\t%3\t%4 us\t%5 ms\t%6x%7")
                               .arg(StepCaptions::caption(element, applicationUnder(press)), role,
                                    press.target.isPopup ? "popup" : "window")
                               .arg(press.delay.count())
                               .arg(timer->elapsed())
                               .arg(press.image ? press.image->width() : 0)
                               .arg(press.image ? press.image->height() : 0));
                     if (qEnvironmentVariableIsSet("STEPS_TARGETS"))
                         qDebug() << press.target.at << press.target.pid << press.target.window
                                  << press.target.visible << press.target.title
                                  << (found ? found->frame : QRect());
                 });
    });
    if (const auto started = platform.presses->start(); !started) {
        print(started.error().message);
        return 1;
    }
    print(QStringLiteral("ready"));
    return application.exec();
}

int tellGuide()
{
    QTemporaryDir folder;
    const auto made = longGuide(folder.path());
    if (!made)
        return 1;
    const Guide &guide = *made;
    const int kSteps = int(guide.steps.size());
    QElapsedTimer timer;
    // On a machine that others use, too, the processor's time tells more than the clock.
    const auto processorTime = [] {
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        return used.ru_utime.tv_sec * 1000 + used.ru_utime.tv_usec / 1000 + used.ru_stime.tv_sec * 1000 +
               used.ru_stime.tv_usec / 1000;
    };
    const auto tell = [&timer](const char *what) {
        print(QStringLiteral("  one %1: %2 ms").arg(QLatin1String(what)).arg(timer.restart()));
    };
    timer.start();
    const QImage decoded = guide.steps[0].image.image();
    tell("decoding");
    const QImage pixelated = Renderer::pixelated(decoded);
    tell("pixelating");
    const QImage flat = Renderer::flattened(
        decoded, pixelated, StepsExport::autoAnnotations(guide.steps[0], 1, true, true).annotations);
    tell("painting");
    static_cast<void>(GuidePreviews::thumbnail(flat, GuidePreviews::kLongestEdge));
    tell("scaling");
    static_cast<void>(ImageFiles::write(flat, folder.filePath(QStringLiteral("one.png"))));
    tell("writing");
    timer.start();
    qint64 before = processorTime();
    GuidePreviews previews;
    qint64 first = -1;
    QEventLoop loop;
    QObject::connect(&previews, &GuidePreviews::changed, &loop, [&] {
        if (first < 0)
            first = timer.elapsed();
    });
    QObject::connect(&previews, &GuidePreviews::idle, &loop, &QEventLoop::quit);
    previews.refresh(guide);
    const qint64 held = timer.elapsed();
    loop.exec();
    print(QStringLiteral(
              "previews: asked for in %1 ms, first after %2 ms, all %3 after %4 ms (%5 ms of processor)")
              .arg(held)
              .arg(first)
              .arg(kSteps)
              .arg(timer.elapsed())
              .arg(processorTime() - before));
    GuideExport::Source source{guide.title, guide, QList<QString>(kSteps, QStringLiteral("Click"))};
    timer.start();
    before = processorTime();
    const auto written =
        GuideExport::webFolder(source, folder.filePath(QStringLiteral("out")), [](int, int) { return true; });
    print(QStringLiteral("web folder: %1 ms (%2 ms of processor)%3")
              .arg(timer.elapsed())
              .arg(processorTime() - before)
              .arg(written ? QString() : written.error().message));
    timer.start();
    const auto pdf =
        GuideExport::pdf(source, folder.filePath(QStringLiteral("out.pdf")), [](int, int) { return true; });
    print(QStringLiteral("pdf: %1 ms%2").arg(timer.elapsed()).arg(pdf ? QString() : pdf.error().message));
    print(QStringLiteral("most memory: %1 MB").arg(mostMemory()));
    return 0;
}

} // namespace

int main(int count, char **words)
{
    QApplication application(count, words);
    const QString what = count > 1 ? QString::fromLocal8Bit(words[1]) : QString();
    if (what == "presses")
        return tellPresses(application);
    if (what == "guide")
        return tellGuide();
    if (what == "review")
        return tellReview(application);
    print(QStringLiteral("bench_steps presses | guide | review"));
    return 2;
}
