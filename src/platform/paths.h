#pragma once

#include <QString>

// The user's well-known folders. Absolute, without a trailing slash; they may not exist yet.
class Paths {
public:
    virtual ~Paths() = default;
    virtual QString home() const = 0;
    virtual QString pictures() const = 0;
    virtual QString desktop() const = 0;
    virtual QString temporary() const = 0;
    virtual QString config() const = 0; // of this program
    virtual QString state() const = 0;  // logs; of this program
    virtual QString cache() const = 0;  // of this program
};
