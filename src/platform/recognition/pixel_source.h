#pragma once

#include <QImage>

namespace cv {
class Mat;
}

// Parts of a picture as OpenCV wants them: blue, green, red and one byte more a pixel. Never a copy of the
// whole: a huge picture has no room for a second one beside it.
class PixelSource {
public:
    explicit PixelSource(QImage image);
    QSize size() const { return m_image.size(); }

    // `part`, which lies inside the picture, scaled to `size`, in memory of its own or the picture's.
    cv::Mat scaled(const QRect &part, QSize size) const;

private:
    cv::Mat rows(const QRect &part) const;

    QImage m_image;
    bool m_isUsual = false; // of a format that needs no conversion
};
