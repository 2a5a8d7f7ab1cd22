#pragma once

#include "base/result.h"
#include "library/batch/progress.h"
#include "steps/guide_step.h"

#include <QString>
#include <QStringList>

// A guide as files. Everything here takes seconds and may be called from any thread but the one with the
// event loop; a few pictures are in memory at a time, however long the guide is.
namespace GuideExport {

// What is to leave the program: captions and titles as they are shown, with nothing private in them if
// `guide.redact` is on.
struct Source {
    QString title; // never empty
    Guide guide;
    QStringList captions; // one a step
};
// The title as the name of a file or folder.
QString fileName(const QString &title);
// The finished picture of one step.
Result<QImage> picture(const Source &source, qsizetype index);

// A folder of its own in `directory` with a page, a Markdown text and the pictures. The page's path. What a
// cancelled export has written is removed.
Result<QString> webFolder(const Source &source, const QString &directory, const Progress &progress);

// One page a step, captions as text.
Result<void> pdf(const Source &source, const QString &path, const Progress &progress);
// All steps as one tall numbered picture.
Result<QImage> tallPicture(const Source &source, const Progress &progress);

} // namespace GuideExport
