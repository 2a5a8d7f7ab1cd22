#include "recording/film_clock.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(FilmClock, StandsStillDuringPauses)
{
    const FilmClock::Moment start{100s};
    FilmClock clock;
    EXPECT_FALSE(clock.timeOf(start));
    clock.run(start);
    EXPECT_FALSE(clock.timeOf(start - 1ms)) << "before the film";
    EXPECT_EQ(clock.timeOf(start + 2s), 2s);
    clock.pause(start + 3s);
    clock.pause(start + 4s); // no second pause
    EXPECT_FALSE(clock.timeOf(start + 5s));
    EXPECT_EQ(clock.lengthAt(start + 5s), 3s);
    clock.run(start + 10s);
    EXPECT_EQ(clock.timeOf(start + 10s), 3s) << "it goes on without a jump";
    EXPECT_EQ(clock.timeOf(start + 12s), 5s);
    EXPECT_EQ(clock.timeOf(start + 1s), 1s) << "what comes late belongs where it was";
    EXPECT_EQ(clock.lengthAt(start + 12s), 5s);
}
