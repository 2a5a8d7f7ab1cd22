#pragma once

#include <algorithm>

// How one picture of a scrolling region continues the one before it, in pixels.
struct ScrollStep {
    static constexpr int kLeastOverlap = 12; // rows that both pictures show

    int footer = 0;   // rows at the bottom that stood still
    int shift = 0;    // rows that the content between header and footer moved up
    int header = 0;   // rows at the top that stood still
    int left = 0;     // columns at the left that stood still beside what moved
    int right = 0;    // columns at the right that did
    bool sure = true; // false where so many rows are alike that another shift fits as well

    // How far a step may be from the distance that the clicks made before.
    static int reachOf(double expected) { return std::max(2, int(expected * 0.03)); }

    bool operator==(const ScrollStep &) const = default;
};
