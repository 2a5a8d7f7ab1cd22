#pragma once

#include "capture/compared_picture.h"
#include "capture/scroll_step.h"

#include <QImage>
#include <QList>
#include <limits>
#include <optional>

// Turns a series of same-sized pictures of a scrolling region into one tall picture. It knows neither how far
// the content was scrolled nor what program shows it: rows are compared exactly, what stands still is found.
// All numbers are rows of image pixels. One thread at a time.
//
// The first look is at whole rows: a moving region of 17 rows, 12 rows of overlap and 6 rows that are not of
// one colour are the least; more than 85% of those must be found again. The second look is MovingPart's.
class FrameStitcher {
public:
    // `mostPixels` bounds the tall picture, since one that is larger could not be opened again.
    explicit FrameStitcher(qint64 mostPixels = std::numeric_limits<qint64>::max()) : m_mostPixels(mostPixels)
    {}

    // How a frame continues the one before it.
    using Step = ScrollStep;

    // How a picture continues the last kept frame.
    struct Sight {
        std::optional<Step> step;
        bool isStill = false; // no step, because nothing scrolled
    };

    // Keeps the frame if it moved on from the last kept one; the first is always kept. A frame that didn't
    // move, scrolled back or has another size is dropped, and the next one is compared with the same kept
    // frame. `expected` is how far the content should have moved, where that is known.
    bool add(const QImage &image, std::optional<double> expected = {});
    // The same for a picture that was looked at, with what look() told of it. `image` is its original.
    bool add(const QImage &image, const ComparedPicture &picture, const Sight &sight);

    // How the picture would continue the last kept frame; there must be one. Whole rows are looked at first,
    // and parts of rows where those tell too little.
    Sight look(const ComparedPicture &picture, std::optional<double> expected = {}) const;

    // Takes a later picture of the same place for the last kept frame: what came late is in it.
    void refresh(const QImage &image, const ComparedPicture &picture);

    // A frame went on where the tall picture has no more room; it and those after it are dropped.
    bool isFull() const { return m_isFull; }

    // Rows of the tall picture so far.
    qint64 height() const { return m_height; }
    const QList<ComparedPicture> &frames() const { return m_frames; }
    // steps()[i] leads from frames()[i] to frames()[i + 1].
    const QList<Step> &steps() const { return m_steps; }

    // All kept frames as one picture: the height of a frame plus all shifts. A single frame is given as it
    // is. Nothing when there are no frames, or when the picture would not fit in memory.
    std::optional<QImage> result() const;

private:
    bool isContradicted(const RowSignatures &rows, const Step &step) const;
    std::optional<Step> stepByDistance(const RowSignatures &rows, double expected) const;
    std::optional<Step> secondLook(const ComparedPicture &picture, std::optional<double> expected,
                                   bool &isStill) const;

    qint64 m_mostPixels;
    qint64 m_height = 0; // of the tall picture so far
    bool m_isFull = false;
    QImage m_first; // as it was given
    QList<ComparedPicture> m_frames;
    QList<Step> m_steps;
};
