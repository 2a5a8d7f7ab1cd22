#pragma once

#include "base/async.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"

#include <QHash>
#include <QPainter>
#include <cmath>
#include <vector>

// Screens and windows as a test lays them out.
class FakeScreens : public Screens {
public:
    QList<Screen> screens() const override { return connected; }
    QList<ListedWindow> windows() const override { return listed; }

    QList<Screen> connected;
    QList<ListedWindow> listed; // front to back
};

// Pictures cut from one picture of the whole desktop. Records what was asked; answers at once, with a
// failure, or only when told.
class FakeScreenPictures : public ScreenPictures {
public:
    struct Request {
        QRect native; // of the desktop; empty for a window
        quint32 window = 0;
        Pointer pointer = Pointer::Hidden;
        WindowPart part = WindowPart::Framed;
    };

    Capabilities capabilities() const override { return able; }
    QFuture<Result<QImage>> display(const Screen &screen, Pointer pointer) override
    {
        if (gone.contains(screen.id))
            return answer(fail(Error::Kind::NotFound, QStringLiteral("Gone.")));
        return cut({screen.native, 0, pointer});
    }
    QFuture<Result<QImage>> region(const Screen &screen, const QRectF &region, Pointer pointer) override
    {
        const QRectF scaled(region.topLeft() * screen.scale, region.size() * screen.scale);
        const double extent = std::abs(scaled.x()) + std::abs(scaled.y()) + scaled.width() + scaled.height();
        if (!(extent < 1e6)) // numbers that aren't, too
            return readyFuture<Result<QImage>>(fail(Error::Kind::Invalid, QStringLiteral("No such region.")));
        const QPoint at = screen.native.topLeft() + (region.topLeft() * screen.scale).toPoint();
        const QSize size(int(region.width() * screen.scale + 1e-6),
                         int(region.height() * screen.scale + 1e-6));
        if (size.isEmpty() || !QRect(at, size).intersects(desktop.rect()))
            return readyFuture<Result<QImage>>(fail(Error::Kind::Invalid, QStringLiteral("No such region.")));
        return cut({QRect(at, size), 0, pointer});
    }
    QFuture<Result<QImage>> window(quint32 id, Pointer pointer, WindowPart part = WindowPart::Framed) override
    {
        requests.append({{}, id, pointer, part});
        if (!windows.contains(id) && !failure)
            return answer(fail(Error::Kind::NotFound, QStringLiteral("Gone.")));
        return answer(windows.value(id));
    }

    // Answers what waits, oldest first.
    void deliver()
    {
        for (auto &[promise, result] : std::exchange(m_waiting, {})) {
            promise.addResult(result);
            promise.finish();
        }
    }

    Capabilities able{true, true, true, {}};
    QImage desktop;                 // in native pixels
    QHash<quint32, QImage> windows; // by id
    QList<quint32> gone;            // screens that were unplugged
    std::optional<Error> failure;   // of every picture
    bool isHeld = false;            // answers wait for deliver()
    QList<Request> requests;

private:
    QFuture<Result<QImage>> cut(const Request &request)
    {
        requests.append(request);
        QImage picture(request.native.size(), QImage::Format_RGB32);
        picture.fill(Qt::black);
        QPainter(&picture).drawImage(-request.native.topLeft(), desktop);
        return answer(picture);
    }
    QFuture<Result<QImage>> answer(Result<QImage> result)
    {
        if (failure)
            result = std::unexpected(*failure);
        if (!isHeld)
            return readyFuture(result);
        QPromise<Result<QImage>> promise;
        promise.start();
        const auto future = promise.future();
        m_waiting.emplace_back(std::move(promise), result);
        return future;
    }

    std::vector<std::pair<QPromise<Result<QImage>>, Result<QImage>>> m_waiting;
};

class FakePointerControl : public PointerControl {
public:
    QPointF position() const override { return at; }
    void warp(QPointF point) override { at = point; }
    bool canScroll() const override { return mayScroll; }
    QFuture<Result<void>> wheel(int count) override
    {
        if (!mayScroll)
            return readyFuture<Result<void>>(fail(Error::Kind::Unavailable, QStringLiteral("No wheel.")));
        clicks.append(count);
        return readyFuture<Result<void>>({});
    }

    QPointF at;
    bool mayScroll = true;
    QList<int> clicks; // one entry a call
};
