#include "document/stroke_mask.h"

#include "document/renderer.h"
#include "pixels.h"
#include "support/pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <ctime>
#include <gtest/gtest.h>

namespace {

QImage mask(const QSize &size)
{
    QImage image(size, QImage::Format_Alpha8);
    image.fill(0);
    return image;
}

QPolygonF walk(QRandomGenerator &random, int count, const QRectF &within)
{
    QPolygonF line;
    for (int i = 0; i < count; ++i)
        line.append(within.topLeft() + QPointF(random.generateDouble() * within.width(),
                                               random.generateDouble() * within.height()));
    return line;
}

QImage drawn(const QSize &size, const QList<Annotation> &objects)
{
    const QImage base = filled(size, Qt::darkGray);
    return Renderer::flattened(base, Renderer::pixelated(base), objects);
}

// How many pixels two masks differ in by more than `tolerance`, of 255.
int differences(const QImage &a, const QImage &b, int tolerance)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += std::abs(a.constScanLine(y)[x] - b.constScanLine(y)[x]) > tolerance;
    }
    return count;
}

} // namespace

TEST(StrokeMask, CoversWhatARoundPenTouches)
{
    QRandomGenerator random(11);
    const QTransform toMask = QTransform::fromTranslate(-20, 5) * QTransform::fromScale(1.5, 1.5);
    for (const double width : {0.5, 1.0, 3.0, 12.0, 90.0}) {
        const QPolygonF line = walk(random, 9, {-50, -50, 350, 250});
        QImage seen = mask({300, 200});
        strokeMask(seen, toMask, {line, {QPointF(120, 60)}}, width);

        QImage expected = mask(seen.size());
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(toMask);
        QPainterPath path;
        path.addPolygon(line);
        path.moveTo(120, 60);
        path.lineTo(120.0001, 60);
        painter.strokePath(path, QPen(Qt::white, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.end();
        // Crossing edges and hairlines may share a pixel in another way.
        EXPECT_LT(differences(seen, expected, 40), 120) << "width " << width;
        EXPECT_GT(differences(seen, mask(seen.size()), 100), 100) << "width " << width;
    }
}

TEST(StrokeMask, FinishesForLinesThatCrossThemselvesThousandsOfTimes)
{
    QRandomGenerator random(3);
    Annotation pen = object(ToolKind::Pen, {}, {}, 12);
    pen.points = walk(random, 20000, {0, 0, 1920, 1080});
    QList<Annotation> objects{pen};
    for (int i = 0; i < 240; ++i) {
        const QPolygonF ends = walk(random, 2, {-1e9, -1e9, 2e9, 2e9});
        const ToolKind kind = Tools::kAll[i % Tools::kAll.size()];
        objects.append(object(kind, ends[0], ends[1], 12, i % 4));
        objects.last().text = "Text";
        objects.last().lineWidth = i % 2 ? 1000 : 40;
        objects.last().points = walk(random, 30, {-1e9, -1e9, 2e9, 2e9});
    }
    const std::clock_t begin = std::clock(); // what others do on the machine doesn't count
    EXPECT_EQ(drawn({1920, 1080}, objects).size(), QSize(1920, 1080));
    EXPECT_LT((std::clock() - begin) / CLOCKS_PER_SEC, 30); // minutes where time grows with the crossings
}

TEST(Renderer, AnObjectThatReachesFarOutLooksLikeItsPartInALargerPicture)
{
    // In the small picture the outlines are cut, in the large one they aren't.
    const QSize small(160, 120);
    const QSize large(9000, 700);
    QList<Annotation> objects{
        object(ToolKind::Arrow, {20, 30}, {8000, 400}, 12),
        object(ToolKind::Arrow, {8000, 90}, {60, 60}, 12, 2),
        object(ToolKind::Line, {-10, 10}, {8500, 600}, 12),
        object(ToolKind::Rectangle, {40, 40}, {8000, 600}, 12),
        object(ToolKind::Rectangle, {40, 40}, {8000, 600}, 12, 1),
        object(ToolKind::Rectangle, {40, 40}, {8000, 600}, 12, 2),
        object(ToolKind::Ellipse, {20, -300}, {8000, 400}, 12),
        object(ToolKind::Callout, {20, 20}, {120, 90}, 12, 1),
        object(ToolKind::Magnify, {20, -300}, {8000, 400}, 12),
    };
    objects[7].points = {QPointF(8000, 300)};
    for (const Annotation &a : objects) {
        const QImage part = drawn(large, {a}).copy(QRect(QPoint(), small));
        const QImage seen = drawn(small, {a});
        int differing = 0;
        for (int y = 0; y < small.height(); ++y) {
            for (int x = 0; x < small.width(); ++x)
                differing += !isNear(seen.pixel(x, y), part.pixel(x, y), 24);
        }
        EXPECT_LT(differing, 40) << Tools::rawValue(a.kind).toStdString() << " " << a.style;
        EXPECT_NE(part, drawn(small, {})) << Tools::rawValue(a.kind).toStdString() << " " << a.style;
    }
}
