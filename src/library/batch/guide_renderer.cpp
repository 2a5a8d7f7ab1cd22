#include "library/batch/guide_renderer.h"

#include "artwork/fonts.h"
#include "document/effects.h"
#include "document/image_files.h"
#include "document/soft_shadow.h"
#include "library/texts.h"

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

// What the places of a step follow from.
struct Measure {
    QSize image;
    QString caption;
};

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
std::pair<QList<Row>, double> rowsOf(const QList<Measure> &steps, double top, double width)
{
    const double contentWidth = width - 2 * kMargin;
    const double captionWidth = contentWidth - kBadge - kBadgeGap;
    QList<Row> rows;
    for (const Measure &step : steps) {
        const double textHeight = captionHeight(step.caption, captionWidth);
        const double rowHeight = std::max(textHeight, kBadge);
        const double scale = std::min(contentWidth / step.image.width(), 1.0);
        const QSizeF shown = QSizeF(step.image) * scale;
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

// A guide whose steps are drawn one after the other.
class Guide {
public:
    // Nothing for no steps, and where the result would not fit in memory.
    static std::optional<Guide> of(const QString &title, const QList<Measure> &steps, int width)
    {
        if (steps.isEmpty() || width <= 2 * kMargin + kBadge + kBadgeGap ||
            std::any_of(steps.begin(), steps.end(), [](const Measure &step) { return step.image.isEmpty(); }))
            return std::nullopt;
        const double header = title.isEmpty() ? 0 : kHeader;
        auto [rows, end] = rowsOf(steps, header + kMargin, width);
        const double height = end - kStepGap + kMargin;
        constexpr double kTallest = 1 << 24;
        if (height > kTallest)
            return std::nullopt;
        Guide guide{QImage(width, static_cast<int>(std::ceil(height)), QImage::Format_RGB32), std::move(rows),
                    steps};
        if (guide.m_image.isNull())
            return std::nullopt;
        guide.m_image.fill(QColor::fromRgbF(0.97f, 0.97f, 0.97f));
        if (!title.isEmpty()) {
            QPainter painter(&guide.m_image);
            painter.setRenderHint(QPainter::TextAntialiasing);
            drawHeader(painter, title, width);
        }
        return guide;
    }
    void draw(qsizetype index, const QImage &image)
    {
        QPainter painter(&m_image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform |
                               QPainter::TextAntialiasing);
        const Row &row = m_rows[index];
        drawCard(painter, row.image, image);
        drawBadge(painter, row.badge, static_cast<int>(index) + 1);
        painter.setPen(QColor::fromRgbF(0.12f, 0.12f, 0.12f));
        painter.setFont(captionFont());
        painter.drawText(row.caption, kWrapped | Qt::TextDontClip, m_steps[index].caption);
    }
    const QImage &image() const { return m_image; }

private:
    Guide(QImage image, QList<Row> rows, QList<Measure> steps)
        : m_image(std::move(image)), m_rows(std::move(rows)), m_steps(std::move(steps))
    {}

    QImage m_image;
    QList<Row> m_rows;
    QList<Measure> m_steps;
};

} // namespace

std::optional<QImage> GuideRenderer::render(const QString &title, const QList<Step> &steps, int width)
{
    QList<Measure> measures;
    for (const Step &step : steps)
        measures.append({step.image.size(), step.caption});
    auto guide = Guide::of(title, measures, width);
    if (!guide)
        return std::nullopt;
    for (qsizetype i = 0; i < steps.size(); ++i)
        guide->draw(i, steps[i].image);
    return guide->image();
}

Result<Composition> GuideRenderer::renderFiles(const QString &title, const QList<FileStep> &steps, int width,
                                               const Progress &progress)
{
    QStringList paths;
    for (const FileStep &step : steps)
        paths.append(step.path);
    return Composition::of(paths, progress, [&](const QList<Composition::Part> &parts) -> Result<Guide> {
        QList<Measure> measures;
        for (const Composition::Part &part : parts)
            measures.append({part.size, steps[part.index].caption});
        auto guide = Guide::of(title, measures, width);
        return guide ? Result<Guide>(*std::move(guide))
                     : fail(LibraryTexts::tr("Couldn't create the guide."));
    });
}
