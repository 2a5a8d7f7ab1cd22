#include "capture/frame_stitcher.h"

#include "capture/moving_part.h"
#include "capture/pixel_rows.h"
#include "capture/tall_picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int kLeastMovingRows = 17;
constexpr int kLeastComparedRows = 6;
constexpr double kGoodScore = 0.85; // animation or a caret may spoil some rows
constexpr double kNearPerfectScore = 0.999;

constexpr int kLeastTellingRows = 12; // that occur once, or else rows are alike

struct FirstLook {
    FrameStitcher::Step step;
    double score = 0;
};

// Whether rows that occur only once speak for the shift.
bool isDistinct(const RowSignatures &previous, const RowSignatures &next, const FrameStitcher::Step &step)
{
    const int end = int(previous.hashes.size()) - step.footer;
    std::vector<quint64> known(previous.hashes.cbegin() + step.header, previous.hashes.cbegin() + end);
    std::sort(known.begin(), known.end());
    int telling = 0;
    int compared = 0;
    for (int row = step.header; row + step.shift < end && telling < kLeastTellingRows; ++row) {
        if (next.uniform[row])
            continue;
        ++compared;
        if (next.hashes[row] != previous.hashes[row + step.shift])
            continue;
        const auto [first, last] = std::equal_range(known.cbegin(), known.cend(), next.hashes[row]);
        telling += last - first == 1;
    }
    return telling >= std::min(kLeastTellingRows, compared / 2);
}

// Where rows are alike, the shift near `expected` at which all between header and footer fit.
std::optional<int> alikeShift(const RowSignatures &previous, const RowSignatures &next, int header,
                              int footer, double expected)
{
    const int end = int(previous.hashes.size()) - footer;
    const int middle = int(std::lround(expected));
    const auto fits = [&](int shift) {
        int compared = 0;
        for (int row = header; row + shift < end; ++row) {
            if (next.uniform[row])
                continue;
            ++compared;
            if (next.hashes[row] != previous.hashes[row + shift])
                return false;
        }
        return compared >= kLeastComparedRows;
    };
    for (int off = 0; off <= ScrollStep::reachOf(expected); ++off) {
        for (const int shift : {middle - off, middle + off}) {
            if (shift > 0 && end - header - shift >= ScrollStep::kLeastOverlap && fits(shift))
                return shift;
        }
    }
    return {};
}

// Beside content that looks the same, only its scroll bar tells that it moved.
bool hasMovedScrollBar(const QImage &previous, const QImage &next)
{
    const int from = RowSignatures::comparedColumns(next.width());
    for (int y = 0; y < next.height(); ++y) {
        if (!PixelRows::isSame(PixelRows::row(previous, y), PixelRows::row(next, y), from, next.width()))
            return true;
    }
    return false;
}

std::optional<FirstLook> firstLook(const RowSignatures &previous, const RowSignatures &next)
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
    for (int shift = 1; shift < moving && moving - shift >= ScrollStep::kLeastOverlap; ++shift) {
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
    return FirstLook{{.footer = footer, .shift = bestShift, .header = header}, bestScore};
}

} // namespace

// Whether more rows of what scrolled before stand where they stood than went along, as when a highlight
// jumped from one of many icons to another.
bool FrameStitcher::isContradicted(const RowSignatures &rows, const Step &step) const
{
    if (m_steps.isEmpty())
        return false;
    const RowSignatures &before = m_frames.last().rows();
    const int n = int(rows.hashes.size());
    int standing = 0;
    int carried = 0;
    for (int row = m_steps.last().header; row + step.shift < n - m_steps.last().footer; ++row) {
        if (rows.uniform[row])
            continue;
        const bool isCarried = rows.hashes[row] == before.hashes[row + step.shift];
        carried += isCarried;
        standing += !isCarried && rows.hashes[row] == before.hashes[row];
    }
    return standing > carried;
}

bool FrameStitcher::add(const QImage &image, std::optional<double> expected)
{
    const std::optional<ComparedPicture> picture = ComparedPicture::of(image);
    return picture && add(image, *picture, m_frames.isEmpty() ? Sight{} : look(*picture, expected));
}

bool FrameStitcher::add(const QImage &image, const ComparedPicture &picture, const Sight &sight)
{
    if (m_isFull)
        return false;
    if (m_frames.isEmpty()) {
        m_first = image;
        m_height = image.height();
    } else {
        if (!sight.step || image.size() != m_frames.last().pixels().size())
            return false;
        m_isFull = (m_height + sight.step->shift) * image.width() > m_mostPixels;
        if (m_isFull)
            return false;
        m_height += sight.step->shift;
        m_steps.append(*sight.step);
        m_frames.last().dropTiles();
    }
    m_frames.append(picture);
    return true;
}

void FrameStitcher::refresh(const QImage &image, const ComparedPicture &picture)
{
    if (m_frames.isEmpty() || image.size() != m_frames.last().pixels().size())
        return;
    if (m_frames.size() == 1)
        m_first = image;
    m_frames.last() = picture;
}

FrameStitcher::Sight FrameStitcher::look(const ComparedPicture &picture, std::optional<double> expected) const
{
    if (picture.pixels().size() != m_frames.last().pixels().size())
        return {};
    const RowSignatures &before = m_frames.last().rows();
    const RowSignatures &rows = picture.rows();
    if (before.hashes == rows.hashes) {
        if (expected && hasMovedScrollBar(m_frames.last().pixels(), picture.pixels())) {
            if (const std::optional<Step> step = stepByDistance(rows, *expected))
                return {.step = step};
        }
        return {.step = {}, .isStill = true};
    }
    std::optional<FirstLook> first = firstLook(before, rows);
    if (first && isContradicted(rows, first->step))
        first.reset();
    const bool isSure = first && isDistinct(before, rows, first->step);
    if (isSure && first->score >= kNearPerfectScore)
        return {.step = first->step};
    Sight sight;
    sight.step = secondLook(picture, expected, sight.isStill);
    // Where most rows were found again as a whole, parts of them can only tell more exactly what stands.
    if (!first && !sight.step && expected)
        sight.step = stepByDistance(rows, *expected);
    sight.isStill = sight.isStill && !sight.step;
    if (!first || (sight.step && (!isSure || sight.step->shift == first->step.shift)))
        return sight;
    if (isSure)
        return {.step = first->step};
    const auto alike =
        expected ? alikeShift(before, rows, first->step.header, first->step.footer, *expected) : std::nullopt;
    first->step.shift = alike.value_or(first->step.shift);
    first->step.sure = false;
    // Blank rows beside a side bar are alike too, and fit wherever few rows are compared.
    if (expected && first->step.shift > *expected + ScrollStep::reachOf(*expected))
        return sight;
    return {.step = first->step};
}

// What the distance of the clicks says, if all rows agree: those beside what stood before, or all there are.
std::optional<FrameStitcher::Step> FrameStitcher::stepByDistance(const RowSignatures &rows,
                                                                 double expected) const
{
    const Step last = m_steps.isEmpty() ? Step{} : m_steps.last();
    for (Step step : {Step{.footer = last.footer, .header = last.header}, Step{}}) {
        if (const auto shift = alikeShift(m_frames.last().rows(), rows, step.header, step.footer, expected)) {
            step.shift = *shift;
            step.sure = false;
            return step;
        }
    }
    return {};
}

std::optional<FrameStitcher::Step>
FrameStitcher::secondLook(const ComparedPicture &picture, std::optional<double> expected, bool &isStill) const
{
    const ComparedPicture &before = m_frames.last();
    const std::optional<Step> step = MovingPart::find(before, picture, expected);
    const std::optional<Step> pane = m_steps.isEmpty() ? std::nullopt : std::optional(m_steps.last());
    isStill = !step && MovingPart::isStill(before.tiles(), picture.tiles(), pane);
    return step;
}

std::optional<QImage> FrameStitcher::result() const
{
    if (m_frames.isEmpty())
        return {};
    if (m_frames.size() == 1)
        return m_first;
    QList<QImage> images;
    for (const ComparedPicture &frame : m_frames)
        images.append(frame.pixels());
    return TallPicture::compose(images, m_steps);
}
