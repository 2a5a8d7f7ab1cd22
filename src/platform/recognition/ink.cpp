#include "platform/recognition/ink.h"

#include <opencv2/imgproc.hpp>

namespace {

constexpr int Shrink = 4;          // backgrounds are smooth: a quarter of the pixels tells them
constexpr int MedianWindow = 11;   // 44 pixels of the picture: more than any stroke, less than most panels
constexpr int FaintestFill = 24;   // contrast of a filled shape against what is behind it
constexpr double SolidShare = 0.5; // of a filled shape's box is its colour

// A view of the picture's pixels as three channels; transparent pixels show white.
cv::Mat threeChannels(const QImage &picture, QImage &keep)
{
    keep = picture;
    if (picture.hasAlphaChannel()) {
        QImage opaque(picture.size(), QImage::Format_RGB32);
        opaque.fill(Qt::white);
        const QImage source = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < opaque.height(); ++y) {
            const auto *from = reinterpret_cast<const QRgb *>(source.constScanLine(y));
            auto *to = reinterpret_cast<QRgb *>(opaque.scanLine(y));
            for (int x = 0; x < opaque.width(); ++x) {
                const int rest = 255 - qAlpha(from[x]);
                to[x] = qRgb(qRed(from[x]) + rest, qGreen(from[x]) + rest, qBlue(from[x]) + rest);
            }
        }
        keep = opaque;
    }
    keep = keep.convertToFormat(QImage::Format_RGB888);
    return cv::Mat(keep.height(), keep.width(), CV_8UC3, const_cast<uchar *>(keep.constBits()),
                   size_t(keep.bytesPerLine()));
}

int distance(const cv::Vec3b &pixel, const cv::Vec3b &low, const cv::Vec3b &high)
{
    int most = 0;
    for (int c = 0; c < 3; ++c)
        most = std::max({most, low[c] - pixel[c], pixel[c] - high[c]});
    return most;
}

void againstSurroundings(const cv::Mat &pixels, cv::Mat &ink)
{
    cv::Mat small;
    cv::resize(pixels, small,
               cv::Size((pixels.cols + Shrink - 1) / Shrink, (pixels.rows + Shrink - 1) / Shrink), 0, 0,
               cv::INTER_NEAREST);
    cv::medianBlur(small, small, MedianWindow);
    cv::Mat low;
    cv::Mat high;
    cv::erode(small, low, {});
    cv::dilate(small, high, {});
    for (int y = 0; y < pixels.rows; ++y) {
        const auto *row = pixels.ptr<cv::Vec3b>(y);
        const auto *lows = low.ptr<cv::Vec3b>(std::min(y / Shrink, low.rows - 1));
        const auto *highs = high.ptr<cv::Vec3b>(std::min(y / Shrink, low.rows - 1));
        uchar *out = ink.ptr(y);
        for (int x = 0; x < pixels.cols; ++x)
            out[x] = uchar(distance(row[x], lows[x / Shrink], highs[x / Shrink]));
    }
}

// The most frequent value of each channel among the pixels of one component.
cv::Vec3b commonColor(const cv::Mat &pixels, const cv::Mat &labels, const cv::Rect &box, int label)
{
    std::array<std::array<int, 256>, 3> counts{};
    for (int y = box.y; y < box.y + box.height; ++y)
        for (int x = box.x; x < box.x + box.width; ++x)
            if (labels.at<int>(y, x) == label)
                for (int c = 0; c < 3; ++c)
                    ++counts[size_t(c)][pixels.at<cv::Vec3b>(y, x)[c]];
    cv::Vec3b color;
    for (int c = 0; c < 3; ++c) {
        const auto &channel = counts[size_t(c)];
        color[c] = uchar(std::max_element(channel.begin(), channel.end()) - channel.begin());
    }
    return color;
}

// Wide, and filled along its upper and lower edge, as no letter is.
bool isFilledShape(const cv::Mat &labels, const cv::Rect &box, int label, int area)
{
    if (box.height < 13 || box.width < 1.5 * box.height || area < SolidShare * box.area())
        return false;
    for (const int y : {box.y + 2, box.y + box.height - 3}) {
        const int *row = labels.ptr<int>(y);
        if (std::count(row + box.x, row + box.x + box.width, label) < 0.6 * box.width)
            return false;
    }
    return true;
}

// Buttons, badges and selected rows: measures the ink inside against the shape's own colour.
void insideFilledShapes(const cv::Mat &pixels, cv::Mat &ink)
{
    cv::Mat mask;
    cv::threshold(ink, mask, FaintestFill, 255, cv::THRESH_BINARY);
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centers, 4, CV_32S);
    for (int label = 1; label < count; ++label) {
        const cv::Rect box(stats.at<int>(label, cv::CC_STAT_LEFT), stats.at<int>(label, cv::CC_STAT_TOP),
                           stats.at<int>(label, cv::CC_STAT_WIDTH), stats.at<int>(label, cv::CC_STAT_HEIGHT));
        const int area = stats.at<int>(label, cv::CC_STAT_AREA);
        if (!isFilledShape(labels, box, label, area))
            continue;
        const cv::Vec3b color = commonColor(pixels, labels, box, label);
        for (int y = box.y; y < box.y + box.height; ++y) {
            const int *row = labels.ptr<int>(y);
            int left = box.x;
            int right = box.x + box.width - 1;
            while (left < right && row[left] != label)
                ++left;
            while (right > left && row[right] != label)
                --right;
            // The shape's own soft edge is no ink.
            const bool border = y < box.y + 2 || y >= box.y + box.height - 2;
            for (int x = left; x <= right; ++x)
                ink.at<uchar>(y, x) = border || x < left + 2 || x > right - 2
                                          ? 0
                                          : uchar(distance(pixels.at<cv::Vec3b>(y, x), color, color));
        }
    }
}

} // namespace

QImage inkOf(const QImage &picture)
{
    QImage keep;
    const cv::Mat pixels = threeChannels(picture, keep);
    QImage ink(picture.size(), QImage::Format_Grayscale8);
    if (ink.isNull())
        return ink;
    cv::Mat map(ink.height(), ink.width(), CV_8UC1, ink.bits(), size_t(ink.bytesPerLine()));
    againstSurroundings(pixels, map);
    insideFilledShapes(pixels, map);
    return ink;
}
