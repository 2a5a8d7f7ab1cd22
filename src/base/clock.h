#pragma once

#include <QDateTime>

// The present time, so that rules about time can be tried without waiting.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const { return QDateTime::currentDateTime(); }
};
