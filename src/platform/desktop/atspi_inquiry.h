#pragma once

#include "platform/accessible_elements.h"
#include "platform/desktop/accessible_roles.h"
#include "platform/desktop/atspi_bus.h"

// Finds the control at a place: the program by its process, its window by where the window system says that
// it is, then down to the innermost object and up again to the one that a person would name.
class AtspiInquiry {
public:
    std::optional<AccessibleElement> elementAt(const ClickTarget &target, int milliseconds);
    // Makes programs that wake up at the first question answer the next ones.
    void wake(int milliseconds);
    // What every question needs and the first one would have to wait for.
    void learnPrograms(int milliseconds);
    bool connects(int milliseconds);

private:
    // How the bus counts in one window.
    struct Window {
        AtspiObject object;
        AtspiCoordinates coordinates = AtspiCoordinates::Screen;
        QPoint origin;        // of the bus's count, in native pixels
        double scale = 1;     // native pixels for one of the bus
        bool isWhole = false; // it is what the window system calls the window, and not one around or under it
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
    AtspiObject choiceBeside(const AtspiObject &container, QPoint at, const Window &window);
    std::optional<AccessibleElement> innermostDescribed(const Window &window, const ClickTarget &target,
                                                        const QString &toolkit);
    AtspiBus::Card pressed(const AtspiBus::Card &leaf, bool isInPopup);
    AccessibleRoles::Facts facts(const AtspiBus::Card &card);
    static ControlKind kind(const AtspiBus::Card &card);
    // The whole field that a part of it was hit in.
    AtspiBus::Card editingHost(AtspiBus::Card field);
    // The control that a label, or what it stands in, belongs to.
    AtspiObject labelled(AtspiObject label);
    QString shownText(const AtspiObject &object);

    AtspiBus m_bus;
};
