#pragma once

#include "platform/accessible_elements.h"
#include "platform/desktop/accessible_roles.h"
#include "platform/desktop/atspi_bus.h"

#include <QSet>

// Finds the control at a place: the program by its process, its window by where the window system says that
// it is, then down to the innermost object and up again to the one that a person would name.
class AtspiInquiry {
public:
    std::optional<AccessibleElement> elementAt(const ClickTarget &target, int milliseconds);
    // Makes programs that wake up at the first question answer the next ones.
    void wake(int milliseconds);
    bool connects(int milliseconds);

private:
    // How the bus counts in one window.
    struct Window {
        AtspiObject object;
        AtspiCoordinates coordinates = AtspiCoordinates::Screen;
        QPoint origin;    // of the bus's count, in native pixels
        double scale = 1; // native pixels for one of the bus
        QPoint fromNative(QPoint native) const;
        QRect toNative(const QRect &rect) const;
    };

    AtspiObject application(const ClickTarget &target);
    QList<Window> windows(const AtspiObject &application, const ClickTarget &target, const QString &toolkit);
    std::optional<Window> placed(const AtspiObject &window, const ClickTarget &target,
                                 const QString &toolkit);
    AtspiObject innermost(const Window &window, QPoint at);
    AtspiObject throughPlaceless(const AtspiObject &object, QPoint point, AtspiCoordinates coordinates);
    AtspiObject inOpenMenus(const AtspiObject &application, const ClickTarget &target, Window &counts);
    std::optional<AccessibleElement> described(const AtspiObject &leaf, const Window &window,
                                               const QString &toolkit, bool isInPopup);
    QString nameOf(const AtspiObject &object);
    AccessibleRoles::Facts facts(const AtspiObject &object);
    // The whole field that a part of it was hit in.
    AtspiObject editingHost(AtspiObject object);
    // The control that a label, or what it stands in, belongs to.
    AtspiObject labelled(AtspiObject label);
    QString shownText(const AtspiObject &object);

    AtspiBus m_bus;
    QSet<QString> m_awake; // objects of windows
};
