#pragma once

#include "base/async.h"

#include <QObject>

// The seconds before a delayed capture or session, told as they pass.
class Countdown : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // Over at once without a delay. False when the program ended meanwhile: touch nothing then.
    Task<bool> run(int seconds);

Q_SIGNALS:
    // Seconds left; 0 at the end.
    void ticked(int seconds);
};
