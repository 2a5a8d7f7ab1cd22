#pragma once

#include "platform/wayland/sway_window.h"
#include "platform/wayland/wayland_hand.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "platform/wayland/wayland_windows.h"
#include "running_program.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

// The program in a session of sway, which is asked for things by commands as keys of the desktop are bound
// to.
class SwayJourney : public RunningProgram {
protected:
    static constexpr auto kQuiet = R"({"didShowWelcome": true, "openEditorAfterCapture": false,
                                       "shutterSound": false})";

    // As a key of the desktop does that is bound to it.
    void command(const QStringList &words)
    {
        QProcess process;
        process.setProcessEnvironment(environment());
        process.start(binary(), words);
        ASSERT_TRUE(process.waitForFinished(20000));
        ASSERT_EQ(process.exitCode(), 0);
    }
    // A window whose title matches; empty when there is none.
    static QJsonObject node(const QRegularExpression &title)
    {
        QList<QJsonObject> left{SwayIpc::ask(SwayIpc::Ask::Tree).value_or(QJsonDocument()).object()};
        while (!left.isEmpty()) {
            const QJsonObject each = left.takeFirst();
            if (title.match(each.value("name").toString()).hasMatch())
                return each;
            for (const QLatin1String kind : {QLatin1String("nodes"), QLatin1String("floating_nodes")}) {
                for (const QJsonValue &child : each.value(kind).toArray())
                    left.append(child.toObject());
            }
        }
        return {};
    }
    // How many windows of the program have that title and are in front on their screens.
    static int shown(const QString &title)
    {
        QList<QJsonObject> left{SwayIpc::ask(SwayIpc::Ask::Tree).value_or(QJsonDocument()).object()};
        int count = 0;
        while (!left.isEmpty()) {
            const QJsonObject node = left.takeFirst();
            count += node.value("visible").toBool() && node.value("name").toString().contains(title) ? 1 : 0;
            for (const QLatin1String kind : {QLatin1String("nodes"), QLatin1String("floating_nodes")}) {
                for (const QJsonValue &child : node.value(kind).toArray())
                    left.append(child.toObject());
            }
        }
        return count;
    }
    // What a person sees of the window; the compositor's tree is ahead of what it shows.
    enum class Look { Bright, Dimmed, Black };
    QImage seen(const SwayWindow &window)
    {
        for (const Screen &screen : screens.screens()) {
            if (!screen.frame().contains(window.frame()))
                continue;
            const QRectF at = QRectF(window.frame()).translated(-screen.frame().topLeft());
            return pictures.region(screen, at, Pointer::Hidden).result().value_or(QImage());
        }
        return {};
    }
    Look look(const SwayWindow &window)
    {
        const QImage picture = seen(window);
        if (picture == window.picture())
            return Look::Bright;
        const bool isBlack = picture.isNull() || picture.pixel(150, 150) == qRgb(0, 0, 0);
        return isBlack ? Look::Black : Look::Dimmed;
    }
    // Asks for a capture, and waits until the overlay is up.
    void openOverlay(const QString &word, const SwayWindow &first, const SwayWindow &second)
    {
        hand.move(QPointF(1000, 600));
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return look(first) == Look::Bright && look(second) == Look::Bright; }, 20000));
        command({"capture", word});
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return look(first) == Look::Dimmed && look(second) == Look::Dimmed; }, 20000));
    }
    // Points there, and waits until the overlay lights the window up: from then on it is told of buttons.
    void aim(const SwayWindow &window, QPointF at)
    {
        const QPoint apart(150, 150); // from the pointer
        const QRgb dimmed = seen(window).pixel(apart);
        hand.move(at);
        ASSERT_TRUE(QTest::qWaitFor([&] { return seen(window).pixel(apart) != dimmed; }, 20000));
    }

    WaylandHand hand{QSize(2560, 720)};
    WaylandScreens screens{nullptr};
    WaylandScreenPictures pictures{nullptr};
};
