#pragma once

#include <QImage>
#include <QPoint>
#include <QRegion>
#include <QSize>
#include <cstdint>
#include <vector>

// The present picture of a film as encoders take it: planes Y, U and V, the colours halved in both
// directions, BT.709 (ITU-R BT.709-6, table 4) in the limited range: Y from 16 to 235, U and V from 16 to
// 240.
class YuvCanvas {
public:
    // Black. `size` is even.
    explicit YuvCanvas(QSize size);

    // Takes the parts of `picture` (RGB32, its top left at `at`) that `changed` names: rectangles with even
    // edges inside the picture and the canvas.
    void update(const QImage &picture, QPoint at, const QRegion &changed);

    QSize size() const { return m_size; }
    // 0 to 2. Rows follow each other at once: a plane is as wide as its samples.
    const std::uint8_t *plane(int index) const { return m_planes[index].data(); }
    int stride(int index) const { return index == 0 ? m_size.width() : m_size.width() / 2; }
    int rows(int index) const { return index == 0 ? m_size.height() : m_size.height() / 2; }

private:
    QSize m_size;
    std::vector<std::uint8_t> m_planes[3];
};
