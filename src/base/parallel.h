#pragma once

#include <functional>

// Runs work(0) … work(count - 1) on threads of their own, one of them the caller's, and returns when all are
// done. For a few pieces of some milliseconds each. Safe inside a task of the thread pool, where waiting for
// other tasks of the pool could wait forever.
void inParallel(int count, const std::function<void(int)> &work);
