#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QFlags>
#include <QList>
#include <array>
#include <cstdlib>
#include <memory>

struct xcb_connection_t;
struct xcb_screen_t;

enum class X11Extension {
    Shm = 0x01,
    XFixes = 0x02,
    RandR = 0x04,
    Composite = 0x08,
    Render = 0x10,
    Res = 0x20,
    Shape = 0x40,
    XTest = 0x80,
};
Q_DECLARE_FLAGS(X11Extensions, X11Extension)
Q_DECLARE_OPERATORS_FOR_FLAGS(X11Extensions)

enum class X11Atom {
    GtkFrameExtents,
    NetActiveWindow,
    NetClientListStacking,
    NetFrameExtents,
    NetSupportingWmCheck,
    NetWmCmS0,
    NetWmName,
    NetWmPid,
    NetWmState,
    NetWmStateHidden,
    NetWmWindowOpacity,
    NetWmWindowType,
    NetWmWindowTypeCombo,
    NetWmWindowTypeDesktop,
    NetWmWindowTypeDialog,
    NetWmWindowTypeDock,
    NetWmWindowTypeDropdownMenu,
    NetWmWindowTypeMenu,
    NetWmWindowTypeNormal,
    NetWmWindowTypePopupMenu,
    Utf8String,
    WmState,
    XRootPixmap,
    XSettingsS0,
    XSettingsSettings,
    Count,
};

// A reply or error that XCB allocated.
struct XcbFree {
    void operator()(void *pointer) const { std::free(pointer); }
};
template <typename T>
using XcbOwned = std::unique_ptr<T, XcbFree>;

// One connection to the X server of $DISPLAY. Extensions and atoms are asked for in one batch, so that
// opening costs two round trips. Not for use from two threads at once.
class X11Connection {
public:
    // Error::Kind::Unavailable, with a sentence for the user, when there is no display or it can't be
    // reached.
    static Result<std::unique_ptr<X11Connection>> open(X11Extensions wanted);
    ~X11Connection();
    X11Connection(const X11Connection &) = delete;
    X11Connection &operator=(const X11Connection &) = delete;

    xcb_connection_t *xcb() const { return m_xcb; }
    const xcb_screen_t *screen() const { return m_screen; }
    quint32 root() const;
    bool has(X11Extension extension) const { return m_present.testFlag(extension); }
    quint32 atom(X11Atom name) const { return m_atoms[std::size_t(name)]; }
    // The server has gone.
    bool isBroken() const;

    // The items of a property of 32-bit items; empty when it is missing.
    QList<quint32> cardinals(quint32 window, quint32 property) const;
    // The bytes of a property of any type.
    QByteArray bytes(quint32 window, quint32 property) const;

private:
    X11Connection() = default;
    void learn(X11Extensions wanted);

    xcb_connection_t *m_xcb = nullptr;
    const xcb_screen_t *m_screen = nullptr;
    X11Extensions m_present;
    std::array<quint32, std::size_t(X11Atom::Count)> m_atoms{};
};
