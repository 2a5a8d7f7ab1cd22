#include "platform/recognition/page_reading.h"

#include "platform/recognition/blanks.h"
#include "platform/recognition/code_signs.h"
#include "platform/recognition/shape_vote.h"
#include "platform/recognition/sign_alignment.h"
#include "platform/recognition/sign_rules.h"

void mend(const QImage &ink, std::vector<ReadLine> &lines)
{
    measure(lines);
    for (ReadLine &line : lines) {
        align(line);
        dropSecondReadings(line);
        restoreUnderscores(line);
        mendCodeSigns(ink, line);
        placeBlanks(line);
    }
    voteByShape(ink, lines);
    mendLookalikes(ink, lines);
    for (ReadLine &line : lines)
        mendCodeWords(ink, line);
}

bool isIcon(const ReadLine &line)
{
    constexpr size_t kMostSigns = 2;
    constexpr double kDoubt = 0.95;
    constexpr double kDoubtOfSigns = 0.99; // that are neither letter nor digit
    if (line.signs.size() > kMostSigns)
        return false;
    double confidence = 0;
    bool isWord = false;
    for (const ReadSign &sign : line.signs) {
        confidence += sign.confidence / double(line.signs.size());
        isWord |= !sign.text.isEmpty() && sign.text[0].isLetterOrNumber();
    }
    return confidence < (isWord ? kDoubt : kDoubtOfSigns);
}

namespace {

// The ink of each sign in pixels. Together they hold all ink of the line: signs that touch share their
// piece, and a piece that no sign was paired with belongs to the nearest.
std::vector<QRectF> inkBoxes(const ReadLine &line)
{
    std::vector<QRectF> boxes;
    for (const ReadSign &sign : line.signs)
        boxes.push_back(sign.isAlone ? QRectF(line.cells[size_t(sign.cell)]) : sign.box);
    std::vector<bool> isTaken(line.cells.size(), false);
    for (size_t from = 0; from < boxes.size();) {
        const int c = line.signs[from].cell;
        size_t to = from + 1;
        while (c >= 0 && to < boxes.size() && line.signs[to].cell == c)
            ++to;
        if (c >= 0)
            isTaken[size_t(c)] = true;
        if (to - from > 1) { // stretched together over their piece
            const QRectF cell(line.cells[size_t(c)]);
            const double left = boxes[from].left();
            const double stretch = cell.width() / std::max(1.0, boxes[to - 1].right() - left);
            for (size_t s = from; s < to; ++s)
                boxes[s] = QRectF(cell.left() + (boxes[s].left() - left) * stretch, boxes[s].top(),
                                  boxes[s].width() * stretch, boxes[s].height());
        }
        from = to;
    }
    if (boxes.empty())
        return boxes;
    for (size_t c = 0; c < line.cells.size(); ++c) {
        if (isTaken[c])
            continue;
        const QRectF cell(line.cells[c]);
        for (const double x : {cell.left(), cell.right()}) {
            const auto nearest = std::ranges::min_element(boxes, {}, [x](const QRectF &box) {
                return std::max({0.0, box.left() - x, x - box.right()});
            });
            // No farther than a letter: what lies beyond was read as nothing.
            nearest->setLeft(std::min(nearest->left(), std::max(x, nearest->left() - line.capHeight)));
            nearest->setRight(std::max(nearest->right(), std::min(x, nearest->right() + line.capHeight)));
        }
    }
    return boxes;
}

} // namespace

RecognizedLine recognizedLine(const ReadLine &line, QSize picture, QPoint offset)
{
    const double width = picture.width();
    const double height = picture.height();
    // Usual fonts reach a quarter of a capital's height above it, and a third below the baseline.
    const double highest = line.baseline - 1.25 * line.capHeight;
    const double lowest = line.baseline + 0.33 * line.capHeight;
    const auto normalized = [&](const QRectF &box) {
        const double upper = std::max(0.0, std::min(box.top(), highest) + offset.y());
        const double lower = std::min(height, std::max(box.bottom(), lowest) + offset.y());
        return QRectF((box.x() + offset.x()) / width, 1 - lower / height, box.width() / width,
                      (lower - upper) / height);
    };
    RecognizedLine result;
    result.box = normalized(line.region.box);
    double confidence = 0;
    const std::vector<QRectF> boxes = inkBoxes(line);
    for (size_t s = 0; s < line.signs.size(); ++s) {
        const ReadSign &sign = line.signs[s];
        if (sign.blankBefore) {
            result.text += ' ';
            result.characters.append(QRectF());
        }
        result.text += sign.text;
        const QRectF box = normalized(boxes[s]);
        for (qsizetype i = 0; i < sign.text.size(); ++i)
            result.characters.append(box);
        confidence += sign.confidence;
    }
    if (!line.signs.empty())
        result.confidence = confidence / double(line.signs.size());
    return result;
}
