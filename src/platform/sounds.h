#pragma once

// The few sounds of the program. Never blocks, never fails outward.
class Sounds {
public:
    virtual ~Sounds() = default;
    virtual void shutter() = 0;
    virtual void beep() = 0;
    virtual void pop() = 0; // something was taken while the user goes on
};
