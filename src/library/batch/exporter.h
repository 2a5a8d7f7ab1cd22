#pragma once

#include "base/result.h"
#include "library/batch/progress.h"

#include <QImage>
#include <QList>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>

// In the order of the picker.
enum class ExportFormat { Original, Png, Jpg, Heic };

// What leaves the Library in bulk: files into a folder, re-encoded and scaled if asked, and pictures as the
// pages of a PDF. Callable from any thread but the one that paints.
namespace Exporter {

constexpr std::array kFormats{ExportFormat::Original, ExportFormat::Png, ExportFormat::Jpg,
                              ExportFormat::Heic};
QString title(ExportFormat format);

struct Outcome {
    QStringList paths;         // what was written, in the order of the files
    QList<Error> failures;     // one for each file that could not be
    bool wasCancelled = false; // what was written before stays
};
// Copies or converts files into `folder`, under free names. Films are copied as they are, whatever the
// format. `maxDimension` bounds the longer edge in pixels; nothing is enlarged. Works on as many threads as
// the machine has cores.
Outcome exportFiles(const QStringList &paths, const QString &folder, ExportFormat format,
                    std::optional<int> maxDimension, const Progress &progress = {});

enum class PageSize { Fit, Letter, A4 };
constexpr std::array kPageSizes{PageSize::Fit, PageSize::Letter, PageSize::A4};
QString title(PageSize size);

// One page: the picture is asked for when its page comes and dropped after it.
struct PdfPage {
    std::function<Result<QImage>()> image;
    QString caption;
};
PdfPage pageOfFile(const QString &path, const QString &caption = {});

// The page's measures in points, origin top left.
struct PageLayout {
    QSizeF page;
    QRectF image;
    QRectF title;   // empty without one
    QRectF caption; // likewise
};
PageLayout layout(const QSizeF &imageSize, bool hasTitle, bool hasCaption, PageSize size);

// One page a picture, the title on the first; pictures lossless, titles and captions as text. Memory doesn't
// grow with the pages. A page whose picture can't be had fails the whole, and nothing is written.
Result<void> pdf(const QList<PdfPage> &pages, const QString &title, PageSize size, const QString &path,
                 const Progress &progress = {});

} // namespace Exporter
