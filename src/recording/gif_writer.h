#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <functional>

// Writes an animated GIF frame by frame (GIF89a), endless. Each frame holds what changed since the one
// before, with colours of its own.
class GifWriter {
public:
    // `write` gets the file's bytes in order; false from it ends the work.
    GifWriter(QSize size, std::function<bool(const QByteArray &)> write);

    // `picture` has the writer's size (Format_RGB32); it is shown for so many hundredths of a second. False
    // when writing failed.
    bool add(const QImage &picture, int hundredths);
    bool finish();

private:
    QRect changedRect(const QImage &picture) const;
    bool isChanged(QRgb stored, QRgb wanted) const;

    QSize m_size;
    std::function<bool(const QByteArray &)> m_write;
    QImage m_stored; // each pixel as it was wanted when it was last written
    bool m_hasHeader = false;
};
