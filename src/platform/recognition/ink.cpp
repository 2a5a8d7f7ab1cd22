#include "platform/recognition/ink.h"

#include <opencv2/imgproc.hpp>

namespace {

constexpr int kShrink = 4;            // backgrounds are smooth: a quarter of the pixels tells them
constexpr int kMedianWindow = 11;     // 44 pixels of the picture: more than any stroke, less than most panels
constexpr int kFlatPatch = 5;         // pixels; letters of usual sizes have thinner strokes
constexpr int kFlatSpread = 4;        // of a channel: soft gradients are flat too
constexpr int kSmallestSurface = 256; // pixels of its inside
constexpr float kFarthestSurface = 48;
constexpr int kFaintestFill = 24;   // contrast of a filled shape against what is behind it
constexpr double kSolidShare = 0.5; // of a filled shape's box is its colour

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

// Ink against the usual colour of a wide neighbourhood; near an edge between two, against either of them. For
// photographs and other grounds that are nowhere flat.
cv::Mat againstUsualColor(const cv::Mat &pixels)
{
    cv::Mat small;
    cv::resize(pixels, small,
               cv::Size((pixels.cols + kShrink - 1) / kShrink, (pixels.rows + kShrink - 1) / kShrink), 0, 0,
               cv::INTER_NEAREST);
    cv::medianBlur(small, small, kMedianWindow);
    cv::Mat low;
    cv::Mat high;
    cv::erode(small, low, {});
    cv::dilate(small, high, {});
    cv::Mat ink(pixels.size(), CV_8U);
    for (int y = 0; y < pixels.rows; ++y) {
        const auto *row = pixels.ptr<cv::Vec3b>(y);
        const auto *lows = low.ptr<cv::Vec3b>(std::min(y / kShrink, low.rows - 1));
        const auto *highs = high.ptr<cv::Vec3b>(std::min(y / kShrink, low.rows - 1));
        uchar *out = ink.ptr(y);
        for (int x = 0; x < pixels.cols; ++x)
            out[x] = uchar(distance(row[x], lows[x / kShrink], highs[x / kShrink]));
    }
    return ink;
}

// 0 where the picture is flat over a patch larger than any stroke of a letter, 255 elsewhere.
cv::Mat unevenPlaces(const cv::Mat &pixels)
{
    const cv::Mat patch = cv::Mat::ones(kFlatPatch, kFlatPatch, CV_8U);
    cv::Mat low;
    cv::Mat high;
    cv::erode(pixels, low, patch);
    cv::dilate(pixels, high, patch);
    cv::Mat flat(pixels.size(), CV_8U);
    for (int y = 0; y < pixels.rows; ++y) {
        const auto *lows = low.ptr<cv::Vec3b>(y);
        const auto *highs = high.ptr<cv::Vec3b>(y);
        uchar *out = flat.ptr(y);
        for (int x = 0; x < pixels.cols; ++x) {
            const int spread =
                std::max({highs[x][0] - lows[x][0], highs[x][1] - lows[x][1], highs[x][2] - lows[x][2]});
            out[x] = spread <= kFlatSpread ? 255 : 0;
        }
    }
    // The inside of a large letter is flat too, but small.
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(flat, labels, stats, centers, 4, CV_32S);
    std::vector<uchar> uneven(size_t(count), 255);
    for (int label = 1; label < count; ++label)
        if (stats.at<int>(label, cv::CC_STAT_AREA) >= kSmallestSurface)
            uneven[size_t(label)] = 0;
    for (int y = 0; y < flat.rows; ++y) {
        const int *row = labels.ptr<int>(y);
        uchar *out = flat.ptr(y);
        for (int x = 0; x < flat.cols; ++x)
            out[x] = uneven[size_t(row[x])];
    }
    return flat;
}

// Lets each flat surface take in the pixels of its colour that it reaches: the gaps between letters, and the
// strip between a text and the edge of its window, which is too narrow to be a surface of its own and may lie
// nearer to what is beyond the edge.
void growSurfaces(const cv::Mat &pixels, cv::Mat &uneven)
{
    struct Grown {
        cv::Point at;
        cv::Vec3b surface;
    };
    std::vector<Grown> open;
    const cv::Rect all(0, 0, pixels.cols, pixels.rows);
    const auto spread = [&](cv::Point from, const cv::Vec3b &surface) {
        for (const cv::Point step : {cv::Point(-1, 0), cv::Point(1, 0), cv::Point(0, -1), cv::Point(0, 1)}) {
            const cv::Point to = from + step;
            if (!all.contains(to) || uneven.at<uchar>(to) == 0 ||
                distance(pixels.at<cv::Vec3b>(to), surface, surface) > kFlatSpread)
                continue;
            uneven.at<uchar>(to) = 0;
            open.push_back({to, surface});
        }
    };
    for (int y = 0; y < pixels.rows; ++y) {
        const uchar *row = uneven.ptr(y);
        const uchar *above = uneven.ptr(std::max(0, y - 1));
        const uchar *below = uneven.ptr(std::min(pixels.rows - 1, y + 1));
        for (int x = 0; x < pixels.cols; ++x) {
            const bool reachesFurther = row[std::max(0, x - 1)] != 0 ||
                                        row[std::min(pixels.cols - 1, x + 1)] != 0 || above[x] != 0 ||
                                        below[x] != 0;
            if (row[x] != 0 || !reachesFurther)
                continue;
            spread({x, y}, pixels.at<cv::Vec3b>(y, x));
            while (!open.empty()) {
                const Grown next = open.back();
                open.pop_back();
                spread(next.at, next.surface);
            }
        }
    }
}

// Ink against the colour of the nearest flat surface.
void againstSurroundings(const cv::Mat &pixels, cv::Mat &ink)
{
    cv::Mat uneven = unevenPlaces(pixels);
    growSurfaces(pixels, uneven);
    cv::Mat far;
    cv::Mat nearest;
    cv::distanceTransform(uneven, far, nearest, cv::DIST_L2, cv::DIST_MASK_5, cv::DIST_LABEL_PIXEL);
    // The label of each flat pixel, and the colour behind each label.
    std::vector<cv::Vec3b> colors{cv::Vec3b()};
    for (int y = 0; y < pixels.rows; ++y) {
        const uchar *row = uneven.ptr(y);
        const int *labels = nearest.ptr<int>(y);
        for (int x = 0; x < pixels.cols; ++x) {
            if (row[x] != 0)
                continue;
            if (size_t(labels[x]) >= colors.size())
                colors.resize(size_t(labels[x]) + 1);
            colors[size_t(labels[x])] = pixels.at<cv::Vec3b>(y, x);
        }
    }
    cv::Mat usual;
    for (int y = 0; y < pixels.rows; ++y) {
        const auto *row = pixels.ptr<cv::Vec3b>(y);
        const int *labels = nearest.ptr<int>(y);
        const float *distances = far.ptr<float>(y);
        uchar *out = ink.ptr(y);
        for (int x = 0; x < pixels.cols; ++x) {
            if (colors.size() > 1 && distances[x] <= kFarthestSurface) {
                const cv::Vec3b &color = colors[size_t(labels[x])];
                out[x] = uchar(distance(row[x], color, color));
                continue;
            }
            if (usual.empty())
                usual = againstUsualColor(pixels);
            out[x] = usual.at<uchar>(y, x);
        }
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
    if (box.height < 13 || box.width < 1.5 * box.height || area < kSolidShare * box.area())
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
    cv::threshold(ink, mask, kFaintestFill, 255, cv::THRESH_BINARY);
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
