#pragma once

#include <QRect>
#include <QRectF>
#include <vector>

class PixelSource;

// Where a picture holds photographs rather than text and drawings.
class PhotoMap {
public:
    explicit PhotoMap(const PixelSource &picture);
    // What of the area holds photographs; empty when it is hardly any.
    QRect photoIn(const QRect &area) const;

private:
    int m_columns;
    int m_rows;
    std::vector<char> m_isPhoto; // block by block
};

// Whether what is in the box has the even colours of an emoji or a drawn portrait.
bool isDrawn(const PixelSource &picture, const QRectF &box);
