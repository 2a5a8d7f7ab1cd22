#pragma once

#include "base/result.h"

// Whether the program starts with the user's session.
class LoginItem {
public:
    virtual ~LoginItem() = default;
    virtual bool isEnabled() const = 0;
    virtual Result<void> setEnabled(bool enabled) = 0;
};
