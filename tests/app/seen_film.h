#pragma once

#include <QImage>
#include <QProcess>
#include <gtest/gtest.h>

inline qint64 differenceAt(const QImage &filmed, QPoint at, const QImage &drawn)
{
    qint64 sum = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        const uchar *line = filmed.constScanLine(at.y() + y) + at.x();
        for (int x = 0; x < drawn.width(); ++x)
            sum += std::abs(line[x] - drawn.constScanLine(y)[x]);
    }
    return sum;
}

// That the film's last frame, which is written to `still`, shows the picture there to the pixel: nowhere
// beside it does it fit as well. Films halve colours, but no places.
inline void expectLastPlace(const QString &film, const QString &still, const QImage &picture, QSize size,
                            QPoint at)
{
    // Of all frames that are written there the last one stays.
    ASSERT_EQ(QProcess::execute("ffmpeg", {"-v", "error", "-y", "-i", film, "-update", "1", still}), 0);
    const QImage filmed = QImage(still).convertToFormat(QImage::Format_Grayscale8);
    ASSERT_EQ(filmed.size(), size);
    const QImage drawn = picture.convertToFormat(QImage::Format_Grayscale8);
    for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
        EXPECT_LT(differenceAt(filmed, at, drawn), differenceAt(filmed, at + step, drawn));
}
