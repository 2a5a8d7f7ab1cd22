#pragma once

#include "base/async.h"
#include "base/result.h"
#include "capture/frame_stitcher.h"
#include "capture/patience.h"
#include "capture/scroll_back.h"
#include "capture/stillness.h"
#include "capture/wheel_plan.h"
#include "platform/screens.h"

#include <QFuture>
#include <QImage>
#include <QObject>
#include <QPromise>
#include <QRectF>
#include <functional>
#include <optional>

class Permissions;
class PointerControl;
class ScreenPictures;

// One scrolling capture of a rectangle on one screen: shoots it again and again while its content scrolls,
// and joins the shots into one tall picture. Scrolls by itself where the session allows it, otherwise the
// user does.
//
// While the user moves the pointer away, to reach the "Done" button for instance, the scrolling rests.
class ScrollingCaptureSession : public QObject {
    Q_OBJECT
public:
    struct Ports {
        Screens &screens;
        ScreenPictures &pictures;
        PointerControl &pointer;
        Permissions &permissions;
        // How time passes; tests make it pass at once.
        std::function<QFuture<Result<void>>(int milliseconds)> pause = delayed;
    };
    static constexpr int kMostFrames = 80;

    // Why no more was shot.
    enum class Reason {
        Running,
        End,          // the content did not scroll further
        Limit,        // as many frames, or as many pixels, as a picture may have
        NothingMoved, // the wheel moved nothing at all
        LostThread,   // it moved, but nothing in it was found again
        Stopped,      // by the user
        Cancelled,    // by the user, who wants nothing of it
        WindowGone,
    };

    // `rect` in points from the screen's top left.
    ScrollingCaptureSession(Ports ports, const Screen &screen, const QRectF &rect, QObject *parent = nullptr);

    // Ends the session after so many kept frames, at most 80. Before run().
    void setMaxFrames(int frames) { m_maxFrames = std::clamp(frames, 1, kMostFrames); }
    // Waits at the limit of frames, until it is stopped or told to go on. Before run().
    void setAsksAtLimit() { m_asksAtLimit = true; }

    // Once. The tall picture; nothing when there is nothing to deliver; or why a shot could not be taken, and
    // then what was taken so far is lost. Cancelled when the session is destroyed before its end.
    QFuture<Result<std::optional<QImage>>> run();
    // At any moment; the result is what was taken until then. Once more while the page is scrolled back: it
    // stays where it is then.
    void stop();
    // At any moment: there is no picture.
    void cancel();
    // As many frames again, for a session that waits at its limit.
    void goOn();
    bool isAtLimit() const { return m_state == State::AtLimit; }
    bool isAutomatic() const { return m_automatic; }
    // While held, no step is begun: the pointer rests on the session's own panel.
    void setHeld(bool held) { m_held = held; }

    const QRectF &rect() const { return m_rect; }
    const Screen &screen() const { return m_screen; }
    const QString &message() const { return m_message; }
    int frames() const { return m_frames; }
    // Rows of the tall picture so far.
    qint64 height() const { return m_stitcher->height(); }
    Reason reason() const { return m_reason; }
    const QList<FrameStitcher::Step> &steps() const { return m_stitcher->steps(); }

Q_SIGNALS:
    void changed();       // message or frames
    void shootingEnded(); // no further shot: borders and panels may go, the result follows

private:
    enum class State {
        Ready,
        FirstShot,
        YieldingToHand, // the user moved the pointer: wait until it rests
        Aiming,         // the pointer was put into the region
        Turning,        // the wheel
        Settling,       // waiting for the content to stand still, sample by sample
        ByHand,         // waiting for the user's scrolling
        Shooting,
        AtLimit,
        ScrollingBack, // while the picture is composed
        Composing,
        Finished,
    };

    struct Shot {
        QImage image;
        ComparedPicture picture;
        FrameStitcher::Sight sight;
    };

    void takeFirstShot(const QImage &shot);
    void nextStep();
    void shootByHand();
    void addShotByHand(const QImage &shot);
    void scrollOnce();
    void startTurning();
    void turn(int clicks);
    void turnNow();
    void park();
    void beginSettling();
    void settle();
    void takeSample();
    void judgeSample(const QImage &sample);
    Shot lookAt(const QImage &image);
    void noteSight(const FrameStitcher::Sight &sight);
    bool hasComeToRest(const std::optional<FrameStitcher::Step> &step) const;
    bool isLitUp(const Shot &shot) const;
    bool mayGoOut(const Shot &shot) const;
    bool isWorthWaiting(const Shot &shot);
    Patience::Signs signsIn(const Shot &shot) const;
    void useStep(const Shot &shot);
    void regainOverlap();
    void addShot(const Shot &shot);
    void noteUnchanged(const Shot &shot);
    bool isAtTheEnd() const;
    void end(Reason reason);
    void scrollBack();
    int clicksBack() const;
    void deliverComposed();
    std::optional<double> expectedShift() const;
    void say(const QString &message);
    void finish(Result<std::optional<QImage>> result);

    void pauseFor(int milliseconds, void (ScrollingCaptureSession::*then)());
    void shoot(void (ScrollingCaptureSession::*then)(const QImage &));
    QPointF target() const;
    std::optional<quint32> windowAtTarget() const;

    Ports m_ports;
    Screen m_screen;
    QRectF m_rect;
    int m_maxFrames = kMostFrames; // until it ends, or asks
    int m_moreFrames = 0;          // when told to go on
    bool m_asksAtLimit = false;
    QPromise<Result<std::optional<QImage>>> m_promise;
    std::shared_ptr<FrameStitcher> m_stitcher;
    State m_state = State::Ready;
    QString m_message;
    int m_frames = 0;
    bool m_automatic = false;
    bool m_stopped = false;
    bool m_held = false;
    bool m_isCancelled = false;
    int m_unchanged = 0;        // shots since the last kept frame
    int m_lost = 0;             // those of them that had moved to where nothing was found again
    bool m_expectsMore = false; // the last of them showed that more may be on its way
    bool m_hasGrown = false;    // content was added at the end
    Reason m_reason = Reason::Running;
    QFuture<std::optional<QImage>> m_composed;

    std::optional<quint32> m_window; // what scrolls; nothing when the desktop itself was chosen
    std::optional<WheelPlan> m_plan;
    Stillness m_stillness;
    Patience m_patience;
    std::unique_ptr<ScrollBack> m_back;
    int m_clicks = 0;     // turned in this step
    int m_turned = 0;     // in all steps
    int m_turn = 0;       // at once
    bool m_parks = false; // the pointer leaves the region after each turn, since it lights up what it lies on
    int m_settling = 0;   // milliseconds since the last click
    int m_lastShift = 0;
    int m_sameShiftFor = 0; // milliseconds
    int m_regained = 0;     // times that this step was turned back
    std::optional<QPointF> m_aimedAt;
    QPointF m_handAt;
    int m_handRested = 0; // milliseconds
};
