#pragma once

#include <QObject>
#include <optional>

// What the user asked of every program's look.
class DesktopAppearance : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    // Nothing when the desktop doesn't say; it may say so later, with changed().
    virtual std::optional<bool> prefersDark() = 0;
    virtual bool reducesMotion() = 0;
    virtual bool wantsContrast() = 0;

Q_SIGNALS:
    void changed();
};
