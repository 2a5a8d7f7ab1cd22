#pragma once

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

constexpr int standardWidth = 1400;

// `width` in pixels. Nothing for no steps, and where the result would not fit in memory.
std::optional<QImage> render(const QString &title, const QList<Step> &steps, int width = standardWidth);

} // namespace GuideRenderer
