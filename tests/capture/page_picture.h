#pragma once

#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <gtest/gtest.h>

// A page whose every row is different and of more than one colour, except where it is made blank.
class Page {
public:
    static constexpr int kWidth = 100;

    explicit Page(int height, quint32 seed = 1) : m_image(kWidth, height, QImage::Format_RGB32)
    {
        QRandomGenerator random(seed);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < kWidth; ++x)
                m_image.setPixel(x, y, random.generate() | 0xff000000);
        }
    }
    Page &blank(int top, int bottom)
    {
        QPainter(&m_image).fillRect(0, top, kWidth, bottom - top, Qt::white);
        return *this;
    }
    // Makes the rows down to `bottom` repeat the `period` rows from `top`.
    Page &repeat(int top, int bottom, int period)
    {
        for (int y = top + period; y < bottom; ++y)
            std::copy_n(m_image.constScanLine(y - period), m_image.bytesPerLine(), m_image.scanLine(y));
        return *this;
    }
    const QImage &image() const { return m_image; }
    QImage &editable() { return m_image; }
    QImage rows(int top, int height) const { return m_image.copy(0, top, kWidth, height); }
    // What a window of `height` rows shows of it at `offset`, between a fixed header and a fixed footer.
    QImage frame(int offset, int height, const QImage &header = {}, const QImage &footer = {}) const
    {
        QImage frame = rows(offset, height);
        QPainter painter(&frame);
        painter.drawImage(0, 0, header);
        painter.drawImage(0, height - footer.height(), footer);
        return frame;
    }

private:
    QImage m_image;
};

inline testing::AssertionResult sameRows(const QImage &actual, const QImage &expected, int firstColumn,
                                         int endColumn, int animatedFrom = 0, int animatedTo = 0)
{
    if (actual.size() != expected.size()) {
        return testing::AssertionFailure() << actual.width() << "x" << actual.height() << " instead of "
                                           << expected.width() << "x" << expected.height();
    }
    for (int y = 0; y < actual.height(); ++y) {
        if (y >= animatedFrom && y < animatedTo)
            continue;
        for (int x = firstColumn; x < endColumn; ++x) {
            if (actual.pixel(x, y) != expected.pixel(x, y))
                return testing::AssertionFailure() << "row " << y << " differs at column " << x;
        }
    }
    return testing::AssertionSuccess();
}

inline testing::AssertionResult sameRows(const std::optional<QImage> &actual, const QImage &expected)
{
    if (!actual)
        return testing::AssertionFailure() << "no picture";
    return sameRows(*actual, expected, 0, expected.width());
}
