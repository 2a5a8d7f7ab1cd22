#include "document/renderer.h"

#include "document/shapes.h"
#include "pixels.h"
#include "support/pictures.h"

#include <QPainter>
#include <QRandomGenerator>
#include <ctime>
#include <gtest/gtest.h>
#include <limits>

namespace {

// A picture in which no two places look alike.
QImage pattern(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(80 + x % 160, 60 + y % 180, 100 + (x + y) % 120));
    }
    return image;
}

// An object of the kind with everything that makes it visible.
Annotation randomObject(ToolKind kind, QRandomGenerator &random, const QSizeF &size)
{
    const auto within = [&](double high) { return random.generateDouble() * high; };
    Annotation a = object(kind, {within(size.width()), within(size.height())},
                          {within(size.width()), within(size.height())});
    a.color = QColor::fromHsv(random.bounded(360), 200, 60 + random.bounded(190));
    a.lineWidth = 1 + within(16);
    a.number = random.bounded(40);
    a.font = random.bounded(5);
    if (const auto styles = Tools::styles(kind); !styles.isEmpty())
        a.style = random.bounded(static_cast<int>(styles.size()));
    if (kind == ToolKind::Text || kind == ToolKind::Callout)
        a.text = "Wide words fjÅ\nand more";
    if (kind == ToolKind::Stamp) {
        const QStringList values = StampLibrary::symbols() + StampLibrary::emoji() + StampLibrary::keys();
        a.text = values[random.bounded(static_cast<int>(values.size()))];
    }
    if (kind == ToolKind::Callout && random.bounded(2))
        a.points = {QPointF(within(size.width()), within(size.height()))};
    if (kind == ToolKind::Pen) {
        for (int i = 0; i < 6; ++i)
            a.points.append({within(size.width()), within(size.height())});
    }
    if (kind == ToolKind::Image) {
        a.image = QImage(30, 20, QImage::Format_ARGB32_Premultiplied);
        a.image.fill(QColor(10, 200, 90, 128));
    }
    return a;
}

QImage drawn(const QImage &base, const QList<Annotation> &objects)
{
    return Renderer::flattened(base, Renderer::pixelated(base), objects);
}

} // namespace

TEST(Renderer, CountsLettersLikeColumnsAndRoundsMeasurements)
{
    const QList<std::pair<int, const char *>> letters{{-3, "A"},   {0, "A"},    {1, "A"},   {2, "B"},
                                                      {26, "Z"},   {27, "AA"},  {52, "AZ"}, {53, "BA"},
                                                      {702, "ZZ"}, {703, "AAA"}};
    for (const auto &[number, expected] : letters)
        EXPECT_EQ(Renderer::letters(number), expected);
    const auto label = [](QPointF to) {
        return Renderer::measureLabel(object(ToolKind::Measure, {0, 0}, to));
    };
    EXPECT_EQ(label({100, 1}), "100 px");
    EXPECT_EQ(label({-30, 40}), QString::fromUtf8("50 px  (30 × 40)"));
    EXPECT_EQ(label({100, 2}), "100 px");
    EXPECT_EQ(label({100, 2.01}), QString::fromUtf8("100 px  (100 × 2)"));
    EXPECT_EQ(label({2.5, 0}), "3 px");
    Annotation step = object(ToolKind::Step, {40, 40}, {40, 40});
    const QImage number = drawn(filled({80, 80}, Qt::gray), {step});
    step.style = 1;
    EXPECT_NE(drawn(filled({80, 80}, Qt::gray), {step}), number) << "a letter";
}

TEST(Renderer, PutsSpotlightsUnderEverythingWhateverTheirPlace)
{
    const QImage base = filled({100, 100}, Qt::white);
    const Annotation spotlight = object(ToolKind::Spotlight, {60, 60}, {90, 90});
    Annotation box = object(ToolKind::Rectangle, {10, 10}, {40, 40});
    box.style = 2;
    const QImage picture = drawn(base, {box, spotlight});
    EXPECT_TRUE(hasColor(picture, {25, 25}, qRgb(255, 0, 0)));
    EXPECT_TRUE(hasColor(picture, {5, 90}, qRgb(102, 102, 102)));
    EXPECT_TRUE(hasColor(picture, {75, 75}, qRgb(255, 255, 255)));
}

// Whatever lies under a blur, the picture is the same: nothing of it shows, near or far.
TEST(Renderer, ShowsNothingThatABlurHides)
{
    const QRectF hidden(30.4, 20.6, 41.3, 22.5);
    const auto withSecret = [&](QRgb light, QRgb dark) {
        QImage base = pattern({200, 120});
        const QRect area = hidden.toAlignedRect();
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                base.setPixel(x, y, (x / 3 + y / 2) % 2 ? light : dark);
        }
        return base;
    };
    const QImage one = withSecret(qRgb(255, 255, 255), qRgb(0, 0, 0));
    const QImage other = withSecret(qRgb(10, 200, 30), qRgb(90, 0, 250));
    const Annotation blur = object(ToolKind::Blur, hidden.topLeft(), hidden.bottomRight());
    const Annotation magnifier = object(ToolKind::Magnify, {10, 5}, {90, 70});
    const Annotation aside = object(ToolKind::Magnify, {60.3, 12.7}, {141.6, 88.1});
    const Annotation arrow = object(ToolKind::Arrow, {5, 5}, {60, 30});
    const QList<Annotation> orders[]{
        {blur}, {blur, magnifier}, {magnifier, blur}, {aside, blur, arrow}, {arrow, blur, aside, magnifier},
    };
    for (const QImage &mosaic : {Renderer::pixelated(one), QImage()}) {
        for (const auto &objects : orders) {
            const QImage seen = Renderer::flattened(one, mosaic, objects);
            EXPECT_TRUE(isUnchanged(seen, Renderer::flattened(other, mosaic, objects), seen.rect(), 0))
                << objects.size() << " objects, " << (mosaic.isNull() ? "without" : "with") << " a mosaic";
        }
    }
    // A magnifier over anything else still shows it.
    const QImage seen = drawn(one, {blur, object(ToolKind::Magnify, {120, 60}, {180, 110})});
    EXPECT_TRUE(hasColor(seen, {150, 85}, one.pixel(150, 85)));
    EXPECT_TRUE(hasColor(seen, {160, 95}, one.pixel(155, 90), 4));
}

TEST(Renderer, HidesPicturesUnderABlurWhereTheBaseIsTransparent)
{
    const QImage base = filled({160, 120}, Qt::transparent, QImage::Format_ARGB32_Premultiplied);
    const auto picture = [&](const QColor &color) {
        Annotation pasted = object(ToolKind::Image, {40, 30}, {120, 90});
        pasted.image = filled({80, 60}, color);
        return pasted;
    };
    Annotation blur = object(ToolKind::Blur, {20, 20}, {140, 100});
    const QImage seen = drawn(base, {picture(Qt::white), blur});
    EXPECT_TRUE(isUnchanged(seen, drawn(base, {picture(Qt::darkBlue), blur}), seen.rect(), 0));
    // What lies over it is meant to be seen.
    EXPECT_TRUE(hasColor(drawn(base, {blur, picture(Qt::white)}), {80, 60}, qRgb(255, 255, 255)));
}

TEST(Renderer, AShortTaperedArrowHasNoShaftToSpeakOfAndATinyOneIsNotDrawn)
{
    const QImage base = filled({60, 60}, Qt::white);
    EXPECT_TRUE(
        isUnchanged(drawn(base, {object(ToolKind::Arrow, {30, 30}, {31, 30})}), base, base.rect(), 0));
    Annotation arrow = object(ToolKind::Arrow, {20, 30}, {40, 30});
    arrow.lineWidth = 20; // the head is 12 long all the same, and as wide
    const QImage picture = drawn(base, {arrow});
    EXPECT_NEAR(coveredAcross(picture, shareOfRed, 29, 0, 60), 11.5, 8.6); // inside the head
    EXPECT_NEAR(shareOfRed(picture.pixel(39, 34)), 0, 0.05);
}

TEST(Renderer, PaintsNothingForWhatHasNoPicture)
{
    const QImage base = pattern({120, 90});
    QList<Annotation> objects;
    for (const char *value : {"", "sym:no.such.symbol", "sym:", "banner:x", "checkmark.circle.fill"}) {
        Annotation stamp = object(ToolKind::Stamp, {10, 10}, {80, 80});
        stamp.text = value;
        objects.append(stamp);
    }
    for (const ToolKind kind :
         {ToolKind::Select, ToolKind::Crop, ToolKind::Cutout, ToolKind::Image, ToolKind::Pen})
        objects.append(object(kind, {10, 10}, {80, 80}));
    EXPECT_TRUE(isUnchanged(drawn(base, objects), base, base.rect(), 0));
}

TEST(Renderer, ATextThatNeedsMoreRoomThanItsCalloutDoesNotShrink)
{
    const QImage base = filled({200, 120}, Qt::white);
    Annotation callout = object(ToolKind::Callout, {20, 50}, {180, 70});
    callout.color = Qt::blue;
    callout.style = 1;
    callout.lineWidth = 4;
    callout.text = "A text of many words that needs three lines at least";
    const QImage picture = drawn(base, {callout});
    const auto inked = [&](int y) {
        int count = 0;
        for (int x = 30; x < 170; ++x)
            count += shareOfBlue(picture.pixel(x, y)) > 0.6;
        return count;
    };
    int above = 0;
    int below = 0;
    for (int d = 6; d < 30; ++d) {
        above += inked(50 - d);
        below += inked(70 + d);
    }
    EXPECT_GT(above, 50); // overflows evenly on both sides
    EXPECT_GT(below, 50);
}

TEST(Renderer, AShortArrowIsNoLongerThanItWasDrawn)
{
    const QRectF shape = Shapes::arrow(object(ToolKind::Arrow, {50, 50}, {60, 50}, 8)).boundingRect();
    EXPECT_GE(shape.left(), 48) << "its head shrinks";
    EXPECT_LE(shape.right(), 60.1);
}

TEST(Renderer, EverythingPaintedLiesInThePaintedRectangle)
{
    QRandomGenerator random(3);
    const QSize size(220, 180);
    const QImage base = filled(size, Qt::darkGray);
    for (const ToolKind kind : Tools::kAll) {
        if (kind == ToolKind::Spotlight)
            continue; // dims everything else
        for (int i = 0; i < 12; ++i) {
            const Annotation a = randomObject(kind, random, size);
            const QRect allowed = Renderer::paintedRect(a).toAlignedRect();
            const QImage picture = drawn(base, {a});
            for (int y = 0; y < size.height(); ++y) {
                for (int x = 0; x < size.width(); ++x) {
                    if (!allowed.contains(x, y))
                        ASSERT_TRUE(hasColor(picture, {x, y}, base.pixel(x, y), 0))
                            << Tools::rawValue(kind).toStdString() << " style " << a.style << " "
                            << a.lineWidth << " " << a.text.toStdString();
                }
            }
        }
    }
}

TEST(Renderer, CalloutsAreTheUnionOfBodyAndTailWhereverTheTailPoints)
{
    QRandomGenerator random(11);
    for (int i = 0; i < 300; ++i) {
        Annotation callout = randomObject(ToolKind::Callout, random, {200, 160});
        if (i % 3 == 0) // inside the body
            callout.points = {callout.rect().center() +
                              QPointF(random.bounded(9) - 4, random.bounded(9) - 4)};
        if (i % 7 == 0)
            callout.points = {QPointF(callout.rect().center().x(), 150)};
        const QRectF body = callout.rect();
        const double r = std::min(body.width(), body.height()) * 0.2;
        QImage joined(200, 160, QImage::Format_Grayscale8);
        joined.fill(0);
        QPainter painter(&joined);
        painter.fillPath(Renderer::calloutPath(callout), Qt::white);
        painter.end();
        QImage apart = joined;
        apart.fill(0);
        painter.begin(&apart);
        painter.fillPath(Shapes::roundedRect(body, r, r), Qt::white);
        painter.end();
        // No hole inside the body, and the tail's tip is reached.
        for (int y = 0; y < 160; ++y) {
            for (int x = 0; x < 200; ++x) {
                const auto inside = [](const QImage &image, int px, int py) {
                    return image.valid(px, py) && image.constScanLine(py)[px] > 0;
                };
                const bool deep = inside(apart, x, y) && inside(apart, x - 1, y) && inside(apart, x + 1, y) &&
                                  inside(apart, x, y - 1) && inside(apart, x, y + 1);
                if (deep)
                    ASSERT_TRUE(inside(joined, x, y)) << "case " << i << " at " << x << ", " << y;
            }
        }
        const QRectF outline = Renderer::calloutPath(callout).boundingRect().adjusted(-0.1, -0.1, 0.1, 0.1);
        EXPECT_TRUE(outline.contains(callout.tailPoint())) << i;
    }
}

TEST(Renderer, AMagnifierAtTheEdgeShowsNothingBesideTheImage)
{
    const QImage base = pattern({100, 100});
    Annotation magnify = object(ToolKind::Magnify, {-40, 10}, {60, 90});
    magnify.lineWidth = 0;
    const QImage picture = drawn(base, {magnify});
    // The middle (10, 50) stays where it is; the image's left edge lands 10 pixels left of the picture's.
    const QRgb expected = base.pixel(15, 50);
    EXPECT_TRUE(hasColor(picture, {20, 50}, expected, 4));
}

TEST(Renderer, SurvivesBrokenNumbersInReasonableTime)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    const QImage base = pattern({300, 200});
    QRandomGenerator random(5);
    QList<Annotation> objects;
    for (const ToolKind kind : Tools::kAll) {
        for (const double bad : {nan, infinite, -infinite, 1e300, -1e300, 1e9, 40000.0}) {
            Annotation a = randomObject(kind, random, {300, 200});
            a.end = {bad, 50};
            objects.append(a);
            a.start = {-bad, bad};
            a.points = {{bad, 1}, {5, bad}};
            objects.append(a);
            a = randomObject(kind, random, {300, 200});
            a.lineWidth = bad;
            a.number = std::numeric_limits<int>::max();
            a.style = -7;
            objects.append(a);
            a.lineWidth = 1e-12;
            a.style = 1;
            objects.append(a);
        }
    }
    Annotation dashed = object(ToolKind::Line, {-1e6, 3}, {1e6, 190});
    dashed.style = 1;
    dashed.lineWidth = 0.06;
    objects.append(dashed);
    const std::clock_t begin = std::clock(); // what others do on the machine doesn't count
    const QImage picture = drawn(base, objects);
    EXPECT_EQ(picture.size(), base.size());
    EXPECT_LT((std::clock() - begin) / CLOCKS_PER_SEC, 20); // no loop over a number from the file
}
