#include "artwork/symbols.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

int inkedPixels(const QImage &image, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == color.rgba();
    }
    return count;
}

bool reachesEveryEdge(const QImage &image)
{
    QRect inked;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                inked |= QRect(x, y, 1, 1);
        }
    }
    return inked.adjusted(-2, -2, 2, 2).contains(image.rect());
}

} // namespace

TEST(Symbols, EveryNameOfTheTableHasAPictureInItsColourAndFillsItsInkRectangle)
{
    const QStringList names = Symbols::names();
    ASSERT_GT(names.size(), 100);
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_TRUE(Symbols::exists(name));
        const QImage image = Symbols::image(name, 48, Qt::red);
        ASSERT_EQ(image.size(), QSize(48, 48));
        EXPECT_GT(inkedPixels(image, Qt::red), 10);
        EXPECT_EQ(inkedPixels(image, Qt::black), 0);
        const QRectF ink = Symbols::ink(name);
        EXPECT_TRUE(QRectF(0, 0, 1, 1).contains(ink)) << ink.width() << " x " << ink.height();
        EXPECT_TRUE(reachesEveryEdge(Symbols::inkImage(name, {60, 60}, {Qt::red, {}})));
    }
}

TEST(Symbols, KnowsTheNamesThatTheProgramWasWrittenWith)
{
    for (const char *name :
         {"camera.viewfinder", "checkmark.circle.fill", "exclamationmark.triangle.fill", "trash", "sparkles",
          "text.viewfinder", "text.magnifyingglass", "eyedropper", "cursorarrow", "1.circle.fill",
          "a.circle.fill", "flashlight.on.fill", "line.diagonal", "list.number"})
        EXPECT_TRUE(Symbols::exists(name)) << name;
}

TEST(Symbols, PaintsNothingForANameWithoutAPicture)
{
    for (const char *name : {"", "no.such.symbol", "../symbols/trash", "trash.svg"}) {
        EXPECT_FALSE(Symbols::exists(name)) << name;
        EXPECT_TRUE(Symbols::image(name, 20, Qt::red).isNull());
        EXPECT_TRUE(Symbols::icon(name, Qt::red).isNull());
        EXPECT_TRUE(Symbols::ink(name).isEmpty());
    }
}

TEST(Symbols, FillsTheFigureOfABadgeAndLeavesOtherGapsOpen)
{
    const QImage badge = Symbols::inkImage("checkmark.circle.fill", {100, 100}, {Qt::red, Qt::white});
    EXPECT_GT(inkedPixels(badge, Qt::white), 300);
    EXPECT_EQ(qAlpha(badge.pixel(0, 0)), 0);
    // Around the badge nothing is whitened: what is half covered there keeps the ground's colour.
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            const double fromMiddle = std::hypot(x - 49.5, y - 49.5);
            const QRgb pixel = badge.pixel(x, y);
            if (fromMiddle > 48 && qAlpha(pixel) > 40)
                ASSERT_LT(qGreen(pixel), 12) << x << ", " << y;
        }
    }
    const QImage lock = Symbols::inkImage("lock.fill", {100, 100}, {Qt::red, Qt::white});
    EXPECT_EQ(inkedPixels(lock, Qt::white), 0);
}

TEST(Symbols, IsSharpAtAnyScaleOfThePainterAndPalerWhenDisabled)
{
    QImage canvas(100, 100, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::white);
    QPainter painter(&canvas);
    painter.scale(2.5, 2.5);
    Symbols::paint(painter, {4, 4, 32, 32}, "square", Qt::black);
    painter.end();
    QImage expected(100, 100, QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::white);
    QPainter(&expected).drawImage(10, 10, Symbols::image("square", 80, Qt::black));
    EXPECT_EQ(canvas, expected);

    const QIcon icon = Symbols::icon("circle.fill", Qt::black);
    const QImage normal = icon.pixmap(QSize(20, 20), 2.0).toImage();
    EXPECT_EQ(normal.size(), QSize(40, 40));
    EXPECT_EQ(qAlpha(normal.pixel(20, 20)), 255);
    EXPECT_NEAR(qAlpha(icon.pixmap(QSize(20, 20), 2.0, QIcon::Disabled).toImage().pixel(20, 20)), 89, 2);
}
