#pragma once

#include "capture/frame_stitcher.h"

// How many clicks of the wheel move the content by about the distance wanted. A click has no fixed size on
// this desktop: 46 pixels in one program, 120 in the next. It is learned from the first click and from every
// step after it, so that neither an overlap is lost nor time wasted. All lengths are pixels of the frame.
class WheelPlan {
public:
    WheelPlan(int frameHeight, double distance) : m_frameHeight(frameHeight), m_distance(distance) {}

    // One click as long as nothing is known.
    int clicks() const;
    // How many more clicks the distance asks for after `shift` is behind us.
    int clicksAfter(int shift) const;
    // How far that many clicks should move the content; nothing as long as nothing is known.
    std::optional<double> expectedShift(int clicks) const;

    // How many clicks take the content back by `shift`, and rather one too many: at its top there is no
    // further.
    int clicksBack(qint64 shift) const;

    bool hasLearned() const { return m_pixelsPerClick > 0; }
    void learn(const FrameStitcher::Step &step, int clicks);
    // After a step of so many clicks the overlap was lost: half of them next, and one more with every step
    // that goes well.
    void tooMany(int clicks) { m_mostClicks = std::max(1, clicks / 2); }

    // From now on each row is seen in two frames, since something hides it in one.
    void showTwice() { m_showsTwice = true; }

private:
    static constexpr int kMostClicks = 100;

    int m_frameHeight;
    double m_distance;
    double m_pixelsPerClick = 0;
    int m_fixedRows = 0; // header and footer of the last step
    int m_mostClicks = kMostClicks;
    bool m_showsTwice = false;
};
