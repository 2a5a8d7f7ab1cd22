#pragma once

#include <QFuture>
#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QString>
#include <optional>

// What stands under the pointer at a press, as the window system tells it.
struct ClickTarget {
    QPoint at{};          // native pixels of the desktop
    qint64 pid = 0;       // of the program whose window it is; 0 if unknown
    QRect window{};       // that window's whole area in native pixels, invisible borders of its own included
    QRect visible{};      // the part of it that shows something
    QString title{};      // of that window
    bool isPopup = false; // a menu, a list or a tip that the window manager doesn't manage

    bool operator==(const ClickTarget &) const = default;
};

// One control of another program: texts of its accessibility attributes, each absent where the control has
// none. Roles are told in one vocabulary whatever the toolkit: AXButton, AXCheckBox, AXMenuItem …
struct ClickedElement {
    std::optional<QString> role{};
    std::optional<QString> subrole{};
    std::optional<QString> title{};
    std::optional<QString> description{};
    std::optional<QString> value{}; // never of a control that is typed into
    std::optional<QString> placeholder{};

    bool operator==(const ClickedElement &) const = default;
};

struct AccessibleElement {
    ClickedElement element{};
    QRect frame{}; // native pixels of the desktop; empty if the program doesn't tell it

    bool operator==(const AccessibleElement &) const = default;
};

// The controls of other programs. Questions cost the program that asks nothing but the wait for the future.
class AccessibleElements {
public:
    virtual ~AccessibleElements() = default;
    // Whether the desktop has a service that could answer. May take some milliseconds.
    virtual bool isAvailable() const = 0;
    // Wakes the service and the programs that answer their first question slowly, and keeps them awake until
    // `rest`.
    virtual void prepare() = 0;
    virtual void rest() = 0;
    // Nothing when no program answers for that place within 0.4 s.
    virtual QFuture<std::optional<AccessibleElement>> elementAt(const ClickTarget &target) = 0;
};
