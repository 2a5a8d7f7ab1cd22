#pragma once

#include "capture/row_signatures.h"

// Tells from samples of a region when its content has come to rest. A caret that blinks or a small animation
// does not count as movement.
class Stillness {
public:
    // `elapsed` is the time since the sample before, in milliseconds.
    void addSample(RowSignatures rows, int elapsed);
    // For how long nothing has moved.
    int quietFor() const { return m_quietFor; }
    const std::optional<RowSignatures> &last() const { return m_last; }

private:
    // Whether two pictures show the content at the same place.
    static bool isSamePlace(const RowSignatures &a, const RowSignatures &b);

    std::optional<RowSignatures> m_last;
    int m_quietFor = 0;
};
