#include "platform/recognition/glyphs.h"

#include <opencv2/imgproc.hpp>

namespace {

constexpr int kFaintestInk = 22;

} // namespace

Components components(const QImage &ink)
{
    const cv::Mat map(ink.height(), ink.width(), CV_8UC1, const_cast<uchar *>(ink.constBits()),
                      size_t(ink.bytesPerLine()));
    cv::Mat mask;
    cv::threshold(map, mask, kFaintestInk, 255, cv::THRESH_BINARY);
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centers, 8, CV_32S);
    std::vector<int> strongest(size_t(count), 0);
    for (int y = 0; y < map.rows; ++y) {
        const int *row = labels.ptr<int>(y);
        const uchar *values = map.ptr(y);
        for (int x = 0; x < map.cols; ++x)
            if (row[x])
                strongest[size_t(row[x])] = std::max<int>(strongest[size_t(row[x])], values[x]);
    }
    Components found;
    for (int label = 1; label < count; ++label) {
        const int width = stats.at<int>(label, cv::CC_STAT_WIDTH);
        const int height = stats.at<int>(label, cv::CC_STAT_HEIGHT);
        const int area = stats.at<int>(label, cv::CC_STAT_AREA);
        const QRect box(stats.at<int>(label, cv::CC_STAT_LEFT), stats.at<int>(label, cv::CC_STAT_TOP), width,
                        height);
        const double filled = double(area) / (double(width) * height);
        if (height >= 30 && width <= 4) {
            found.uprights.push_back(box);
            continue;
        }
        const bool rule = width > 40 && height <= 4;
        const bool frame = width > 24 && height > 14 && filled < 0.12;
        const bool longFrame = width > 6 * height && height > 12 && filled < 0.3;
        if (frame || longFrame)
            for (const int x : {box.left(), box.right()})
                found.uprights.push_back(QRect(x, box.top(), 1, height));
        // A terminal's block cursor: broader than any I, taller than a full stop.
        const bool cursor = filled > 0.97 && height >= 12 && width <= height && 9 * width >= 4 * height;
        if (rule || frame || longFrame || cursor || height > kTallestGlyph || area < 2)
            continue;
        found.glyphs.push_back({box, label, strongest[size_t(label)]});
    }
    found.labels = labels;
    return found;
}
