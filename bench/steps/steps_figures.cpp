// Figures of guides from clicks, on a desktop of its own:
//   bench_steps presses          tells each press of the left button, its caption and how long its picture
//   took
#include "base/async.h"
#include "platform/accessible_elements.h"
#include "platform/platform.h"
#include "platform/press_pictures.h"
#include "platform/screens.h"
#include "platform/session/make_platform.h"
#include "steps/step_captions.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <cstdio>

namespace {

QString applicationUnder(const Press &press)
{
    for (const ListedWindow &window : press.windows) {
        if (window.layer == 0 && holds(window.frame, press.point))
            return window.owner;
    }
    return QStringLiteral("?");
}

void print(const QString &line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
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

} // namespace

int main(int count, char **words)
{
    QGuiApplication application(count, words);
    const QString what = count > 1 ? QString::fromLocal8Bit(words[1]) : QString();
    if (what == "presses")
        return tellPresses(application);
    print(QStringLiteral("bench_steps presses"));
    return 2;
}
