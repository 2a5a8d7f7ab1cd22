#pragma once

#include "document/annotation.h"

#include <QRandomGenerator>
#include <QSizeF>
#include <cmath>

// Objects for benchmarks of drawing: the same ones in every run.

inline QList<ToolKind> everyKind()
{
    return {ToolKind::Arrow,     ToolKind::Rectangle, ToolKind::Ellipse, ToolKind::Line,    ToolKind::Pen,
            ToolKind::Highlight, ToolKind::Text,      ToolKind::Callout, ToolKind::Step,    ToolKind::Stamp,
            ToolKind::Blur,      ToolKind::Spotlight, ToolKind::Magnify, ToolKind::Measure, ToolKind::Image};
}

// `count` objects of these kinds in turn, in every style, over four fifths of a picture of `size` pixels.
inline QList<Annotation> mixedObjects(int count, const QSizeF &size, const QList<ToolKind> &kinds)
{
    QRandomGenerator random(7);
    const auto within = [&](double low, double high) { return low + random.generateDouble() * (high - low); };
    QImage picture(400, 300, QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor(90, 160, 120));
    QList<Annotation> objects;
    for (int i = 0; i < count; ++i) {
        Annotation a;
        a.id = QUuid::createUuid();
        a.kind = kinds[i % kinds.size()];
        a.start = {within(0, size.width() * 0.8), within(0, size.height() * 0.8)};
        a.end = a.start + QPointF(within(150, 600), within(80, 350));
        a.color = QColor::fromHsv(i * 37 % 360, 220, 230);
        a.lineWidth = within(3, 14);
        const int styles = static_cast<int>(Tools::styles(a.kind).size());
        a.style = styles ? i / static_cast<int>(kinds.size()) % styles : 0;
        a.font = i % 5;
        a.number = i;
        if (Tools::holdsText(a.kind))
            a.text = "Look here, this matters";
        if (a.kind == ToolKind::Stamp)
            a.text = QStringList{"sym:checkmark.circle.fill", "emoji:🎉", "key:⌘"}[i % 3];
        if (a.kind == ToolKind::Pen) {
            for (int k = 0; k < 200; ++k)
                a.points.append(a.start + QPointF(k * 2, 60 * std::sin(k * 0.1)));
        }
        if (a.kind == ToolKind::Image)
            a.image = picture;
        objects.append(a);
    }
    return objects;
}
