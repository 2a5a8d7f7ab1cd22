#include "platform/recognition/photo_map.h"

#include "platform/recognition/pixel_source.h"

#include <array>
#include <opencv2/core.hpp>

namespace {

constexpr int kBlockSize = 16;
constexpr int kPhotoColors = 72; // text in one colour on another has far fewer in a block, a photograph more
constexpr int kPaletteColors = 256;     // in all of a picture that was made for few
constexpr int kPalettePhotoColors = 16; // in a block of such a picture
constexpr int kPhotoBlocks = 2;         // in an area worth a look

constexpr int kSamples = 32;        // across a face, so that it counts alike at any size
constexpr double kEdge = 0.12;      // left out at each side: it may be background
constexpr double kAlike = 0.01;     // of the contrast: neighbours without a difference
constexpr double kMostAlike = 0.15; // of all neighbours; photographs stay below .05, drawings are above .5
constexpr int kLeastContrast = 8;   // of 255
constexpr int kWhite = 250;         // overexposed, and from here on even in photographs too
constexpr int kBlack = 5;
constexpr double kLeastTold = 0.27; // of the samples neither white nor black, or they tell nothing

// The different colours of a block. Emptied without touching its places, as there are many blocks.
class ColorSet {
public:
    int size() const { return m_size; }
    void clear()
    {
        m_size = 0;
        ++m_round;
    }
    // Whether it is new.
    bool insert(unsigned color)
    {
        const quint64 entry = m_round << 24 | color;
        for (size_t place = color * 0x9E3779B1U >> 22;; place = (place + 1) % m_places.size()) {
            if (m_places[place] == entry)
                return false;
            if (m_places[place] >> 24 != m_round) {
                m_places[place] = entry;
                ++m_size;
                return true;
            }
        }
    }

private:
    std::array<quint64, 1024> m_places{}; // a block has at most a quarter of that, so one is always free
    quint64 m_round = 1;                  // 0 is in the places that nothing has taken
    int m_size = 0;
};

} // namespace

PhotoMap::PhotoMap(const PixelSource &picture)
    : m_columns(picture.size().width() / kBlockSize),
      m_rows(picture.size().height() / kBlockSize),
      m_isPhoto(size_t(m_columns) * size_t(m_rows))
{
    const QRect strip(0, 0, m_columns * kBlockSize, kBlockSize);
    if (strip.isEmpty())
        return;
    ColorSet all; // as far as it matters
    ColorSet colors;
    std::vector<int> counts;
    counts.reserve(m_isPhoto.size());
    for (int row = 0; row < m_rows; ++row) {
        const cv::Mat pixels = picture.scaled(strip.translated(0, row * kBlockSize), strip.size());
        for (int column = 0; column < m_columns; ++column) {
            colors.clear();
            for (int y = 0; y < kBlockSize && colors.size() < kPhotoColors; ++y) {
                const auto *from = pixels.ptr<cv::Vec4b>(y) + column * kBlockSize;
                for (int x = 0; x < kBlockSize; ++x) {
                    const auto color = unsigned(from[x][0] | from[x][1] << 8 | from[x][2] << 16);
                    if (colors.insert(color) && all.size() <= kPaletteColors)
                        all.insert(color);
                }
            }
            counts.push_back(colors.size());
        }
    }
    const int least = all.size() > kPaletteColors ? kPhotoColors : kPalettePhotoColors;
    std::ranges::transform(counts, m_isPhoto.begin(), [least](int count) { return count >= least; });
}

QRect PhotoMap::photoIn(const QRect &area) const
{
    const QRect blocks = QRect(QPoint(area.left() / kBlockSize, area.top() / kBlockSize),
                               QPoint(area.right() / kBlockSize, area.bottom() / kBlockSize)) &
                         QRect(0, 0, m_columns, m_rows);
    QRect photo;
    int count = 0;
    for (int y = blocks.top(); y <= blocks.bottom(); ++y) {
        for (int x = blocks.left(); x <= blocks.right(); ++x) {
            if (m_isPhoto[size_t(y) * size_t(m_columns) + size_t(x)]) {
                photo |= QRect(x * kBlockSize, y * kBlockSize, kBlockSize, kBlockSize);
                ++count;
            }
        }
    }
    return count < kPhotoBlocks ? QRect() : photo;
}

bool isDrawn(const PixelSource &picture, const QRectF &box)
{
    const double x = box.width() * kEdge;
    const double y = box.height() * kEdge;
    const QRect part = box.adjusted(x, y, -x, -y).toAlignedRect() & QRect(QPoint(), picture.size());
    if (part.isEmpty())
        return false;
    const cv::Mat face = picture.scaled(part, QSize(kSamples, kSamples));
    std::vector<int> brightness;
    for (int row = 0; row < kSamples; ++row)
        for (int column = 0; column < kSamples; ++column) {
            const auto &pixel = face.at<cv::Vec4b>(row, column);
            brightness.push_back((pixel[0] * 114 + pixel[1] * 587 + pixel[2] * 299) / 1000);
        }
    std::ranges::sort(brightness);
    const size_t tail = brightness.size() / 20;
    const int contrast =
        std::max(kLeastContrast, brightness[brightness.size() - 1 - tail] - brightness[tail]);

    const auto difference = [](const cv::Vec4b &a, const cv::Vec4b &b) {
        return std::max({std::abs(a[0] - b[0]), std::abs(a[1] - b[1]), std::abs(a[2] - b[2])});
    };
    int telling = 0;
    int alike = 0;
    for (int row = 0; row + 1 < kSamples; ++row) {
        for (int column = 0; column + 1 < kSamples; ++column) {
            const auto &pixel = face.at<cv::Vec4b>(row, column);
            const auto [least, most] = std::minmax({pixel[0], pixel[1], pixel[2]});
            if (least >= kWhite || most <= kBlack)
                continue;
            ++telling;
            alike += std::max(difference(pixel, face.at<cv::Vec4b>(row, column + 1)),
                              difference(pixel, face.at<cv::Vec4b>(row + 1, column))) < kAlike * contrast;
        }
    }
    return telling > kLeastTold * kSamples * kSamples && alike > kMostAlike * telling;
}
