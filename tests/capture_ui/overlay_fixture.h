#pragma once

#include "capture/ui/capture_overlay.h"
#include "capture/ui/overlay_view.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_screens.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <gtest/gtest.h>

// One display of 400 by 300 points at (1000, 50) with two windows on it, and a view over its picture.
class OverlayTest : public testing::Test {
protected:
    static constexpr QSize points{400, 300};

    void open(double scale, bool selectionOnly = false)
    {
        const QSize pixels = points * scale;
        QImage picture(pixels, QImage::Format_RGB32);
        for (int y = 0; y < pixels.height(); ++y) {
            for (int x = 0; x < pixels.width(); ++x)
                picture.setPixel(x, y, qRgb(x & 255, y & 255, (x >> 8) << 4 | y >> 8));
        }
        snapshot = {Screen{1, "L", QRect(QPoint(1000, 50), pixels), scale, true}, picture};
        const QList<WindowInfo> windows{
            {21, QRectF(1020, 70, 100, 80), "front"},
            {22, QRectF(1060, 90, 500, 200), "behind, and reaching out of the display"},
        };
        controller = std::make_unique<CaptureOverlayController>(
            CaptureOverlayController::Ports{pointer, workspace}, windows, selectionOnly, "Drag to select",
            QList<DisplaySnapshot>{snapshot},
            [this](const CaptureOverlayController::Outcome &r) { results.append(r); });
        view = std::make_unique<OverlayView>(snapshot, *controller, nullptr);
        view->resize(points);
        view->grab(); // lays it out
        results.clear();
    }

    void send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers modifiers = {})
    {
        QMouseEvent event(type, at.toPoint(), at, at.toPoint(), button, buttons,
                          modifiers); // as widgets get it
        QApplication::sendEvent(view.get(), &event);
    }
    void move(QPointF at) { send(QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton); }
    void press(QPointF at) { send(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton); }
    void dragTo(QPointF at, Qt::KeyboardModifiers modifiers = {})
    {
        send(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton, modifiers);
    }
    void release(QPointF at) { send(QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton); }
    void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {})
    {
        move(from);
        press(from);
        dragTo(to, modifiers);
        release(to);
    }
    void click(QPointF at)
    {
        move(at);
        press(at);
        release(at);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(view.get(), &event);
    }

    // The one result, of the kind expected.
    template <typename Kind>
    Kind result()
    {
        EXPECT_EQ(results.size(), 1);
        if (results.size() != 1 || !std::holds_alternative<Kind>(results.first())) {
            ADD_FAILURE() << "another kind of result";
            return {};
        }
        return std::get<Kind>(results.first());
    }
    QImage pixels(int x, int y, int width, int height) const
    {
        return snapshot.image.copy(x, y, width, height);
    }
    QImage painted() { return view->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    FakePointerControl pointer;
    FakeWorkspace workspace;
    DisplaySnapshot snapshot;
    std::unique_ptr<CaptureOverlayController> controller;
    std::unique_ptr<OverlayView> view;
    QList<CaptureOverlayController::Outcome> results;
};
