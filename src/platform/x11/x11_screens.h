#pragma once

#include "platform/screen_pictures.h"
#include "platform/screens.h"

#include <QMutex>
#include <memory>
#include <optional>

class X11Connection;

// How the toolkit will scale each screen, told from the environment and the desktop's settings without it.
struct DisplayScaling {
    QByteArray scaleFactor;        // QT_SCALE_FACTOR
    QByteArray screenScaleFactors; // QT_SCREEN_SCALE_FACTORS
    QByteArray roundingPolicy;     // QT_SCALE_FACTOR_ROUNDING_POLICY
    bool highDpiEnabled = true;    // QT_ENABLE_HIGHDPI_SCALING is not "0"
    double dpi = 96;               // QT_FONT_DPI, else the desktop's setting

    // `index` counts screens in the toolkit's order, the primary one first.
    double scale(const QString &name, qsizetype index) const;
};

// The monitors that RandR tells (made-up ones too), and the windows that the window manager tells.
class X11Screens : public Screens {
public:
    X11Screens();
    ~X11Screens() override;
    QList<Screen> screens() const override;
    QList<ListedWindow> windows() const override;

private:
    // Opened at the first question, and again after the server went away; null without a display.
    X11Connection *connection() const;

    mutable QMutex m_mutex;
    mutable std::unique_ptr<X11Connection> m_connection;
};

// For the other adapters of this folder, on a connection of theirs.
namespace X11Desktop {
QList<Screen> screens(const X11Connection &connection);
// Client windows from the top of the stack to the bottom.
QList<quint32> clientsFrontToBack(const X11Connection &connection);
// 0 when neither the window nor the server tells it.
qint64 pid(const X11Connection &connection, quint32 window);
// What a person calls the program that owns the window.
QString applicationName(const X11Connection &connection, quint32 window, qint64 pid);
// The window as a person sees it, in native pixels of the desktop: with the frame that the window manager
// drew around it, if that is wanted, and without invisible borders that a client draws its shadow in. Empty
// when the window is gone.
QRect visibleFrame(const X11Connection &connection, quint32 window, WindowPart part);
// Whether the server says of itself that it is a guest of a Wayland session.
bool isXwayland(const X11Connection &connection);
// Where a screen is at this moment; nothing when it is gone.
std::optional<QRect> screenRect(const X11Connection &connection, quint32 screenId);
QRectF toPoints(const QList<Screen> &screens, const QRect &native);
} // namespace X11Desktop
