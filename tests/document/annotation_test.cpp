#include "document/annotation.h"
#include "pixels.h"

#include <gtest/gtest.h>

namespace {

const std::array boxes{ToolKind::Rectangle, ToolKind::Ellipse,   ToolKind::Highlight,
                       ToolKind::Blur,      ToolKind::Spotlight, ToolKind::Magnify};
const std::array lines{ToolKind::Arrow, ToolKind::Line, ToolKind::Measure};

} // namespace

TEST(Tools, HaveRawValuesAndShortcutsThatLeadBackToThem)
{
    QStringList keys;
    for (const ToolKind kind : Tools::kAll) {
        EXPECT_EQ(Tools::fromRawValue(Tools::rawValue(kind)), kind);
        const QChar key = Tools::shortcutKey(kind);
        if (kind == ToolKind::Image) {
            EXPECT_TRUE(key.isNull());
            continue;
        }
        EXPECT_EQ(Tools::ofShortcut(key.toLower()), kind);
        EXPECT_FALSE(Tools::ofShortcut(key.toUpper()));
        keys << QString(key);
    }
    EXPECT_EQ(keys.join(""), "VARELPHTKSGBOMCXU");
    EXPECT_EQ(Tools::toolbarTools().size(), 17);
    EXPECT_FALSE(Tools::fromRawValue("hologram"));
    EXPECT_FALSE(Tools::ofShortcut('z'));
}

TEST(Annotation, BoundsFollowTheKind)
{
    const QPointF a(100, 80);
    const QPointF b(40, 20);
    for (const ToolKind kind : boxes)
        EXPECT_EQ(object(kind, a, b).bounds(), QRectF(37, 17, 66, 66));
    Annotation curved = object(ToolKind::Arrow, {0, 0}, {100, 0});
    EXPECT_EQ(curved.bounds(), QRectF(-3, -3, 106, 6));
    curved.style = 3;
    EXPECT_EQ(curved.bounds(), QRectF(-12, -12, 124, 54)); // down to the control point at (50, 30)

    Annotation pen = object(ToolKind::Pen, a, a);
    EXPECT_EQ(pen.bounds(), QRectF());
    pen.points = {{10, 10}, {30, 5}, {20, 40}};
    EXPECT_EQ(pen.bounds(), QRectF(4, -1, 32, 47));

    EXPECT_EQ(object(ToolKind::Step, {50, 50}, {50, 50}, 1).bounds(), QRectF(36, 36, 28, 28));
    EXPECT_EQ(object(ToolKind::Step, {50, 50}, {50, 50}, 10).bounds(), QRectF(15, 15, 70, 70));

    Annotation callout = object(ToolKind::Callout, {0, 0}, {100, 40});
    EXPECT_EQ(callout.tailPoint(), QPointF(25, 70)); // 30 below, though half the height is 20
    EXPECT_EQ(callout.bounds(), QRectF(-6, -6, 112, 82));
    callout.points = {{-50, 20}};
    EXPECT_EQ(callout.bounds(), QRectF(-56, -6, 162, 52));
}

TEST(Annotation, TextIsMeasuredFromItsTopLeftAndALabelReachesFurther)
{
    Annotation text = object(ToolKind::Text, {10, 20}, {10, 20});
    EXPECT_EQ(text.bounds().width(), 0);
    text.text = "Hello";
    const QRectF plain = text.bounds();
    EXPECT_EQ(plain.topLeft(), QPointF(10, 20));
    EXPECT_NEAR(plain.height(), 36 * 1.2, 6);
    EXPECT_NEAR(plain.width(), 36 * 2.5, 20);
    text.style = 1;
    EXPECT_EQ(text.bounds(), plain.adjusted(-36 * 0.45, -36 * 0.2, 36 * 0.45, 36 * 0.2));
    text.style = 0;
    text.text = "Hello\nthere";
    EXPECT_NEAR(text.bounds().height(), 2 * plain.height(), 0.01);
    for (const char *typed : {"Hello  ", "Hello  \nI"}) {
        text.text = typed;
        EXPECT_GT(text.bounds().width(), plain.width() + 5) << "with the blanks that were just typed";
    }
    text.text = "Hello\nthere";
    // Sizes between whole pixels count in full.
    text.lineWidth = 6.08;
    EXPECT_NEAR(text.bounds().height(), 2 * plain.height() * 6.08 / 6, 0.01);
}

TEST(Annotation, TextGlowsAgainstItsOwnBrightness)
{
    Annotation text = object(ToolKind::Text, {}, {}, 1);
    text.color = Qt::white;
    TextAttributes attributes = text.textAttributes();
    EXPECT_EQ(attributes.size, 14);
    EXPECT_EQ(attributes.glow.rgb(), QColor(Qt::black).rgb());
    EXPECT_EQ(attributes.glowBlur, 2);
    text.color = Qt::blue;
    text.lineWidth = 10;
    attributes = text.textAttributes();
    EXPECT_EQ(attributes.glow.rgb(), QColor(Qt::white).rgb());
    EXPECT_NEAR(attributes.glow.alphaF(), 0.8, 0.01);
    EXPECT_DOUBLE_EQ(attributes.glowBlur, 7.2);
    text.style = 1;
    attributes = text.textAttributes();
    EXPECT_EQ(attributes.color, QColor(Qt::white));
    EXPECT_FALSE(attributes.glow.isValid());
    text.color = Qt::yellow;
    EXPECT_EQ(text.textAttributes().color, QColor(Qt::black));
    text.font = 7;
    EXPECT_EQ(text.textAttributes().font, TextFont::System);
    EXPECT_EQ(text.font, 7);
}

TEST(Annotation, HandlesLieWhereTheKindHasThem)
{
    using enum AnnotationHandle;
    const auto names = [](const Annotation &a) {
        QList<AnnotationHandle> list;
        for (const auto &[handle, point] : a.handles())
            list.append(handle);
        return list;
    };
    const QList corners{TopLeft, TopRight, BottomLeft, BottomRight};
    const QList edges{Top, Bottom, Left, Right};
    for (const ToolKind kind : lines)
        EXPECT_EQ(names(object(kind, {0, 0}, {9, 9})), (QList{Start, End}));
    for (const ToolKind kind : boxes)
        EXPECT_EQ(names(object(kind, {0, 0}, {9, 9})), corners + edges);
    EXPECT_EQ(names(object(ToolKind::Callout, {0, 0}, {9, 9})), corners + edges + QList{Tail});
    EXPECT_EQ(names(object(ToolKind::Image, {0, 0}, {9, 9})), corners);
    EXPECT_TRUE(names(object(ToolKind::Text, {0, 0}, {9, 9})).isEmpty());
    const auto placed = object(ToolKind::Rectangle, {30, 40}, {10, 20}).handles();
    EXPECT_EQ(placed[0].second, QPointF(10, 20));
    EXPECT_EQ(placed[3].second, QPointF(30, 40));
    EXPECT_EQ(placed[4].second, QPointF(20, 20));
    EXPECT_EQ(placed[7].second, QPointF(30, 30));
}

TEST(Annotation, ABoxPulledPastItsOppositeEdgeFlips)
{
    Annotation box = object(ToolKind::Rectangle, {50, 50}, {10, 10});
    box.move(AnnotationHandle::Right, {-20, 99});
    EXPECT_EQ(box.start, QPointF(-20, 10));
    EXPECT_EQ(box.end, QPointF(10, 50));
    box.move(AnnotationHandle::TopLeft, {0, 70});
    EXPECT_EQ(box.start, QPointF(0, 50));
    EXPECT_EQ(box.end, QPointF(10, 70));

    Annotation line = object(ToolKind::Line, {50, 50}, {10, 10});
    line.move(AnnotationHandle::Start, {7, 8});
    EXPECT_EQ(line.start, QPointF(7, 8));
    EXPECT_EQ(line.end, QPointF(10, 10));
    Annotation callout = object(ToolKind::Callout, {0, 0}, {50, 50});
    callout.move(AnnotationHandle::Tail, {90, 90});
    EXPECT_EQ(callout.points, QList{QPointF(90, 90)});
}

TEST(Annotation, PicturesAndStampsKeepTheirAspectFromTheirWidth)
{
    for (const ToolKind kind : {ToolKind::Image, ToolKind::Stamp}) {
        Annotation picture = object(kind, {100, 100}, {300, 200});
        picture.move(AnnotationHandle::BottomRight, {300, 900}); // straight down: nothing
        EXPECT_EQ(picture.rect(), QRectF(100, 100, 200, 100));
        picture.move(AnnotationHandle::BottomRight, {200, 0});
        EXPECT_EQ(picture.rect(), QRectF(100, 100, 100, 50));
        picture.move(AnnotationHandle::TopLeft, {0, 0}); // the bottom edge stays
        EXPECT_EQ(picture.rect(), QRectF(0, 50, 200, 100));
        picture.move(AnnotationHandle::BottomRight, {2, 60}); // at least the height of a width of 8
        EXPECT_EQ(picture.rect(), QRectF(0, 50, 2, 4));
    }
}

TEST(Annotation, MovesWholeAndKeepsOnlyWhatWasMeant)
{
    Annotation pen = object(ToolKind::Pen, {1, 1}, {2, 2});
    pen.points = {{1, 1}, {5, 5}};
    pen.offset(10, -1);
    EXPECT_EQ(pen.start, QPointF(11, 0));
    EXPECT_EQ(pen.end, QPointF(12, 1));
    EXPECT_EQ(pen.points, (QList{QPointF(11, 0), QPointF(15, 4)}));
    EXPECT_TRUE(pen.isMeaningful());
    pen.points.removeLast();
    EXPECT_FALSE(pen.isMeaningful());

    EXPECT_FALSE(object(ToolKind::Arrow, {0, 0}, {6, 0}).isMeaningful());
    EXPECT_TRUE(object(ToolKind::Arrow, {0, 0}, {4.5, 4.5}).isMeaningful());
    EXPECT_FALSE(object(ToolKind::Rectangle, {0, 0}, {4, 90}).isMeaningful());
    EXPECT_TRUE(object(ToolKind::Rectangle, {0, 0}, {-5, 5}).isMeaningful());
    EXPECT_FALSE(object(ToolKind::Text, {0, 0}, {0, 0}).isMeaningful());
    EXPECT_TRUE(object(ToolKind::Step, {0, 0}, {0, 0}).isMeaningful());
}
