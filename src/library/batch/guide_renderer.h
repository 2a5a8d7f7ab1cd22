#pragma once

#include "base/result.h"
#include "library/batch/composition.h"

#include <QImage>
#include <QList>
#include <QString>
#include <optional>

// A tall, numbered guide: a title on a coloured band, then a numbered caption and a picture for each step.
namespace GuideRenderer {

struct Step {
    QImage image;
    QString caption; // may be empty
};

constexpr int kStandardWidth = 1400;

// `width` in pixels. Nothing for no steps, and where the result would not fit in memory.
std::optional<QImage> render(const QString &title, const QList<Step> &steps, int width = kStandardWidth);

struct FileStep {
    QString path;
    QString caption;
};
// The same for files, one after the other. What is no picture is left out.
Result<Composition> renderFiles(const QString &title, const QList<FileStep> &steps,
                                int width = kStandardWidth, const Progress &progress = {});

} // namespace GuideRenderer
