#pragma once

#include "capture/screen_capturer.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>
#include <functional>
#include <memory>
#include <variant>
#include <vector>

class KeyboardHold;
class OverlayView;
class OverlayWindow;
class PointerControl;
class Workspace;

// Lets the user pick an area, a window or a whole screen from frozen pictures of all displays.
class CaptureOverlayController : public QObject {
    Q_OBJECT
public:
    struct Image { // an area or a display, already cropped
        QImage image;
    };
    struct Window { // to be shot afresh
        quint32 id = 0;
    };
    struct Selection { // an area in points from the screen's top left
        Screen screen;
        QRectF rect;
    };
    struct Cancelled {};
    using Outcome = std::variant<Image, Window, Selection, Cancelled>;
    // Called once, as the last thing: the controller may be destroyed in it. Not called when the controller
    // goes before there is an outcome.
    using Completion = std::function<void(const Outcome &)>;

    struct Ports {
        PointerControl &pointer;
        Workspace &workspace; // gets the keyboard back afterwards
    };

    // `windowInfos` front to back. With `selectionOnly` the result is a rectangle on a screen, not a picture.
    CaptureOverlayController(Ports ports, QList<WindowInfo> windowInfos, bool selectionOnly, QString hint,
                             QList<DisplaySnapshot> snapshots, Completion completion,
                             QObject *parent = nullptr);
    ~CaptureOverlayController() override;

    // Loads what the first overlay would otherwise load between shortcut and picture, fonts above all. For an
    // idle moment after the start.
    static void warmUp();

    void show();
    // The first outcome wins.
    void finish(const Outcome &outcome);

    const QList<WindowInfo> &windowInfos() const { return m_windowInfos; }
    bool selectionOnly() const { return m_selectionOnly; }
    const QString &hint() const { return m_hint; }
    // Empty before show() and after finish().
    const std::vector<std::unique_ptr<OverlayWindow>> &windows() const { return m_windows; }

    // The keyboard of the view that has it drives the view that has the pointer.
    void nudge(OverlayView &keyView, int dx, int dy);
    void toggleSelection(OverlayView &keyView);
    void endMove(OverlayView &keyView);
    // Takes what is selected, or else the display with the pointer.
    void accept(OverlayView &keyView);
    void warpPointer(const QPointF &globalPoint);

private:
    OverlayView &viewUnderPointer(OverlayView &otherwise);
    void watchScreens();
    void close();

    Ports m_ports;
    QList<WindowInfo> m_windowInfos;
    bool m_selectionOnly;
    QString m_hint;
    QList<DisplaySnapshot> m_snapshots;
    Completion m_completion;
    std::vector<std::unique_ptr<OverlayWindow>> m_windows;
    std::unique_ptr<KeyboardHold> m_keyboard;
    bool m_finished = false;
};
