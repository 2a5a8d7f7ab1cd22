#pragma once

// How one picture of a scrolling region continues the one before it, in pixels.
struct ScrollStep {
    int footer = 0;   // rows at the bottom that stood still
    int shift = 0;    // rows that the content between header and footer moved up
    int header = 0;   // rows at the top that stood still
    int left = 0;     // columns at the left that stood still beside what moved
    int right = 0;    // columns at the right that did
    bool sure = true; // false where so many rows are alike that another shift fits as well

    bool operator==(const ScrollStep &) const = default;
};
