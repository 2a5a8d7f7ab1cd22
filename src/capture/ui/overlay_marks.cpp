#include "capture/ui/overlay_marks.h"

#include "base/colors.h"
#include "ui/theme.h"

#include <QFontMetricsF>
#include <QPainter>

namespace {

constexpr double kLoupeSize = 120;
constexpr int kLoupePixels = 15;
constexpr double kCell = kLoupeSize / kLoupePixels;
constexpr double kFromPointer = 24;
constexpr double kLoupeTextHeight = 26;
constexpr double kTextUnderLoupe = 6;
constexpr double kBorderWidth = 2;
constexpr double kHintTop = 40;

constexpr QSizeF kBadgePadding{12, 6};
constexpr QSizeF kHintPadding{28, 12};

QFont badgeFont()
{
    return Theme::font(Theme::Type::Control, QFont::DemiBold);
}
QFont hintFont()
{
    return Theme::font(Theme::Type::Body, QFont::Medium);
}

QSizeF badgeSize(const QString &text)
{
    const QFont font = badgeFont();
    return QSizeF(std::ceil(Theme::tabularWidth(font, text)), std::ceil(QFontMetricsF(font).height())) +
           kBadgePadding;
}

// Values that stand for whole pixels, but were divided by a scale such as 1.5 and multiplied again.
double withoutNoise(double pixels)
{
    const double whole = std::round(pixels);
    return std::abs(pixels - whole) < 1e-3 ? whole : pixels;
}

// The cells of a dashed line along `length`, as rectangles across `thickness`.
QList<QRectF> dashes(double length, double thickness, double at, Qt::Orientation orientation,
                     const QRectF &visible)
{
    constexpr double kDash = 5;
    constexpr double kPeriod = kDash + 4;
    const bool horizontal = orientation == Qt::Horizontal;
    const double from = horizontal ? visible.left() : visible.top();
    const double to = std::min(length, horizontal ? visible.right() : visible.bottom());
    QList<QRectF> rects;
    for (double start = std::max(0.0, std::floor((from - kDash) / kPeriod) * kPeriod); start < to;
         start += kPeriod) {
        const double end = std::min(start + kDash, length);
        rects.append(horizontal ? QRectF(start, at, end - start, thickness)
                                : QRectF(at, start, thickness, end - start));
    }
    return rects;
}

struct CrosshairLines {
    QRectF horizontal;
    QRectF vertical;
};

CrosshairLines crosshairLines(const QPointF &pointer, const QSizeF &view, double device)
{
    const double thickness = std::max(1.0, std::round(device));
    const auto onPixels = [&](double at) {
        return (std::floor(withoutNoise(at * device)) - std::floor((thickness - 1) / 2)) / device;
    };
    return {QRectF(0, onPixels(pointer.y()), view.width(), thickness / device),
            QRectF(onPixels(pointer.x()), 0, thickness / device, view.height())};
}

QRect grown(const QRectF &rect, int by)
{
    return rect.toAlignedRect().adjusted(-by, -by, by, by);
}

QRegion border(const QRectF &hole)
{
    constexpr int kWidth = int(kBorderWidth) + 1;
    return QRegion(grown(hole, 1)) - QRegion(hole.toAlignedRect().adjusted(kWidth, kWidth, -kWidth, -kWidth));
}

QRegion outline(const std::optional<OverlayMarks::Badge> &badge)
{
    return badge ? QRegion(grown(badge->rect, 1)) : QRegion();
}
QRegion outline(const std::optional<OverlayMarks::Loupe> &loupe)
{
    return loupe ? QRegion(grown(loupe->circle, 3)) + QRegion(grown(loupe->badge, 1)) : QRegion();
}

} // namespace

OverlayLayout::OverlayLayout(const QSizeF &view, const QImage &picture)
    : m_view(view), m_picture(picture), m_scale(picture.width() / std::max(1.0, view.width()))
{}

QRect OverlayLayout::pixels(const QRectF &rect) const
{
    const int left = int(std::floor(withoutNoise(rect.left() * m_scale)));
    const int top = int(std::floor(withoutNoise(rect.top() * m_scale)));
    const int right = int(std::ceil(withoutNoise(rect.right() * m_scale)));
    const int bottom = int(std::ceil(withoutNoise(rect.bottom() * m_scale)));
    return {left, top, right - left, bottom - top};
}

QRectF OverlayLayout::keptInside(const QRectF &rect) const
{
    constexpr double kMargin = 6;
    QRectF inside = rect;
    if (inside.right() > m_view.width())
        inside.moveRight(std::max(m_view.width() - kMargin, inside.width()));
    if (inside.bottom() > m_view.height())
        inside.moveBottom(m_view.height() - kMargin);
    return inside;
}

OverlayMarks::Badge OverlayLayout::sizeBadge(const QRectF &hole) const
{
    const QString text = QStringLiteral("%1 × %2")
                             .arg(int(withoutNoise(hole.width() * m_scale)))
                             .arg(int(withoutNoise(hole.height() * m_scale)));
    const double y = hole.top() > 30 ? hole.top() - 26 : hole.bottom() + 6;
    QRectF rect = keptInside(QRectF(QPointF(hole.left(), y), badgeSize(text)));
    // A hole that fills the view has its badge inside, clear of its border.
    if (rect.intersects(hole) && rect.left() == hole.left())
        rect.translate(kBorderWidth + 4, 0);
    return {rect, text};
}

OverlayMarks::Badge OverlayLayout::hint(const QString &text) const
{
    const QFontMetricsF metrics(hintFont());
    const QSizeF size =
        QSizeF(std::ceil(metrics.horizontalAdvance(text)), std::ceil(metrics.height())) + kHintPadding;
    return {QRectF(QPointF(std::round((m_view.width() - size.width()) / 2), kHintTop), size), text};
}

std::optional<OverlayMarks::Loupe> OverlayLayout::loupe(const QPointF &pointer) const
{
    const int px = int(withoutNoise(pointer.x() * m_scale));
    const int py = int(withoutNoise(pointer.y() * m_scale));
    constexpr int kReach = kLoupePixels / 2;
    const QRect sample(px - kReach, py - kReach, kLoupePixels, kLoupePixels);
    if (!m_picture.rect().contains(sample))
        return {};

    double x = pointer.x() + kFromPointer;
    if (x + kLoupeSize > m_view.width())
        x = pointer.x() - kFromPointer - kLoupeSize;
    double y = pointer.y() + kFromPointer;
    if (y + kLoupeSize + kLoupeTextHeight > m_view.height())
        y = pointer.y() - kFromPointer - kLoupeSize - kLoupeTextHeight;

    const QImage crop = m_picture.copy(sample);
    const QString text =
        QStringLiteral("%1, %2 %3").arg(px).arg(py).arg(crop.pixelColor(kReach, kReach).name().toUpper());
    const QRectF badge(QPointF(x, y + kLoupeSize + kTextUnderLoupe), badgeSize(text));
    return OverlayMarks::Loupe{QRectF(x, y, kLoupeSize, kLoupeSize), crop, keptInside(badge), text};
}

namespace OverlayDrawing {

QRegion crosshairRegion(const QPointF &pointer, const QSize &view, double device)
{
    const CrosshairLines lines = crosshairLines(pointer, view, device);
    return QRegion(lines.horizontal.toAlignedRect()) + QRegion(lines.vertical.toAlignedRect());
}

QRegion difference(const OverlayMarks &from, const OverlayMarks &to, const QSize &view, double device)
{
    QRegion changed;
    if (from.hole != to.hole) {
        QRegion before;
        QRegion after;
        if (from.hole) {
            before = from.hole->toAlignedRect();
            changed += border(*from.hole);
        }
        if (to.hole) {
            after = to.hole->toAlignedRect();
            changed += border(*to.hole);
        }
        changed += before ^ after;
    }
    if (from.size != to.size)
        changed += outline(from.size) + outline(to.size);
    if (from.hint != to.hint)
        changed += outline(from.hint) + outline(to.hint);
    if (from.loupe != to.loupe)
        changed += outline(from.loupe) + outline(to.loupe);
    if (from.crosshair != to.crosshair) {
        for (const std::optional<QPointF> &crosshair : {from.crosshair, to.crosshair}) {
            if (crosshair)
                changed += crosshairRegion(*crosshair, view, device);
        }
    }
    return changed;
}

void drawHoleBorder(QPainter &painter, const QRectF &hole)
{
    const double width = std::min({kBorderWidth, hole.width(), hole.height()});
    const QColor accent = brandColor();
    painter.fillRect(QRectF(hole.left(), hole.top(), hole.width(), width), accent);
    painter.fillRect(QRectF(hole.left(), hole.bottom() - width, hole.width(), width), accent);
    painter.fillRect(QRectF(hole.left(), hole.top(), width, hole.height()), accent);
    painter.fillRect(QRectF(hole.right() - width, hole.top(), width, hole.height()), accent);
}

void drawBadge(QPainter &painter, const OverlayMarks::Badge &badge)
{
    constexpr double kRadius = 4;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brandColor());
    painter.drawRoundedRect(badge.rect, kRadius, kRadius);
    painter.setFont(badgeFont());
    painter.setPen(Qt::white);
    Theme::drawTabular(painter, badge.rect.adjusted(kBadgePadding.width() / 2, 0, 0, 0), Qt::AlignLeft,
                       badge.text);
}

void drawHint(QPainter &painter, const OverlayMarks::Badge &hint)
{
    constexpr double kRadius = 8;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, 0.7f));
    painter.drawRoundedRect(hint.rect, kRadius, kRadius);
    painter.setFont(hintFont());
    painter.setPen(Qt::white);
    painter.drawText(hint.rect, Qt::AlignCenter, hint.text);
}

void drawCrosshair(QPainter &painter, const QPointF &pointer, const QSize &view, double device,
                   const QRectF &visible)
{
    const CrosshairLines lines = crosshairLines(pointer, view, device);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    // White between dashes that are dark enough: on any ground one of the two has a contrast of 3.
    constexpr int kDarker = 165;
    painter.fillRect(lines.horizontal, Qt::white);
    painter.fillRect(lines.vertical, Qt::white);
    painter.setBrush(brandColor().darker(kDarker));
    painter.drawRects(
        dashes(view.width(), lines.horizontal.height(), lines.horizontal.top(), Qt::Horizontal, visible));
    painter.drawRects(
        dashes(view.height(), lines.vertical.width(), lines.vertical.left(), Qt::Vertical, visible));
}

void drawLoupe(QPainter &painter, const OverlayMarks::Loupe &loupe)
{
    constexpr double kRing = 3;
    constexpr double kCentreLine = 1.5;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    // As a texture, because a clip to a circle would have ragged edges.
    QBrush pixels(loupe.crop);
    pixels.setTransform(
        QTransform::fromTranslate(loupe.circle.left(), loupe.circle.top()).scale(kCell, kCell));
    painter.setBrush(pixels);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(loupe.circle);

    const double toCentre = (kLoupeSize - kCell) / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(brandColor(), kCentreLine, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(QRectF(loupe.circle.topLeft() + QPointF(toCentre, toCentre), QSizeF(kCell, kCell)));
    // A thin shadow keeps the white ring in sight over a white page.
    painter.setPen(QPen(QColor(0, 0, 0, 70), kRing + 2));
    painter.drawEllipse(loupe.circle);
    painter.setPen(QPen(Qt::white, kRing));
    painter.drawEllipse(loupe.circle);
    drawBadge(painter, {loupe.badge, loupe.text});
}

} // namespace OverlayDrawing
