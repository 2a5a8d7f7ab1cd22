#include "steps/shared_secrets.h"

#include "services/redacted_areas.h"

#include <cstring>

namespace {

// Pixels of a cell: a few of them are a letter of the smallest type.
constexpr int kCell = 4;
// Fewer equal cells may be chance, such as the corner of a frame.
constexpr int kLeastCells = 6;
constexpr int kMargin = 2;
// As long as a guide's windows are; more are pages full of private text, hidden by reading alone.
constexpr qsizetype kMostSecrets = 2000;

QImage uniform(const QImage &image)
{
    return image.convertToFormat(QImage::Format_RGB32);
}

// Whether both show the same there, and something.
bool showsTheSame(const QImage &one, const QImage &other, const QRect &cell)
{
    bool isPlain = true;
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
        const auto *ones = reinterpret_cast<const QRgb *>(one.constScanLine(y)) + cell.left();
        const auto *others = reinterpret_cast<const QRgb *>(other.constScanLine(y)) + cell.left();
        const auto *first = reinterpret_cast<const QRgb *>(one.constScanLine(cell.top())) + cell.left();
        for (int x = 0; x < cell.width(); ++x) {
            if (ones[x] != others[x])
                return false;
            isPlain = isPlain && ones[x] == first[0];
        }
    }
    return !isPlain;
}

QRectF fractions(const QRect &rect, QSize picture)
{
    return {double(rect.x()) / picture.width(), 1 - double(rect.y() + rect.height()) / picture.height(),
            double(rect.width()) / picture.width(), double(rect.height()) / picture.height()};
}

} // namespace

void SharedSecrets::learn(const QImage &picture, const QList<QRectF> &boxes)
{
    for (const QRectF &rect : Redaction::pixelRects(boxes, picture.size())) {
        const QRect place = rect.toAlignedRect() & picture.rect();
        if (place.isEmpty() || m_secrets.size() >= kMostSecrets)
            continue;
        const QImage pixels = uniform(picture.copy(place));
        const bool isKnown = std::ranges::any_of(m_secrets, [&](const Secret &each) {
            return each.picture == picture.size() && each.place == place && each.pixels == pixels;
        });
        if (!isKnown)
            m_secrets.append({picture.size(), place, pixels});
    }
}

bool SharedSecrets::isHidden(const Secret &secret, const QList<QRectF> &own) const
{
    return std::ranges::any_of(Redaction::pixelRects(own, secret.picture), [&](const QRectF &rect) {
        return rect.toAlignedRect().adjusted(-kMargin, -kMargin, kMargin, kMargin).contains(secret.place);
    });
}

bool SharedSecrets::concern(QSize picture, const QList<QRectF> &own) const
{
    return std::ranges::any_of(
        m_secrets, [&](const Secret &secret) { return secret.picture == picture && !isHidden(secret, own); });
}

QList<QRectF> SharedSecrets::remains(const QImage &picture, const QList<QRectF> &own) const
{
    QList<QRectF> boxes;
    for (const Secret &secret : m_secrets) {
        if (secret.picture != picture.size() || isHidden(secret, own + boxes))
            continue;
        const QImage shown = uniform(picture.copy(secret.place));
        QRect rest;
        int cells = 0;
        for (int y = 0; y + kCell <= shown.height(); y += kCell) {
            for (int x = 0; x + kCell <= shown.width(); x += kCell) {
                const QRect cell(x, y, kCell, kCell);
                if (!showsTheSame(secret.pixels, shown, cell))
                    continue;
                rest |= cell;
                ++cells;
            }
        }
        if (cells >= kLeastCells)
            boxes.append(fractions(rest.translated(secret.place.topLeft()), picture.size()));
    }
    return boxes;
}
