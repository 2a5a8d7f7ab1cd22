#include "app/countdown.h"

Task<bool> Countdown::run(int seconds)
{
    for (int left = seconds; left > 0; --left) {
        Q_EMIT ticked(left);
        if (!co_await guarded(delayed(1000), this))
            co_return false;
    }
    if (seconds > 0)
        Q_EMIT ticked(0);
    co_return true;
}
