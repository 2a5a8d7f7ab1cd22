// Every kind and style at two sizes, against pictures that were looked at and found good.
//
// After a change that is meant to show, write them anew, look at what git says has changed, and commit it:
//     LUMENPOST_UPDATE_EXPECTED=1 build/release/tests/test_document --gtest_filter='*ExpectedPictures*'
// A failing case leaves what it drew in the build folder under expected-actual/.

#include "document/renderer.h"
#include "pixels.h"

#include <QDir>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

struct Drawing {
    QString name;
    Annotation annotation;
    // How many pixels in a hundred may differ: letters vary with the fonts that a machine has.
    double tolerated = 0.5;
};

struct Size {
    const char *name;
    QSize canvas;
    double scale; // of the geometry below
    double lineWidth;
};
constexpr Size kSmall{"small", {150, 100}, 1, 3};
constexpr Size kLarge{"large", {300, 200}, 2, 9};

Annotation object(ToolKind kind, const Size &size, int style = 0)
{
    Annotation a;
    a.kind = kind;
    a.style = style;
    a.start = QPointF(25, 25) * size.scale;
    a.end = QPointF(125, 75) * size.scale;
    a.color = SystemColors::red();
    a.lineWidth = size.lineWidth;
    return a;
}

QString slug(const QString &text)
{
    return text.toLower().replace(' ', '-').replace('.', '-');
}

QList<Drawing> ofBoxesAndLines(const Size &size)
{
    QList<Drawing> drawings;
    for (const ToolKind kind : {ToolKind::Arrow, ToolKind::Rectangle, ToolKind::Ellipse, ToolKind::Line}) {
        const auto styles = Tools::styles(kind);
        for (int style = 0; style < styles.size(); ++style)
            drawings.append(
                {Tools::rawValue(kind) + '-' + slug(styles[style].name), object(kind, size, style)});
    }
    Annotation pen = object(ToolKind::Pen, size);
    for (int i = 0; i <= 40; ++i)
        pen.points.append(QPointF(25 + i * 2.5, 50 + 22 * std::sin(i * 0.35)) * size.scale);
    drawings.append({"pen", pen});
    Annotation highlight = object(ToolKind::Highlight, size);
    highlight.color = SystemColors::yellow();
    drawings.append({"highlight", highlight});
    drawings.append({"spotlight", object(ToolKind::Spotlight, size)});
    Annotation magnify = object(ToolKind::Magnify, size);
    magnify.end = QPointF(100, 85) * size.scale;
    drawings.append({"magnify", magnify});
    Annotation image = object(ToolKind::Image, size);
    image.image = QImage(40, 20, QImage::Format_ARGB32_Premultiplied);
    image.image.fill(Qt::transparent);
    QPainter(&image.image).fillRect(0, 0, 20, 20, QColor(40, 120, 90));
    drawings.append({"image", image});
    return drawings;
}

QList<Drawing> ofTexts(const Size &size)
{
    QList<Drawing> drawings;
    for (int font = 0; font < 5; ++font) {
        for (int style = 0; style < 2; ++style) {
            Annotation text = object(ToolKind::Text, size, style);
            text.start = QPointF(22, 35) * size.scale;
            text.font = font;
            text.lineWidth = size.lineWidth * 0.8;
            text.text = QString::fromUtf8("Save 3 🎉");
            drawings.append({QString("text-%1-%2").arg(style ? "label" : "plain").arg(font), text, 8});
        }
    }
    Annotation light = object(ToolKind::Text, size);
    light.color = Qt::white;
    light.text = "Light text\non two lines";
    light.lineWidth = size.lineWidth * 0.6;
    drawings.append({"text-glow-dark", light, 8});
    for (int style = 0; style < 2; ++style) {
        Annotation callout = object(ToolKind::Callout, size, style);
        callout.end.setY(60 * size.scale);
        callout.points = {QPointF(115, 88) * size.scale};
        callout.text = "Look at this";
        callout.lineWidth = size.lineWidth * 0.7;
        drawings.append({QString("callout-") + (style ? "outline" : "filled"), callout, 5});
        Annotation step = object(ToolKind::Step, size, style);
        step.start = step.end = QPointF(75, 50) * size.scale;
        step.number = 12;
        drawings.append({QString("step-") + (style ? "letters" : "numbers"), step, 3});
    }
    Annotation straight = object(ToolKind::Measure, size);
    straight.end.setY(straight.start.y());
    drawings.append({"measure-straight", straight, 3});
    drawings.append({"measure-slanted", object(ToolKind::Measure, size), 3});
    return drawings;
}

QList<Drawing> ofStamps(const Size &size)
{
    QList<Drawing> drawings;
    for (const QString &value :
         {"sym:checkmark.circle.fill", "sym:exclamationmark.triangle.fill", "sym:star.fill", "sym:lock.fill",
          "sym:cursorarrow.click.2", "emoji:👍", "emoji:🚀", "key:⌘", "key:Space", "key:↩"}) {
        Annotation stamp = object(ToolKind::Stamp, size);
        stamp.text = value;
        stamp.start = QPointF(45, 20) * size.scale;
        stamp.end = QPointF(value == "key:Space" ? 131 : 105, 80) * size.scale;
        drawings.append(
            {"stamp-" + slug(value.section(':', 0, 0)) + QString::number(drawings.size()), stamp, 4});
    }
    return drawings;
}

// A page with a dark and a light half and lines of text-like strokes.
QImage base(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(250, 250, 252));
    QPainter painter(&image);
    painter.fillRect(0, size.height() * 3 / 4, size.width(), size.height(), QColor(52, 56, 70));
    for (int y = 12; y < size.height() * 3 / 4 - 6; y += 14) {
        for (int x = 10; x < size.width() - 16; x += 11)
            painter.fillRect(x, y, 4 + (x * 7 + y) % 6, 3, QColor(150, 158, 175));
    }
    return image;
}

testing::AssertionResult resembles(const QImage &seen, const QImage &expected, double toleratedPercent)
{
    if (seen.size() != expected.size())
        return testing::AssertionFailure() << "another size";
    int different = 0;
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x)
            different += !isNear(seen.pixel(x, y), expected.pixel(x, y), 20);
    }
    const double percent = 100.0 * different / (seen.width() * seen.height());
    if (percent <= toleratedPercent)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << percent << "% of the pixels differ, " << toleratedPercent << "% may";
}

class ExpectedPictures : public testing::TestWithParam<Size> {
protected:
    void check(const QList<Drawing> &drawings)
    {
        const QDir expected(LUMENPOST_TEST_DATA "/expected");
        const QDir actual(LUMENPOST_BINARY_DIR "/expected-actual");
        for (const Drawing &drawing : drawings) {
            const QString file = drawing.name + '-' + GetParam().name + ".png";
            SCOPED_TRACE(file.toStdString());
            const QImage ground = base(GetParam().canvas);
            const QImage seen = Renderer::flattened(ground, Renderer::pixelated(ground), {drawing.annotation})
                                    .convertToFormat(QImage::Format_RGB32);
            if (qEnvironmentVariableIsSet("LUMENPOST_UPDATE_EXPECTED")) {
                ASSERT_TRUE(seen.save(expected.filePath(file)));
                continue;
            }
            QImage wanted;
            ASSERT_TRUE(wanted.load(expected.filePath(file)));
            const auto same = resembles(seen, wanted, drawing.tolerated);
            EXPECT_TRUE(same);
            if (!same) {
                actual.mkpath(".");
                seen.save(actual.filePath(file));
            }
        }
    }
};

} // namespace

TEST_P(ExpectedPictures, OfBoxesLinesAndPictures)
{
    check(ofBoxesAndLines(GetParam()));
}
TEST_P(ExpectedPictures, OfTextsBubblesAndNumbers)
{
    check(ofTexts(GetParam()));
}
TEST_P(ExpectedPictures, OfStamps)
{
    check(ofStamps(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ExpectedPictures, testing::Values(kSmall, kLarge),
                         [](const auto &size) { return std::string(size.param.name); });
