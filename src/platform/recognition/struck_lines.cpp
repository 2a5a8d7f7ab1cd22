#include "platform/recognition/struck_lines.h"

#include <opencv2/imgproc.hpp>

namespace {

constexpr int kFaintestLine = 22;
constexpr int kShortest =
    36; // pixels; the dash of large type and three underscores of small type are shorter
constexpr int kThickest = 7;
constexpr int kSlenderness = 10; // the bar of a large T is six to eight times as long as it is thick
constexpr int kEnd = 3;          // pixels at either end of a line, where a frame has its corners
// An upright rule of a table: so thin, and reaching so far up and down.
constexpr int kThinnest = 2;
constexpr int kReachOfRule = 10;

bool isInk(const cv::Mat &ink, int x, int y)
{
    return y >= 0 && y < ink.rows && ink.at<uchar>(y, x) > kFaintestLine;
}

// How far ink goes on from a pixel, up or down.
int reach(const cv::Mat &ink, int x, int y, int step)
{
    int length = 0;
    while (length <= kReachOfRule && isInk(ink, x, y + step * length))
        ++length;
    return length;
}

// How many strokes of letters touch a line from above or below, other than at its ends.
int touchingStrokes(const cv::Mat &ink, const cv::Rect &box)
{
    int count = 0;
    for (const int step : {-1, 1}) {
        const int y = step < 0 ? box.y - 1 : box.br().y;
        for (int x = box.x + kEnd; x < box.br().x - kEnd;) {
            if (!isInk(ink, x, y)) {
                ++x;
                continue;
            }
            const int from = x;
            while (x < box.br().x - kEnd && isInk(ink, x, y))
                ++x;
            const bool isRule = x - from <= kThinnest && reach(ink, from, y, step) > kReachOfRule;
            const bool isBlock = x - from > kShortest; // a surface that the line ends
            count += !isRule && !isBlock;
        }
    }
    return count;
}

uchar strongestNear(const cv::Mat &ink, int x, int y)
{
    if (y < 0 || y >= ink.rows)
        return 0;
    const uchar *row = ink.ptr(y);
    return std::max({row[std::max(x - 1, 0)], row[x], row[std::min(x + 1, ink.cols - 1)]});
}

// Leaves of a line what goes on above and below it.
void takeOut(cv::Mat &ink, const cv::Rect &box)
{
    for (int x = box.x; x < box.br().x; ++x) {
        const uchar above = strongestNear(ink, x, box.y - 1);
        const uchar below = strongestNear(ink, x, box.br().y);
        const uchar left = std::min(above, below);
        for (int y = box.y; y < box.br().y; ++y)
            ink.at<uchar>(y, x) = left;
    }
}

} // namespace

void takeOutStruckLines(QImage &ink)
{
    if (ink.isNull())
        return;
    cv::Mat map(ink.height(), ink.width(), CV_8UC1, ink.bits(), size_t(ink.bytesPerLine()));
    cv::Mat mask;
    cv::threshold(map, mask, kFaintestLine, 255, cv::THRESH_BINARY);
    cv::morphologyEx(mask, mask, cv::MORPH_OPEN, cv::Mat::ones(1, kShortest, CV_8U));
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centers, 8, CV_32S);
    std::vector<cv::Rect> lines;
    for (int label = 1; label < count; ++label) {
        const cv::Rect box(stats.at<int>(label, cv::CC_STAT_LEFT), stats.at<int>(label, cv::CC_STAT_TOP),
                           stats.at<int>(label, cv::CC_STAT_WIDTH), stats.at<int>(label, cv::CC_STAT_HEIGHT));
        if (box.height <= kThickest && box.width >= kSlenderness * box.height &&
            touchingStrokes(map, box) > 0)
            lines.push_back(box);
    }
    for (const cv::Rect &line : lines)
        takeOut(map, line);
}
