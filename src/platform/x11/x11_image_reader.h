#pragma once

#include "base/result.h"

#include <QImage>
#include <QRect>
#include <memory>

class X11Connection;

// Reads pixels of windows and pixmaps, through one kept segment of shared memory where the server allows it.
class X11ImageReader {
public:
    explicit X11ImageReader(const X11Connection &connection);
    ~X11ImageReader();

    // `rect` must lie inside the drawable. RGB32, or ARGB32_Premultiplied for a drawable of depth 32. The
    // picture may lie in the shared memory itself: then the next one takes a new segment, so it stays as it
    // is.
    Result<QImage> read(quint32 drawable, const QRect &rect);
    // Gives the kept memory back.
    void trim();

private:
    class Segment;

    Result<QImage> readShared(quint32 drawable, const QRect &rect);
    Result<QImage> readCopied(quint32 drawable, const QRect &rect);
    bool reserve(qsizetype bytes);
    Result<int> bytesPerLine(int depth, int width) const;

    const X11Connection &m_connection;
    bool m_mayShare = false;
    quint32 m_segmentId = 0; // the server's side of m_segment
    std::shared_ptr<Segment> m_segment;
};
