#include "base/parallel.h"

#include <thread>
#include <vector>

void inParallel(int count, const std::function<void(int)> &work)
{
    std::vector<std::jthread> others;
    for (int i = 1; i < count; ++i)
        others.emplace_back([&work, i] { work(i); });
    if (count > 0)
        work(0);
}
