#include "document/editor_document.h"

#include "document/image_files.h"
#include "document/renderer.h"
#include "fakes/fake_desktop.h"
#include "pixels.h"
#include "support/pictures.h"

#include <gtest/gtest.h>

namespace {

// Every row has a colour of its own.
QImage rows(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(y % 256, 50, x % 256));
    }
    return image;
}

Annotation box(QPointF start, QPointF end)
{
    Annotation a = object(ToolKind::Rectangle, start, end, 2);
    a.color = Qt::blue;
    return a;
}

struct Changes {
    QList<EditorDocument::Field> before;
    QList<EditorDocument::Field> after;

    explicit Changes(EditorDocument &document)
    {
        QObject::connect(&document, &EditorDocument::aboutToChange, &document,
                         [this](auto f) { before << f; });
        QObject::connect(&document, &EditorDocument::changed, &document, [this](auto f) { after << f; });
    }
};

QList<int> stepNumbers(const EditorDocument &document)
{
    QList<int> numbers;
    for (const Annotation &a : document.annotations()) {
        if (a.kind == ToolKind::Step)
            numbers << a.number;
    }
    return numbers;
}

} // namespace

TEST(EditorDocument, SixtyStepsBackAndNoFurther)
{
    EditorDocument document(filled({50, 50}));
    for (int i = 0; i < 61; ++i)
        document.add(box({double(i), 0}, {i + 10.0, 10}));
    int steps = 0;
    for (; document.canUndo(); ++steps)
        document.undo();
    EXPECT_EQ(steps, 60);
    EXPECT_EQ(document.annotations().size(), 1);
    document.redo();
    EXPECT_EQ(document.annotations().size(), 2);
    document.setSelectedID(document.annotations()[0].id);
    document.undo();
    EXPECT_FALSE(document.selectedID()) << "it may have gone";
    document.redo();
    document.pushUndo();
    EXPECT_FALSE(document.canRedo());
}

TEST(EditorDocument, SnapshotsShareTheirPixelsAndTellBasesApartByIdentity)
{
    EditorDocument document(rows(100, 100));
    const qint64 original = document.base().cacheKey();
    const qint64 mosaic = document.pixelated().cacheKey();
    document.add(box({10, 10}, {40, 40}));
    document.undo();
    EXPECT_EQ(document.base().cacheKey(), original);
    EXPECT_EQ(document.pixelated().cacheKey(), mosaic);
    document.applyCrop({10, 10, 50, 50});
    const qint64 cropped = document.base().cacheKey();
    document.undo();
    EXPECT_EQ(document.base().cacheKey(), original);
    document.redo();
    EXPECT_EQ(document.base().cacheKey(), cropped); // no second crop
    // A mosaic is of the very pixels, whoever made it.
    EXPECT_EQ(document.pixelated().size(), QSize(50, 50));
    document.undo();
    EXPECT_EQ(document.pixelated().size(), QSize(100, 100));
    document.keepPixelated(rows(30, 30), filled({30, 30}));
    EXPECT_EQ(document.pixelated().size(), QSize(100, 100));
}

TEST(EditorDocument, CropsOutwardsToWholePixelsAndMovesObjectsAlong)
{
    EditorDocument document(rows(200, 100));
    Annotation pen = box({60, 30}, {80, 50});
    pen.kind = ToolKind::Pen;
    pen.points = {{60, 30}, {80, 50}};
    document.add(pen);
    document.setEffects({.border = true});
    document.applyCrop({50.4, 20.6, 100.2, 300});
    EXPECT_EQ(document.base().size(), QSize(101, 80));
    EXPECT_TRUE(hasColor(document.base(), {0, 0}, qRgb(20, 50, 50), 0));
    EXPECT_EQ(document.annotations()[0].start, QPointF(10, 10));
    EXPECT_EQ(document.annotations()[0].points, (QList{QPointF(10, 10), QPointF(30, 30)}));
    EXPECT_FALSE(document.selectedID());
    document.undo();
    EXPECT_EQ(document.base().size(), QSize(200, 100));
    EXPECT_EQ(document.annotations()[0].start, QPointF(60, 30));
    EXPECT_TRUE(document.effects().border);
    document.redo();
    EXPECT_EQ(document.annotations()[0].start, QPointF(10, 10));
}

TEST(EditorDocument, LeavesEverythingAsItWasWhenACropOrCutIsTooSmall)
{
    EditorDocument document(rows(200, 100));
    const double nan = std::nan("");
    for (const QRectF &rect : {QRectF(10, 10, 2, 90), QRectF(300, 10, 50, 50), QRectF(10, 97, 50, 50),
                               QRectF(), QRectF(nan, 0, 50, 50)})
        document.applyCrop(rect);
    for (const QRectF &rect : {QRectF(0, 10, 200, 3.4), QRectF(0, 4, 200, 93), QRectF(0, -60, 200, 50),
                               QRectF(0, 96.6, 200, 40), QRectF(0, nan, 200, 40)})
        document.applyCutout(rect, false);
    document.applyCutout({95, 0, 3, 100}, true);
    EXPECT_EQ(document.base().size(), QSize(200, 100));
    EXPECT_FALSE(document.canUndo());
}

TEST(EditorDocument, CutsABandOutAndJoinsTheRestWithATornEdge)
{
    EditorDocument document(rows(200, 100));
    document.setAnnotations({box({10, 5}, {50, 15}), box({10, 45}, {50, 90}), box({10, 61}, {50, 90}),
                             box({10, 60.9}, {50, 90})});
    document.applyCutout({0, 39.6, 200, 20.4}, false); // rows 40 to 60
    ASSERT_EQ(document.base().size(), QSize(200, 80));
    EXPECT_TRUE(hasColor(document.base(), {100, 20}, qRgb(20, 50, 100), 0));
    EXPECT_TRUE(hasColor(document.base(), {100, 60}, qRgb(80, 50, 100), 0));
    int white = 0; // the torn edge
    for (int y = 30; y < 50; ++y)
        white += qGreen(document.base().pixel(100, y)) > 180;
    EXPECT_GE(white, 3);
    const auto top = [&](int i) { return document.annotations()[i].rect().top(); };
    EXPECT_EQ(top(0), 5);
    EXPECT_EQ(top(1), 45);   // begins in the band: stays
    EXPECT_EQ(top(2), 41);   // its bounds begin at 60: moves
    EXPECT_EQ(top(3), 60.9); // begins a little earlier: stays
    document.undo();
    EXPECT_EQ(document.base().size(), QSize(200, 100));
    EXPECT_EQ(document.annotations()[2].rect().top(), 61);

    document.setAnnotations({box({90, 45}, {120, 90})});
    document.applyCutout({50, 0, 30, 100}, true);
    ASSERT_EQ(document.base().size(), QSize(170, 100));
    EXPECT_EQ(document.annotations()[0].rect().topLeft(), QPointF(60, 45));
    EXPECT_TRUE(hasColor(document.base(), {120, 50}, qRgb(50, 50, 150), 0));
}

TEST(EditorDocument, ACutAtTheEdgeLeavesNoSeam)
{
    for (const QRectF &band : {QRectF(0, -30, 120, 50), QRectF(0, 80, 120, 90)}) {
        EditorDocument document(rows(120, 100));
        document.applyCutout(band, false);
        ASSERT_EQ(document.base().size(), QSize(120, 80));
        const int first = band.top() < 0 ? 20 : 0;
        for (int y = 0; y < 80; ++y)
            ASSERT_TRUE(hasColor(document.base(), {60, y}, qRgb(first + y, 50, 60), 0));
    }
}

TEST(EditorDocument, NumbersStepsAfterTheHighest)
{
    EditorDocument document(filled({200, 200}));
    for (int i = 0; i < 3; ++i)
        document.add(document.makeAnnotation(ToolKind::Step, {20.0 * i, 20}));
    EXPECT_EQ(stepNumbers(document), (QList{1, 2, 3}));
    document.setSelectedID(document.annotations()[1].id);
    document.deleteSelected();
    EXPECT_EQ(document.nextStepNumber(), 4); // the gap stays
    document.setSelectedID(document.annotations()[1].id);
    document.deleteSelected();
    EXPECT_EQ(document.nextStepNumber(), 2);
    document.setSelectedID(document.annotations()[0].id);
    document.duplicateSelected();
    EXPECT_EQ(stepNumbers(document), (QList{1, 2}));
    EXPECT_EQ(document.annotations()[1].start, document.annotations()[0].start + QPointF(24, 24));
    EXPECT_NE(document.annotations()[1].id, document.annotations()[0].id);
    document.addCopies(document.annotations());
    EXPECT_EQ(stepNumbers(document), (QList{1, 2, 3, 4}));
}

TEST(EditorDocument, ASmallPictureIsNotEnlarged)
{
    EditorDocument document(filled({400, 300}));
    document.addImageObject(filled({40, 30}), QPointF(50, 60));
    EXPECT_EQ(document.annotations()[0].rect(), QRectF(30, 45, 40, 30));
    EXPECT_EQ(document.annotations()[0].color, QColor(Qt::white));
    document.addImageObject(filled({40, 3000}), {});
    EXPECT_EQ(document.annotations()[1].rect().height(), 180) << "as much of the height as of the width";
}

TEST(EditorDocument, StyleFlowsIntoTheSelectionWithoutAnUndoStep)
{
    EditorDocument document(filled({200, 200}));
    document.setStyle(2, ToolKind::Rectangle);
    document.add(document.makeAnnotation(ToolKind::Rectangle, {10, 10}));
    document.add(document.makeAnnotation(ToolKind::Text, {50, 50}));
    EXPECT_EQ(document.annotations()[0].style, 2);
    EXPECT_EQ(document.annotations()[1].style, 0);
    document.undo();
    document.redo();
    document.setSelectedID(document.annotations()[0].id);
    document.setColor(Qt::green);
    document.setLineWidth(11);
    document.setTextFont(TextFont::Serif); // a box has no letters
    document.setStyle(1, ToolKind::Rectangle);
    document.setStyle(1, ToolKind::Text); // another kind
    const Annotation changed = *document.selected();
    EXPECT_EQ(changed.color, QColor(Qt::green));
    EXPECT_EQ(changed.lineWidth, 11);
    EXPECT_EQ(changed.font, 0);
    EXPECT_EQ(changed.style, 1);
    EXPECT_EQ(document.annotations()[1].style, 0);
    document.undo();
    document.undo();
    EXPECT_FALSE(document.canUndo());

    EditorDocument adopting(filled({200, 200}));
    Annotation text = box({5, 5}, {5, 5});
    text.kind = ToolKind::Text;
    text.text = "a";
    text.style = 1;
    text.font = 3;
    text.color = Qt::darkGreen;
    text.lineWidth = 9;
    adopting.add(text);
    Annotation other = box({50, 50}, {90, 90});
    adopting.add(other);
    adopting.adoptStyle(adopting.annotations()[0]);
    EXPECT_EQ(adopting.textFont(), TextFont::Mono);
    EXPECT_EQ(adopting.color(), QColor(Qt::darkGreen));
    EXPECT_EQ(adopting.lineWidth(), 9);
    EXPECT_EQ(adopting.toolStyle(ToolKind::Text), 1);
    EXPECT_EQ(adopting.selectedID(), other.id);
    EXPECT_EQ(adopting.annotations()[1], other); // nothing flowed back
}

TEST(EditorDocument, MakesObjectsWithTheCurrentLook)
{
    EditorDocument document(filled({100, 100}));
    document.setColor(Qt::black);
    EXPECT_EQ(document.makeAnnotation(ToolKind::Highlight, {}).color, SystemColors::yellow());
    EXPECT_EQ(document.makeAnnotation(ToolKind::Arrow, {}).color, QColor(Qt::black));
    EXPECT_EQ(document.makeAnnotation(ToolKind::Stamp, {}).text, "sym:checkmark.circle.fill");
    EXPECT_EQ(document.makeAnnotation(ToolKind::Pen, {3, 4}).points, QList{QPointF(3, 4)});
    // The highlighter's colour is its own.
    document.chooseTool(ToolKind::Highlight);
    EXPECT_EQ(document.color(), SystemColors::yellow());
    document.setColor(Qt::green);
    EXPECT_EQ(document.makeAnnotation(ToolKind::Highlight, {}).color, QColor(Qt::green));
    document.setColor(Qt::black);
    EXPECT_EQ(document.makeAnnotation(ToolKind::Highlight, {}).color, SystemColors::yellow()) << "too dark";
    EXPECT_EQ(document.makeAnnotation(ToolKind::Arrow, {}).color, QColor(Qt::black));
}

TEST(EditorDocument, FindsTheTopMostObjectAndOrdersThem)
{
    EditorDocument document(filled({100, 100}));
    const Annotation lower = box({10, 10}, {60, 60});
    const Annotation upper = box({40, 40}, {90, 90});
    document.add(lower);
    document.add(upper);
    EXPECT_EQ(document.hitTest({50, 50}, 0)->id, upper.id);
    EXPECT_EQ(document.hitTest({20, 20}, 0)->id, lower.id);
    EXPECT_FALSE(document.hitTest({95, 95}, 3));
    EXPECT_TRUE(document.hitTest({95, 95}, 4));
    document.sendToBack();
    EXPECT_EQ(document.hitTest({50, 50}, 0)->id, lower.id);
    EXPECT_EQ(document.selectedID(), upper.id);
    document.bringToFront();
    EXPECT_EQ(document.hitTest({50, 50}, 0)->id, upper.id);
    document.undo();
    EXPECT_EQ(document.hitTest({50, 50}, 0)->id, lower.id);
}

TEST(EditorDocument, SamplesTheBaseAlone)
{
    EditorDocument document(rows(50, 50));
    document.add(box({0, 0}, {50, 50}));
    EXPECT_EQ(document.sampleColor({12.9, 7.9}), QColor(7, 50, 12));
    EXPECT_EQ(document.sampleColor({-0.5, 3}), QColor(3, 50, 0)); // truncated towards the picture
    EXPECT_FALSE(document.sampleColor({50, 3}));
    EXPECT_FALSE(document.sampleColor({-1, 3}));
    EXPECT_FALSE(document.sampleColor({std::nan(""), 3}));
}

TEST(EditorDocument, TellsBeforeAndAfterEachChange)
{
    EditorDocument document(filled({50, 50}));
    Changes changes(document);
    document.add(box({1, 1}, {9, 9}));
    using enum EditorDocument::Field;
    const QList expected{History, Annotations, Selection};
    EXPECT_EQ(changes.before, expected);
    EXPECT_EQ(changes.after, expected);
    changes.after.clear();
    document.setEffects({.rounded = true});
    EXPECT_EQ(changes.after, QList{Effects});
    EXPECT_TRUE(document.canUndo());
    document.undo();
    EXPECT_TRUE(document.effects().rounded);
}

TEST(EditorDocument, FlattensIntoANewPictureAndExportsWithEffects)
{
    EditorDocument document(filled({100, 80}));
    document.add(box({10, 10}, {50, 50}));
    const QImage flat = document.flattened();
    EXPECT_NEAR(shareOfBlue(flat.pixel(10, 30)), 1, 0.05);
    EXPECT_TRUE(hasColor(document.base(), {10, 30}, qRgb(255, 255, 255), 0));
    EXPECT_EQ(document.annotations().size(), 1);
    EXPECT_EQ(document.exported(), flat);
    document.setEffects({.border = true, .borderColor = Qt::red, .rounded = true});
    const QImage exported = document.exported();
    EXPECT_EQ(exported.size(), QSize(116, 96));
    EXPECT_EQ(qAlpha(exported.pixel(0, 0)), 0);
    EXPECT_TRUE(hasColor(exported, {50, 4}, qRgb(255, 0, 0)));
    EXPECT_EQ(exported.copy(30, 30, 40, 40), flat.copy(22, 22, 40, 40));
}
