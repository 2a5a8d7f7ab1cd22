#pragma once

#include "capture/compared_picture.h"

// Tells from samples of a region when its content has come to rest. A caret that blinks or a small animation
// does not count as movement.
class Stillness {
public:
    // `elapsed` is the time since the sample before, in milliseconds.
    void addSample(const ComparedPicture &picture, int elapsed);
    // For how long nothing has moved.
    int quietFor() const { return m_quietFor; }

private:
    // Whether two pictures show the content at the same place.
    static bool isSamePlace(const ComparedPicture &a, const ComparedPicture &b);

    std::optional<ComparedPicture> m_last;
    int m_quietFor = 0;
};
