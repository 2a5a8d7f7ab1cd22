#include "capture/frame_stitcher.h"

#include <cstring>

namespace {

constexpr int kLeastMovingRows = 17;
constexpr int kLeastOverlap = 12;
constexpr int kLeastComparedRows = 6;
constexpr double kGoodScore = 0.85; // animation or a caret may spoil some rows
constexpr double kNearPerfectScore = 0.999;

// Rows [top, bottom) of a frame, and where they go in the tall picture.
struct Piece {
    int frame = 0;
    int top = 0;
    int bottom = 0;
    int y = 0;
};

// Footers differ from step to step where rows at the bottom are alike by chance, so every piece begins where
// the one before ended in the page. Row r of frame i stands at row r + (sum of the shifts up to i) of the
// page.
QList<Piece> piecesOf(int height, const QList<FrameStitcher::Step> &steps)
{
    QList<Piece> pieces;
    int end = height - steps.first().footer; // in the page, of what is covered so far
    pieces.append({0, 0, end, 0});
    int offset = 0;
    int footerBefore = steps.first().footer;
    for (int i = 0; i < steps.size(); ++i) {
        const FrameStitcher::Step &step = steps[i];
        offset += step.shift;
        int top = height - footerBefore - step.shift;
        const int bottom = height - step.footer;
        // After a footer that was tall by chance the piece would begin under this frame's header. Those rows
        // were still in sight one frame earlier.
        if (const int hidden = step.header - top; hidden > 0) {
            pieces.append({i, top + step.shift, top + step.shift + hidden, end});
            top += hidden;
            end += hidden;
        }
        if (bottom > top)
            pieces.append({i + 1, top, bottom, end});
        end = offset + bottom;
        footerBefore = step.footer;
    }
    pieces.append({int(steps.size()), height - footerBefore, height, end});
    return pieces;
}

void copyRows(const QImage &from, const Piece &piece, QImage &to)
{
    for (int row = piece.top; row < piece.bottom; ++row)
        std::memcpy(to.scanLine(piece.y + row - piece.top), from.constScanLine(row),
                    size_t(from.width()) * 4);
}

} // namespace

bool FrameStitcher::add(const QImage &image)
{
    std::optional<RowSignatures> rows = RowSignatures::of(image);
    if (!rows || m_isFull)
        return false;
    if (!m_frames.isEmpty()) {
        const Frame &last = m_frames.last();
        if (last.image.size() != image.size())
            return false;
        const std::optional<Step> step = match(last.rows, *rows);
        if (!step)
            return false;
        m_isFull = (m_height + step->shift) * image.width() > m_mostPixels;
        if (m_isFull)
            return false;
        m_height += step->shift;
        m_steps.append(*step);
    } else {
        m_height = image.height();
    }
    m_frames.append({image, std::move(*rows)});
    return true;
}

std::optional<FrameStitcher::Step> FrameStitcher::match(const RowSignatures &previous,
                                                        const RowSignatures &next)
{
    const std::vector<quint64> &a = previous.hashes;
    const std::vector<quint64> &b = next.hashes;
    const int n = int(b.size());
    if (int(a.size()) != n)
        return {};

    int header = 0;
    while (header < n && a[header] == b[header])
        ++header;
    if (header == n)
        return {};
    int footer = 0;
    while (footer < n - header && a[n - 1 - footer] == b[n - 1 - footer])
        ++footer;
    const int moving = n - footer - header;
    if (moving < kLeastMovingRows)
        return {};

    // Blank rows between paragraphs fit anywhere, so they are no evidence.
    std::vector<int> telling;
    telling.reserve(moving);
    for (int row = header; row < header + moving; ++row) {
        if (!next.uniform[row])
            telling.push_back(row);
    }

    double bestScore = 0;
    int bestShift = 0;
    auto tellingEnd = telling.cend();
    for (int shift = 1; shift < moving && moving - shift >= kLeastOverlap; ++shift) {
        while (tellingEnd != telling.cbegin() && *(tellingEnd - 1) >= header + moving - shift)
            --tellingEnd;
        const auto compared = tellingEnd - telling.cbegin();
        if (compared < kLeastComparedRows)
            break; // a larger shift compares fewer rows still
        // A shift that can no longer beat the best one, or that can't be good enough, needn't be looked at
        // further.
        const auto allowed = std::ptrdiff_t((1 - std::max(bestScore, kGoodScore)) * double(compared)) + 1;
        std::ptrdiff_t missed = 0;
        for (auto row = telling.cbegin(); row != tellingEnd && missed <= allowed; ++row)
            missed += b[*row] != a[*row + shift];
        if (missed > allowed)
            continue;
        const double score = double(compared - missed) / double(compared);
        if (score > bestScore) {
            bestScore = score;
            bestShift = shift;
        }
        if (score >= kNearPerfectScore)
            break;
    }
    if (bestScore <= kGoodScore)
        return {};
    return Step{.footer = footer, .shift = bestShift, .header = header};
}

std::optional<QImage> FrameStitcher::result() const
{
    if (m_frames.isEmpty())
        return {};
    if (m_frames.size() == 1)
        return m_frames.first().image;

    const QSize frameSize = m_frames.first().image.size();
    qint64 height = frameSize.height();
    bool opaque = true;
    for (const Step &step : m_steps)
        height += step.shift;
    for (const Frame &frame : m_frames)
        opaque = opaque && !frame.image.hasAlphaChannel();
    if (height > std::numeric_limits<int>::max())
        return {};

    const QImage::Format format = opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    QImage tall(frameSize.width(), int(height), format);
    if (tall.isNull())
        return {};
    tall.setDevicePixelRatio(m_frames.first().image.devicePixelRatio());

    int converted = -1; // pieces come frame by frame, so one converted frame at a time is enough
    QImage pixels;
    for (const Piece &piece : piecesOf(frameSize.height(), m_steps)) {
        if (piece.frame != converted) {
            pixels = RowSignatures::comparable(m_frames[piece.frame].image).convertToFormat(format);
            converted = piece.frame;
        }
        copyRows(pixels, piece, tall);
    }
    return tall;
}
