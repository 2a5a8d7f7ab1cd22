#pragma once

#include "app/activity.h"
#include "app/delivery.h"
#include "base/async.h"
#include "capture/screen_capturer.h"
#include "capture/ui/capture_overlay.h"
#include "settings/capture_options.h"

#include <QObject>
#include <functional>
#include <optional>

class CaptureSettings;
class Countdown;
class NoticeBoard;
class Permissions;
class PointerControl;
class SourceApplication;
class Workspace;

// One capture from its request to its delivery. Whether it may start is the Activity's to say, what follows is
// the Delivery's.
class CaptureFlow : public QObject {
    Q_OBJECT
public:
    // What a started capture is for.
    enum class Intent { Capture, GrabText, Scrolling, Video };
    using Run = Activity::Run;
    using Order = Delivery::Order;

    struct Parts {
        Activity &activity;
        Countdown &countdown;
        SourceApplication &source;
        Delivery &delivery;
        ScreenCapturer &capturer;
        Screens &screens;
        ScreenPictures &pictures;
        PointerControl &pointer;
        Permissions &permissions;
        Workspace &workspace;
        CaptureSettings &settings;
        NoticeBoard &notices;
    };

    explicit CaptureFlow(Parts parts, QObject *parent = nullptr);
    ~CaptureFlow() override;

    // The selection that is on the screen now, if any.
    CaptureOverlayController *overlay() const { return m_overlay.get(); }

    // Takes over a run, in the state Recording, for the part of a screen that was selected.
    std::function<void(Run, const Screen &, const QRectF &, const Order &)> startRecording;

    void captureFullScreen(int delay);
    void startCapture(Intent intent, int delay);
    // The window in front, at once; the selection where there is none.
    void captureFrontWindow();
    // Options of a preset, which the next start uses.
    void setPendingOptions(const CaptureOptions &options) { m_pendingOptions = options; }

Q_SIGNALS:
    // A capture failed in a way that asks for the user's attention.
    void failed(const Error &error);

private:
    // The order that a new run works by.
    Order takeOrder();
    void reportFailure(Run run, const Error &error);

    Task<> runFullScreen(Run run, Order order, int delay);
    Task<> runOverlay(Run run, Order order, Intent intent, int delay);
    void handleOverlay(Run run, const Order &order, Intent intent,
                       const CaptureOverlayController::Outcome &result);
    Task<> shootWindow(Run run, Order order, Intent intent, quint32 window);
    Task<> record(Run run, Order order, Screen screen, QRectF rect);
    Task<> runScrollingCapture(Run run, Order order, Screen screen, QRectF rect);
    void deliver(const QImage &image, const Order &order, Intent intent, Run run);

    Parts m_parts;
    std::unique_ptr<CaptureOverlayController> m_overlay;
    std::optional<CaptureOptions> m_pendingOptions;
};
