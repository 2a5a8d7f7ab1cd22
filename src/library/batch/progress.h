#pragma once

#include <functional>

// Told after each piece of a long work; false stops the work, which then ends as cancelled. Called on the
// thread that works. An empty one neither tells nor stops.
using Progress = std::function<bool(int done, int total)>;

inline bool goesOn(const Progress &progress, int done, int total)
{
    return !progress || progress(done, total);
}
