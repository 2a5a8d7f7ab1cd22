#include "canvas_fixture.h"
#include "editor/canvas_painter.h"

#include <QPainter>
#include <QRandomGenerator>

namespace {

QImage shown(const CanvasPainter &painter, const CanvasPainter::Scene &scene)
{
    QImage image((scene.viewport.view * scene.viewport.backing).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scene.viewport.backing);
    image.fill(Qt::magenta);
    QPainter p(&image);
    painter.paint(p);
    return image;
}

// The largest difference of a channel between two pictures; edges of shapes may differ by a rounding.
int difference(const QImage &a, const QImage &b)
{
    int worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto *first = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *second = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            worst = std::max({worst, std::abs(qRed(first[x]) - qRed(second[x])),
                              std::abs(qGreen(first[x]) - qGreen(second[x])),
                              std::abs(qBlue(first[x]) - qBlue(second[x]))});
        }
    }
    return worst;
}

class CanvasPainterTest : public CanvasTest, public testing::WithParamInterface<double> {
protected:
    CanvasPainter::Scene scene() const { return CanvasPainter::Scene::of(document, canvas); }
    QColor pixel(const QImage &image, double x, double y) const
    {
        return image.pixelColor((at(x, y) * image.devicePixelRatio()).toPoint());
    }
};

} // namespace

TEST_P(CanvasPainterTest, WhatIsRepaintedInPartLooksLikeWhatIsPaintedWhole)
{
    resize({500, 380}, GetParam());
    QRandomGenerator random(11);
    const auto within = [&random](double low, double high) {
        return low + random.generateDouble() * (high - low);
    };
    const QList kinds{ToolKind::Arrow,     ToolKind::Rectangle, ToolKind::Ellipse, ToolKind::Pen,
                      ToolKind::Text,      ToolKind::Callout,   ToolKind::Step,    ToolKind::Stamp,
                      ToolKind::Blur,      ToolKind::Magnify,   ToolKind::Measure, ToolKind::Highlight,
                      ToolKind::Spotlight, ToolKind::Spotlight};
    CanvasPainter kept;
    for (int i = 0; i < 120; ++i) {
        QList<Annotation> list = document.annotations();
        const int what = random.bounded(6);
        if (what < 2 || list.isEmpty()) {
            Annotation added = document.makeAnnotation(kinds[random.bounded(kinds.size())],
                                                       {within(-50, 700), within(-50, 500)});
            added.end = added.start + QPointF(within(20, 260), within(20, 200));
            added.color = QColor::fromHsv(random.bounded(360), 200, 220);
            if (added.kind == ToolKind::Text || added.kind == ToolKind::Callout)
                added.text = "Look here";
            if (added.kind == ToolKind::Pen)
                added.points = {added.start, added.end, {within(0, 800), within(0, 600)}};
            list.append(added);
        } else {
            const auto at = random.bounded(list.size());
            if (what == 2)
                list.removeAt(at);
            else if (what == 3)
                list.move(at, random.bounded(list.size()));
            else
                list[at].offset(within(-60, 60), within(-60, 60));
        }
        document.setAnnotations(list);
        const auto now = scene();
        kept.update(now);
        CanvasPainter fresh;
        fresh.update(now);
        ASSERT_LE(difference(shown(kept, now), shown(fresh, now)), 3) << "after step " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, CanvasPainterTest, testing::Values(1.0, 1.5, 2.0));

TEST_F(CanvasPainterTest, TellsWhatPartOfTheViewChanged)
{
    CanvasPainter painter;
    painter.update(scene());
    addBox({100, 100, 80, 60});
    document.setSelectedID({});
    const QRegion added = painter.update(scene());
    EXPECT_TRUE(added.contains(at(100, 100).toPoint()));
    EXPECT_FALSE(added.contains(at(400, 400).toPoint()));
    EXPECT_TRUE(painter.update(scene()).isEmpty());
}

TEST_F(CanvasPainterTest, ShowsTheBubbleUnderTheTextField)
{
    use(ToolKind::Callout);
    document.setColor(QColor(0, 0, 255));
    stroke({100, 100}, {300, 200});
    ASSERT_TRUE(fieldIsOpen);
    CanvasPainter painter;
    painter.update(scene());
    EXPECT_EQ(pixel(shown(painter, scene()), 110, 150), QColor(0, 0, 255));
    typed = "Words";
    canvas.commitText();
    painter.update(scene());
    EXPECT_EQ(pixel(shown(painter, scene()), 110, 150), QColor(0, 0, 255));
}

TEST_F(CanvasPainterTest, DarkensAroundACropBandAndNamesItsSize)
{
    use(ToolKind::Crop);
    press(200, 200);
    drag(500, 400);
    CanvasPainter painter;
    painter.update(scene());
    const QImage image = shown(painter, scene());
    EXPECT_EQ(pixel(image, 300, 300), QColor(Qt::white));
    EXPECT_LT(pixel(image, 100, 100).red(), 130);
    EXPECT_LT(pixel(image, 208, 412).red(), 80) << "the label's pill";
}

TEST_F(CanvasPainterTest, DrawsTheBorderHalfOverThePicture)
{
    Effects effects;
    effects.border = true;
    effects.borderColor = Qt::red;
    document.setEffects(effects);
    CanvasPainter painter;
    painter.update(scene());
    const QImage image = shown(painter, scene());
    EXPECT_EQ(pixel(image, 5, 300), QColor(Qt::red));
    EXPECT_EQ(pixel(image, -5, 300), QColor(Qt::red));
    EXPECT_EQ(pixel(image, 11, 300), QColor(Qt::white));
}

TEST_F(CanvasPainterTest, KeepsPixelsSquareWhenZoomedIn)
{
    canvas.setZoom(8, at(10, 20));
    CanvasPainter painter;
    painter.update(scene());
    const QImage image = shown(painter, scene());
    // The one coloured pixel of the picture, in its middle and close to its edge.
    EXPECT_EQ(pixel(image, 10.5, 20.5), QColor(0x12, 0xab, 0xef));
    EXPECT_EQ(pixel(image, 10.2, 20.2), QColor(0x12, 0xab, 0xef));
    EXPECT_EQ(pixel(image, 9.8, 20.2), QColor(Qt::white));
}

TEST_F(CanvasPainterTest, GoesOnAfterItsCachesWereGivenBack)
{
    addBox({100, 100, 80, 60});
    CanvasPainter painter, fresh;
    painter.update(scene());
    painter.releaseCaches();
    addBox({300, 300, 80, 60});
    painter.update(scene());
    fresh.update(scene());
    EXPECT_LE(difference(shown(painter, scene()), shown(fresh, scene())), 3);
}

TEST_F(CanvasPainterTest, TheFirstSpotlightLooksTheSameWhenItsDimmingWasDrawnAhead)
{
    addBox({100, 100, 80, 60});
    document.setSelectedID({});
    const auto ahead = [](CanvasPainter &painter) {
        auto dimmed = painter.dimmedAhead();
        if (dimmed)
            dimmed->draw();
        return dimmed;
    };
    CanvasPainter painter;
    painter.update(scene());
    painter.keepAhead(ahead(painter));
    EXPECT_FALSE(painter.dimmedAhead()) << "at hand already";

    use(ToolKind::Spotlight);
    press(200, 200);
    painter.update(scene());
    EXPECT_EQ(pixel(shown(painter, scene()), 200, 200), QColor(Qt::white)) << "a press alone dims nothing";
    drag(500, 400);
    painter.update(scene());
    CanvasPainter fresh;
    fresh.update(scene());
    EXPECT_LE(difference(shown(painter, scene()), shown(fresh, scene())), 3);

    // What was drawn for other objects doesn't serve.
    canvas.release(at(500, 400));
    document.undo();
    CanvasPainter late;
    late.update(scene());
    auto stale = ahead(late);
    addBox({300, 300, 80, 60});
    late.update(scene());
    late.keepAhead(stale);
    press(200, 200);
    drag(500, 400);
    late.update(scene());
    CanvasPainter anew;
    anew.update(scene());
    EXPECT_LE(difference(shown(late, scene()), shown(anew, scene())), 3);
}

TEST_F(CanvasTest, TheBubbleStaysWhileItsTextIsTyped)
{
    use(ToolKind::Callout);
    stroke({200, 200}, {400, 300});
    ASSERT_TRUE(fieldIsOpen);
    const auto scene = CanvasPainter::Scene::of(document, canvas);
    ASSERT_EQ(scene.objects.size(), 1);
    EXPECT_TRUE(scene.objects.first().text.isEmpty()) << "which the field shows";
}

TEST_F(CanvasTest, WhatAMosaicCoversIsHiddenBeforeItIsMade)
{
    Annotation blur = document.makeAnnotation(ToolKind::Blur, {100, 100});
    blur.end = {200, 200};
    document.add(blur);
    document.setSelectedID({});
    CanvasPainter painter;
    const auto color = [&] {
        const auto scene = CanvasPainter::Scene::of(document, canvas);
        painter.update(scene);
        return shown(painter, scene).pixelColor(at(150, 150).toPoint());
    };
    EXPECT_LT(std::abs(color().red() - color().green()), 4) << "grey";
    EXPECT_LT(color().red(), 200);
    QImage red = filled({width, height}, Qt::red);
    document.keepPixelated(document.base(), red);
    EXPECT_GT(color().red(), 200);
    EXPECT_LT(color().green(), 40);
}
