#pragma once

#include "base/clock.h"

// A clock that stands still until it is moved.
class FakeClock : public Clock {
public:
    QDateTime now() const override { return time; }
    void advance(qint64 seconds) { time = time.addSecs(seconds); }

    QDateTime time{QDate(2026, 3, 14), QTime(9, 41, 7)};
};
