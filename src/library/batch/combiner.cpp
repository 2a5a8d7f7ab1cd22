#include "library/batch/combiner.h"

#include "document/image_files.h"
#include "document/soft_shadow.h"
#include "library/texts.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr double kShadowBlur = 12;
constexpr float kShadowOpacity = 0.25f;

// Before the limit of the result's size.
struct Plan {
    QSizeF canvas;
    QList<QRectF> frames;
};

template <typename Measure>
double largest(const QList<QSize> &sizes, Measure measure)
{
    double result = 0;
    for (const QSize &size : sizes)
        result = std::max(result, static_cast<double>(measure(size)));
    return result;
}

Plan inARow(const QList<QSize> &sizes, double spacing)
{
    const double height = largest(sizes, [](const QSize &size) { return size.height(); });
    Plan plan;
    double left = spacing;
    for (const QSize &size : sizes) {
        const double width = size.width() * height / size.height();
        plan.frames.append({left, spacing, width, height});
        left += width + spacing;
    }
    plan.canvas = {left, height + 2 * spacing};
    return plan;
}

Plan stacked(const QList<QSize> &sizes, double spacing)
{
    const double width = largest(sizes, [](const QSize &size) { return size.width(); });
    Plan plan;
    double top = spacing;
    for (const QSize &size : sizes) {
        const double height = size.height() * width / size.width();
        plan.frames.append({spacing, top, width, height});
        top += height + spacing;
    }
    plan.canvas = {width + 2 * spacing, top};
    return plan;
}

Plan inAGrid(const QList<QSize> &sizes, double spacing)
{
    const auto count = static_cast<int>(sizes.size());
    const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
    const int rows = (count + columns - 1) / columns;
    const QSizeF cell(largest(sizes, [](const QSize &size) { return size.width(); }),
                      largest(sizes, [](const QSize &size) { return size.height(); }));
    Plan plan;
    for (int i = 0; i < count; ++i) {
        const QRectF place({spacing + (i % columns) * (cell.width() + spacing),
                            spacing + (i / columns) * (cell.height() + spacing)},
                           cell);
        QRectF frame({}, QSizeF(sizes[i]).scaled(cell, Qt::KeepAspectRatio));
        frame.moveCenter(place.center());
        plan.frames.append(frame);
    }
    plan.canvas = {2 * spacing + columns * cell.width() + (columns - 1) * spacing,
                   2 * spacing + rows * cell.height() + (rows - 1) * spacing};
    return plan;
}

Plan planned(const QList<QSize> &sizes, Combiner::Layout layout, double spacing)
{
    switch (layout) {
    case Combiner::Layout::Horizontal:
        return inARow(sizes, spacing);
    case Combiner::Layout::Vertical:
        return stacked(sizes, spacing);
    case Combiner::Layout::Grid:
        return inAGrid(sizes, spacing);
    }
    Q_UNREACHABLE();
}

// Smoothly also when it becomes many times smaller, which the painter's own filter doesn't do.
void drawScaled(QPainter &painter, const QRectF &frame, const QImage &image)
{
    const QSize size = frame.size().toSize().expandedTo({1, 1});
    if (size.width() >= image.width() || size.height() >= image.height())
        painter.drawImage(frame, image);
    else
        painter.drawImage(frame, image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

} // namespace

QString Combiner::title(Layout layout)
{
    switch (layout) {
    case Layout::Horizontal:
        return LibraryTexts::tr("Side by Side");
    case Layout::Vertical:
        return LibraryTexts::tr("Stacked");
    case Layout::Grid:
        return LibraryTexts::tr("Grid");
    }
    Q_UNREACHABLE();
}

QString Combiner::symbol(Layout layout)
{
    switch (layout) {
    case Layout::Horizontal:
        return QStringLiteral("rectangle.split.3x1");
    case Layout::Vertical:
        return QStringLiteral("rectangle.split.1x2");
    case Layout::Grid:
        return QStringLiteral("rectangle.split.2x2");
    }
    Q_UNREACHABLE();
}

QColor Combiner::white()
{
    return Qt::white;
}

QColor Combiner::dark()
{
    return QColor::fromRgbF(0.12f, 0.12f, 0.12f);
}

std::optional<Combiner::Arrangement> Combiner::arrange(const QList<QSize> &sizes, Layout layout,
                                                       double spacing)
{
    if (sizes.isEmpty() ||
        std::any_of(sizes.begin(), sizes.end(), [](const QSize &size) { return size.isEmpty(); }))
        return std::nullopt;
    const Plan plan = planned(sizes, layout, spacing);
    const double scale = std::min(kLongestEdge / std::max(plan.canvas.width(), plan.canvas.height()), 1.0);
    // Of exact products that binary fractions put just below a whole number, no pixel is lost.
    const auto whole = [scale](double length) { return static_cast<int>(length * scale + 1e-6); };
    Arrangement arrangement{{whole(plan.canvas.width()), whole(plan.canvas.height())}, {}};
    if (arrangement.canvas.isEmpty())
        return std::nullopt;
    for (const QRectF &frame : plan.frames)
        arrangement.frames.append({frame.topLeft() * scale, frame.size() * scale});
    return arrangement;
}

namespace {

// A picture made of others, one after the other.
class Canvas {
public:
    Canvas(const Combiner::Arrangement &arrangement, const std::optional<QColor> &background)
        : m_frames(arrangement.frames),
          m_image(arrangement.canvas, background ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied)
    {
        m_image.fill(background.value_or(QColor(Qt::transparent)));
    }
    void draw(qsizetype index, const QImage &image)
    {
        const QRectF &frame = m_frames[index];
        QPainter painter(&m_image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        const SoftShadow shadow{kShadowBlur, QColor::fromRgbF(0, 0, 0, kShadowOpacity), {}};
        if (image.hasAlphaChannel())
            shadow.paint(painter, frame, [&](QPainter &mask) { mask.drawImage(frame, image); });
        else
            shadow.paintFrame(painter, frame, 0, SoftShadow::Inside::LeftOut);
        drawScaled(painter, frame, image);
    }
    const QImage &image() const { return m_image; }

private:
    QList<QRectF> m_frames;
    QImage m_image;
};

std::unexpected<Error> impossible()
{
    return fail(LibraryTexts::tr("The picture would be too large or too small to be made."));
}

} // namespace

std::optional<QImage> Combiner::combine(const QList<QImage> &images, Layout layout, double spacing,
                                        const std::optional<QColor> &background)
{
    QList<QSize> sizes;
    for (const QImage &image : images)
        sizes.append(image.size());
    const auto arrangement = arrange(sizes, layout, spacing);
    if (!arrangement)
        return std::nullopt;
    Canvas canvas(*arrangement, background);
    for (qsizetype i = 0; i < images.size(); ++i)
        canvas.draw(i, images[i]);
    return canvas.image().isNull() ? std::nullopt : std::optional(canvas.image());
}

Result<Composition> Combiner::combineFiles(const QStringList &paths, Layout layout, double spacing,
                                           const std::optional<QColor> &background, const Progress &progress)
{
    return Composition::of(paths, progress, [&](const QList<Composition::Part> &parts) -> Result<Canvas> {
        QList<QSize> sizes;
        for (const Composition::Part &part : parts)
            sizes.append(part.size);
        const auto arrangement = arrange(sizes, layout, spacing);
        if (!arrangement)
            return impossible();
        Canvas canvas(*arrangement, background);
        return canvas.image().isNull() ? Result<Canvas>(impossible()) : canvas;
    });
}
