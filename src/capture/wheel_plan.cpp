#include "capture/wheel_plan.h"

namespace {
// Beside a tall header and footer a fifth of what moves stays in sight, and in a low region what the stitcher
// needs.
constexpr double kMostOfMoving = 0.8;
} // namespace

int WheelPlan::clicks() const
{
    return std::max(1, clicksAfter(0));
}

int WheelPlan::clicksAfter(int shift) const
{
    if (!hasLearned())
        return 0;
    const double moving = m_frameHeight - m_fixedRows;
    const double wanted = std::min(m_distance, moving * kMostOfMoving) - shift;
    const double most = m_showsTwice ? moving / 2 : moving - ScrollStep::kLeastOverlap;
    const double possible = most - shift;
    const double clicks =
        std::min(std::round(wanted / m_pixelsPerClick), std::floor(possible / m_pixelsPerClick));
    return std::clamp(int(clicks), 0, m_mostClicks);
}

int WheelPlan::clicksBack(qint64 shift) const
{
    constexpr double kRounding = 0.05;
    return hasLearned() ? int(std::ceil(double(shift) / m_pixelsPerClick - kRounding)) : 0;
}

std::optional<double> WheelPlan::expectedShift(int clicks) const
{
    if (!hasLearned())
        return {};
    return clicks * m_pixelsPerClick;
}

void WheelPlan::learn(const FrameStitcher::Step &step, int clicks)
{
    m_mostClicks = std::min(m_mostClicks + 1, kMostClicks);
    if (!step.sure)
        return;
    m_fixedRows = step.header + step.footer;
    // A step that ended early, at the foot of the page, teaches nothing.
    m_pixelsPerClick = std::max(m_pixelsPerClick, double(step.shift) / clicks);
}
