#include "artwork/fonts.h"
#include "base/atomic_file.h"
#include "document/image_files.h"
#include "library/batch/exporter.h"
#include "library/texts.h"

#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>

// Measures of a page in points.
namespace {

constexpr double kMargin = 40;
constexpr double kWidestFit = 1400;
constexpr double kTitleHeight = 50;
constexpr double kCaptionHeight = 70;
constexpr double kTitleTop = 40;
constexpr double kTitleLine = 34;

// What shows through is the paper.
QImage onPaper(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, image);
    return flat;
}

void setPage(QPdfWriter &writer, const QSizeF &page)
{
    writer.setPageLayout(QPageLayout(QPageSize(page, QPageSize::Point, {}, QPageSize::ExactMatch),
                                     QPageLayout::Portrait, {}, QPageLayout::Point));
}

void drawPage(QPainter &painter, const Exporter::PageLayout &layout, const QImage &image,
              const QString &title, const QString &caption)
{
    painter.drawImage(layout.image, image);
    if (!title.isEmpty()) {
        painter.setPen(Qt::black);
        painter.setFont(Fonts::font(Fonts::Design::System, 22, QFont::Bold));
        const QString line = painter.fontMetrics().elidedText(title.simplified(), Qt::ElideRight,
                                                              static_cast<int>(layout.title.width()));
        painter.drawText(layout.title, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine, line);
    }
    if (!caption.isEmpty()) {
        painter.setPen(Qt::darkGray);
        painter.setFont(Fonts::font(Fonts::Design::System, 12, QFont::Normal));
        painter.drawText(layout.caption,
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere | Qt::TextWordWrap, caption);
    }
}

} // namespace

QString Exporter::title(PageSize size)
{
    switch (size) {
    case PageSize::Fit:
        return LibraryTexts::tr("Fit Each Image");
    case PageSize::Letter:
        return LibraryTexts::tr("US Letter");
    case PageSize::A4:
        return QStringLiteral("A4");
    }
    Q_UNREACHABLE();
}

Exporter::PdfPage Exporter::pageOfFile(const QString &path, const QString &caption)
{
    return {[path] { return ImageFiles::read(path); }, caption};
}

Exporter::PageLayout Exporter::layout(const QSizeF &imageSize, bool hasTitle, bool hasCaption, PageSize size)
{
    const double titleHeight = hasTitle ? kTitleHeight : 0;
    const double captionHeight = hasCaption ? kCaptionHeight : 0;
    PageLayout layout;
    switch (size) {
    case PageSize::Fit: {
        const double scale = std::min(kWidestFit / imageSize.width(), 1.0);
        layout.page = {imageSize.width() * scale + 2 * kMargin,
                       imageSize.height() * scale + 2 * kMargin + titleHeight + captionHeight};
        break;
    }
    case PageSize::Letter:
        layout.page = {612, 792};
        break;
    case PageSize::A4:
        layout.page = {595, 842};
        break;
    }
    const double width = layout.page.width() - 2 * kMargin;
    const QRectF area(kMargin, kMargin + titleHeight, width,
                      layout.page.height() - 2 * kMargin - titleHeight - captionHeight);
    const double scale = std::min(area.width() / imageSize.width(), area.height() / imageSize.height());
    const QSizeF shown = imageSize * scale;
    layout.image = {{area.center().x() - shown.width() / 2, area.top()}, shown};
    if (hasTitle)
        layout.title = {kMargin, kTitleTop, width, kTitleLine};
    if (hasCaption)
        layout.caption = {kMargin, layout.page.height() - kMargin - (kCaptionHeight - 10), width,
                          kCaptionHeight - 10};
    return layout;
}

Result<void> Exporter::pdf(const QList<PdfPage> &pages, const QString &title, PageSize size,
                           const QString &path, const Progress &progress)
{
    const auto count = static_cast<int>(pages.size());
    if (count == 0)
        return fail(Error::Kind::Invalid, LibraryTexts::tr("There are no pictures for the PDF."));
    std::optional<Error> problem;
    const auto fill = [&](QIODevice &device) {
        QPdfWriter writer(&device);
        writer.setResolution(72); // a unit is a point
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("Lumenpost"));
        QPainter painter;
        for (int i = 0; i < count; ++i) {
            auto image = pages[i].image();
            if (!image) {
                problem = image.error();
                return false;
            }
            const QString pageTitle = i == 0 ? title : QString();
            const PageLayout measures =
                layout(image->size(), !pageTitle.isEmpty(), !pages[i].caption.isEmpty(), size);
            setPage(writer, measures.page);
            const bool begun = i == 0 ? painter.begin(&writer) : writer.newPage();
            if (!begun)
                return false;
            painter.setRenderHints(QPainter::LosslessImageRendering | QPainter::SmoothPixmapTransform);
            drawPage(painter, measures, onPaper(*image), pageTitle, pages[i].caption);
            if (!goesOn(progress, i + 1, count)) {
                problem = cancelled().error();
                return false;
            }
        }
        return painter.end();
    };
    auto written = AtomicFile::write(path, fill);
    if (problem)
        return std::unexpected(*problem);
    return written;
}
