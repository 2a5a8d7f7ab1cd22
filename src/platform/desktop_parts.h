#pragma once

#include <QFuture>
#include <QList>
#include <QString>

// Something of the desktop that a feature builds on and that may not be there.
struct DesktopPart {
    enum class Kind { AccessibilityBus, SoundServer, Camera, RecognitionData, SpeechModel, Portals, SecretService };
    enum class State {
        Works,
        Missing, // `package` names what brings it; empty when it is no matter of packages
        Barred,  // it is there, but not for this user
    };

    Kind kind = Kind::Portals;
    State state = State::Missing;
    QString package = {}; // as the distribution names it
    QString detail = {};  // what was found, such as the languages of the recognition data; may be empty

    bool operator==(const DesktopPart &) const = default;
};

// What this desktop has of it at the moment.
class DesktopParts {
public:
    virtual ~DesktopParts() = default;
    // One entry a kind, in their order. Looks on a worker: buses and disks take their time.
    virtual QFuture<QList<DesktopPart>> look() const = 0;
};
