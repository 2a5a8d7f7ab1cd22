#include "library/batch/guide_renderer.h"

#include "artwork/fonts.h"
#include "document/effects.h"
#include "document/soft_shadow.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

// All lengths are pixels.
namespace {

constexpr double kHeader = 150;
constexpr double kMargin = 60;
constexpr double kBadge = 52;
constexpr double kBadgeGap = 20;
constexpr double kCaptionLeft = kMargin + kBadge + kBadgeGap;
constexpr double kImageGap = 20;
constexpr double kStepGap = 56;
constexpr double kTallestCaption = 10000;
constexpr double kCardRadius = 12;
constexpr int kWrapped = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

struct Row {
    QRectF badge;
    QRectF caption; // empty without one
    QRectF image;
};

QFont captionFont()
{
    return Fonts::font(Fonts::Design::System, 26, QFont::DemiBold);
}

double captionHeight(const QString &caption, double width)
{
    if (caption.isEmpty())
        return 0;
    const QRectF room(0, 0, width, kTallestCaption);
    return std::ceil(QFontMetricsF(captionFont()).boundingRect(room, kWrapped, caption).height());
}

// The rows from `top` on; the second value is where the next would begin.
std::pair<QList<Row>, double> rowsOf(const QList<GuideRenderer::Step> &steps, double top, double width)
{
    const double contentWidth = width - 2 * kMargin;
    const double captionWidth = contentWidth - kBadge - kBadgeGap;
    QList<Row> rows;
    for (const GuideRenderer::Step &step : steps) {
        const double textHeight = captionHeight(step.caption, captionWidth);
        const double rowHeight = std::max(textHeight, kBadge);
        const double scale = std::min(contentWidth / step.image.width(), 1.0);
        const QSizeF shown = QSizeF(step.image.size()) * scale;
        Row row;
        row.badge = {kMargin, top + (rowHeight - kBadge) / 2, kBadge, kBadge};
        if (textHeight > 0)
            row.caption = {kCaptionLeft, top + (rowHeight - textHeight) / 2, captionWidth, textHeight};
        row.image = {{kMargin + (contentWidth - shown.width()) / 2, top + rowHeight + kImageGap}, shown};
        rows.append(row);
        top = row.image.bottom() + kStepGap;
    }
    return {rows, top};
}

void drawHeader(QPainter &painter, const QString &title, double width)
{
    const QRectF band(0, 0, width, kHeader);
    const Effects::Backdrop &colors = Effects::backdrops().front();
    QLinearGradient gradient(band.topLeft(), band.topRight());
    gradient.setColorAt(0, colors.first);
    gradient.setColorAt(1, colors.second);
    painter.fillRect(band, gradient);
    const QRectF line = band.adjusted(kMargin, 46, -kMargin, -46);
    painter.setPen(Qt::white);
    painter.setFont(Fonts::font(Fonts::Design::System, 46, QFont::Bold));
    const QString shown =
        painter.fontMetrics().elidedText(title.simplified(), Qt::ElideRight, static_cast<int>(line.width()));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, shown);
}

void drawCard(QPainter &painter, const QRectF &frame, const QImage &image)
{
    const SoftShadow shadow{24, QColor::fromRgbF(0, 0, 0, 0.22f), {0, 6}};
    shadow.paintFrame(painter, frame, kCardRadius, SoftShadow::Inside::Painted);
    QPainterPath card;
    card.addRoundedRect(frame, kCardRadius, kCardRadius);
    painter.fillPath(card, Qt::white);
    // A brush has soft edges along the rounded corners, a clip has not.
    const QSize size = frame.size().toSize().expandedTo({1, 1});
    const QImage shown = size.width() < image.width()
                             ? image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             : image;
    QBrush brush(shown);
    brush.setTransform(QTransform::fromTranslate(frame.x(), frame.y())
                           .scale(frame.width() / shown.width(), frame.height() / shown.height()));
    painter.fillPath(card, brush);
}

void drawBadge(QPainter &painter, const QRectF &frame, int number)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0.45f, 0.38f, 0.98f));
    painter.drawEllipse(frame);
    painter.setPen(Qt::white);
    painter.setFont(Fonts::font(Fonts::Design::System, 26, QFont::Black));
    painter.drawText(frame, Qt::AlignCenter | Qt::TextDontClip, QString::number(number));
}

} // namespace

std::optional<QImage> GuideRenderer::render(const QString &title, const QList<Step> &steps, int width)
{
    if (steps.isEmpty() || width <= 2 * kMargin + kBadge + kBadgeGap ||
        std::any_of(steps.begin(), steps.end(), [](const Step &step) { return step.image.isNull(); }))
        return std::nullopt;
    const double header = title.isEmpty() ? 0 : kHeader;
    const auto [rows, end] = rowsOf(steps, header + kMargin, width);
    const double height = end - kStepGap + kMargin;
    constexpr double Tallest = 1 << 24;
    if (height > Tallest)
        return std::nullopt;
    QImage guide(width, static_cast<int>(std::ceil(height)), QImage::Format_RGB32);
    if (guide.isNull())
        return std::nullopt;
    guide.fill(QColor::fromRgbF(0.97f, 0.97f, 0.97f));
    QPainter painter(&guide);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform |
                           QPainter::TextAntialiasing);
    if (!title.isEmpty())
        drawHeader(painter, title, width);
    for (qsizetype i = 0; i < steps.size(); ++i) {
        drawCard(painter, rows[i].image, steps[i].image);
        drawBadge(painter, rows[i].badge, static_cast<int>(i) + 1);
        painter.setPen(QColor::fromRgbF(0.12f, 0.12f, 0.12f));
        painter.setFont(captionFont());
        painter.drawText(rows[i].caption, kWrapped | Qt::TextDontClip, steps[i].caption);
    }
    return guide;
}
