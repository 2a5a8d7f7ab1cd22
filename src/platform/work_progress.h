#pragma once

#include <atomic>

// How far a long work is, and the wish that it ends. Shared by who works and who watches.
struct WorkProgress {
    std::atomic<double> done = 0; // 0 to 1
    std::atomic<bool> isCancelled = false;
};
