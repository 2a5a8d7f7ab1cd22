#include "editor/redaction.h"
#include "editor/style_presets.h"
#include "editor_stage.h"
#include "pins/pins.h"
#include "support/pictures.h"
#include "support/printers.h"

#include <QMenu>
#include <QTest>
#include <gmock/gmock.h>

namespace {

class RedactionTest : public testing::Test {
protected:
    RedactionTest()
    {
        QImage image = filled({200, 100});
        editor = stage.open(image);
    }
    void redact(Redaction::Mode mode)
    {
        const auto before = stage.notices.size();
        editor->reading().redact(mode);
        EXPECT_TRUE(editor->session().isBusy());
        ASSERT_TRUE(QTest::qWaitFor([&] { return stage.notices.size() > before; }));
        EXPECT_FALSE(editor->session().isBusy());
    }
    EditorStage stage;
    std::unique_ptr<EditorWindowController> editor;
};

} // namespace

TEST_F(RedactionTest, CoversWhatItFindsAsOneUndoStep)
{
    stage.fakes.faces.answer = QList<QRectF>{{0.1, 0.6, 0.2, 0.3}, {0.6, 0.1, 0.2, 0.3}};
    redact(Redaction::Mode::Faces);
    EditorDocument &document = editor->document();
    ASSERT_EQ(document.annotations().size(), 2);
    EXPECT_EQ(document.annotations().first().kind, ToolKind::Blur);
    // The face grown by a tenth, where a file would be covered too.
    EXPECT_EQ(document.annotations().first().rect(),
              Redaction::pixelRects({{0.08, 0.57, 0.24, 0.36}}, {200, 100}).first());
    EXPECT_FALSE(document.selectedID());
    EXPECT_EQ(stage.notices.last(), Redaction::notice(Redaction::Mode::Faces, 2));
    document.undo();
    EXPECT_TRUE(document.annotations().isEmpty());
    EXPECT_FALSE(document.canUndo());
}

TEST_F(RedactionTest, FindingNothingOrFailingLeavesTheHistoryAlone)
{
    stage.fakes.text.answer = QList<RecognizedLine>{};
    redact(Redaction::Mode::AllText);
    EXPECT_EQ(stage.notices.last(), (Notice{"Nothing to redact", "eye.slash"}));
    stage.fakes.faces.answer = fail("No engine.");
    redact(Redaction::Mode::Faces);
    EXPECT_EQ(stage.notices.last(), (Notice{"No faces found", "eye.slash"}));
    EXPECT_FALSE(editor->document().canUndo());
}

TEST_F(RedactionTest, ACropMeanwhileIsSearchedAnewAndMarksStayOnTop)
{
    stage.fakes.faces.answer = QList<QRectF>{{0.1, 0.6, 0.2, 0.3}};
    EditorDocument &document = editor->document();
    Annotation mark = document.makeAnnotation(ToolKind::Rectangle, {20, 10});
    mark.end = {60, 40};
    document.add(mark);
    editor->reading().redact(Redaction::Mode::Faces);
    document.applyCrop({100, 0, 100, 100});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !stage.notices.isEmpty(); }));
    ASSERT_EQ(document.annotations().size(), 2);
    EXPECT_EQ(document.annotations().first().rect(),
              Redaction::pixelRects({{0.08, 0.57, 0.24, 0.36}}, {100, 100}).first())
        << "where it is in what is left";
    EXPECT_EQ(document.annotations().last().kind, ToolKind::Rectangle);
}

TEST(PresetStore, BeginsWithFourAndKeepsWhatIsSaved)
{
    Defaults defaults{{}};
    PresetStore store(defaults);
    ASSERT_EQ(store.presets().size(), 4);
    EXPECT_EQ(store.presets()[2].name, "Blue Callout");
    const char *colors[]{"#ff3b30", "#ffcc00", "#007aff", "#7361fa"};
    for (int i = 0; i < 4; ++i) {
        EditorDocument document(QImage(10, 10, QImage::Format_RGB32));
        PresetStore::apply(store.presets()[i], document);
        EXPECT_EQ(document.color().name(), colors[i]);
    }
    EXPECT_FALSE(defaults.contains(PresetStore::kKey));

    EditorDocument document(QImage(10, 10, QImage::Format_RGB32));
    document.setTool(ToolKind::Line);
    document.setColor(QColor(10, 20, 30));
    document.setLineWidth(11);
    document.setStyle(1, ToolKind::Line);
    document.setTextFont(TextFont::Serif);
    store.saveCurrent(document, "Thin & dashed");
    const StylePreset saved = store.presets().last();
    EXPECT_EQ(PresetStore(defaults).presets(), store.presets());

    EditorDocument other(QImage(10, 10, QImage::Format_RGB32));
    other.add(other.makeAnnotation(ToolKind::Line, {1, 1}));
    const QColor untouched = other.annotations().first().color;
    PresetStore::apply(saved, other);
    EXPECT_EQ(other.tool(), ToolKind::Line);
    EXPECT_EQ(other.color().toRgb(), QColor(10, 20, 30));
    EXPECT_EQ(other.lineWidth(), 11);
    EXPECT_EQ(other.toolStyle(ToolKind::Line), 1);
    EXPECT_EQ(other.textFont(), TextFont::Serif);
    EXPECT_EQ(other.annotations().first().color, untouched) << "a selected object keeps its look";

    store.remove(saved.id);
    EXPECT_EQ(PresetStore(defaults).presets().size(), 4);
}

TEST(PresetStore, ListsForeignToolsAndLeavesColoursItCannotRead)
{
    Defaults defaults{{}};
    PresetStore store(defaults);
    EditorDocument document(QImage(10, 10, QImage::Format_RGB32));
    const QColor before = document.color();
    PresetStore::apply({QUuid::createUuid(), "Odd", "hologram", {0, 0, 0, 1}, 9, 0, 0}, document);
    EXPECT_EQ(document.lineWidth(), 6);
    PresetStore::apply({QUuid::createUuid(), "Short", "pen", {0, 0, 1}, 9, 0, 7}, document);
    EXPECT_EQ(document.tool(), ToolKind::Pen);
    EXPECT_EQ(document.color(), before);
    EXPECT_EQ(document.textFont(), TextFont::System);
}

TEST(PresetStore, ReplacesWhatDoesNotDecode)
{
    Defaults defaults{{}};
    PresetStore store(defaults);
    store.remove(store.presets().first().id);
    store.remove(store.presets().first().id);
    QJsonArray half = defaults.value(PresetStore::kKey).toArray();
    half.append(QJsonObject{{"name", "half"}});
    defaults.set(PresetStore::kKey, half);
    EXPECT_EQ(PresetStore(defaults).presets().size(), 4) << "none is half read";
    defaults.set(PresetStore::kKey, QJsonArray{});
    EXPECT_EQ(PresetStore(defaults).presets().size(), 0) << "none is a choice too";
}

TEST(PinFrame, FitsTheScreenAndCascades)
{
    const QRectF visible(0, 0, 1000, 800);
    EXPECT_EQ(pinFrame({100, 50}, 1, visible, 0), QRectF(450, 375, 100, 50)) << "never enlarged";
    EXPECT_EQ(pinFrame({100, 50}, 2, visible, 0).size(), QSizeF(50, 25));
    EXPECT_EQ(pinFrame({2000, 1000}, 1, visible, 0).size(), QSizeF(600, 300));
    EXPECT_EQ(pinFrame({1000, 2000}, 1, visible, 0).size(), QSizeF(240, 480));
    EXPECT_EQ(pinFrame({100, 50}, 1, visible, 2).topLeft(), QPointF(498, 423));
    EXPECT_EQ(pinFrame({100, 50}, 1, visible, 6), pinFrame({100, 50}, 1, visible, 0));
}

namespace {

class PinsTest : public testing::Test {
protected:
    PinWindow &pin(QSize size = {300, 150})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        stage.pins.pin(image);
        return *stage.pins.windows().back();
    }
    static void wheel(PinWindow &window, int notches, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event({5, 5}, window.mapToGlobal(QPointF(5, 5)), {}, {0, 120 * notches}, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window, &event);
    }
    EditorStage stage;
};

} // namespace

TEST_F(PinsTest, ZoomsAroundItsCentreWithinLimits)
{
    PinWindow &window = pin();
    const QPointF center = QRectF(window.geometry()).center();
    window.zoom(1.5);
    EXPECT_EQ(window.size(), QSize(450, 225));
    EXPECT_LE((QRectF(window.geometry()).center() - center).manhattanLength(), 1);
    window.zoom(0.001);
    EXPECT_EQ(window.size(), QSize(60, 30));
    window.showActualSize();
    EXPECT_EQ(window.size(), QSize(300, 150));
    wheel(window, 1);
    EXPECT_EQ(window.width(), 375);
}

// Run at scale 2 as well.
TEST_F(PinsTest, ACornerFollowsThePointerWhileTheOppositeOneStays)
{
    PinWindow &window = pin();
    const QRect before = window.geometry();
    QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(2, 2));
    QTest::mouseMove(&window, QPoint(-98, -48));
    EXPECT_NEAR(window.width(), 398, 2);
    EXPECT_NEAR(window.geometry().right(), before.right(), 1);
    EXPECT_NEAR(window.geometry().bottom(), before.bottom(), 1);
    QTest::mouseRelease(&window, Qt::LeftButton, {}, QPoint(0, 0));
}

TEST_F(PinsTest, ShowsThePixelsAsTheyAre)
{
    QImage image(301, 151, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, (x + y) % 2 ? QColor(x % 256, y, 90) : QColor(Qt::white));
    }
    stage.pins.pin(image);
    PinWindow &window = *stage.pins.windows().back();
    const int scale = qRound(window.devicePixelRatioF());
    EXPECT_EQ(window.size(), QSize((301 + scale - 1) / scale, (151 + scale - 1) / scale));
    // Without the corners and the frame of what has the keyboard.
    const QRect inside = image.rect().adjusted(16, 16, -16, -16);
    EXPECT_EQ(window.grab().toImage().convertToFormat(QImage::Format_RGB32).copy(inside), image.copy(inside));
}

TEST_F(PinsTest, AltAndTheWheelChangeTheOpacityDownToAFifth)
{
    PinWindow &window = pin();
    for (int i = 0; i < 20; ++i)
        wheel(window, -1, Qt::AltModifier);
    EXPECT_NEAR(window.windowOpacity(), 0.2, 0.01);
    EXPECT_EQ(window.width(), 300);
    wheel(window, 40, Qt::AltModifier);
    EXPECT_NEAR(window.windowOpacity(), 1, 0.01);
}

TEST_F(PinsTest, ClosesByEscAndDoubleClickAndAllAtOnce)
{
    QTest::keyClick(&pin(), Qt::Key_Escape);
    EXPECT_TRUE(stage.pins.windows().empty());
    QTest::mouseDClick(&pin(), Qt::LeftButton);
    EXPECT_TRUE(stage.pins.windows().empty());
    pin();
    pin();
    stage.pins.closeAll();
    EXPECT_TRUE(stage.pins.windows().empty());
}

TEST_F(PinsTest, KeysMoveSizeAndGoFromPinToPin)
{
    PinWindow &first = pin();
    const QPoint before = first.pos();
    QTest::keyClick(&first, Qt::Key_Right);
    QTest::keyClick(&first, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(first.pos(), before + QPoint(4, 40));
    QTest::keyClick(&first, Qt::Key_Right, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(first.size(), QSize(340, 170));
    EXPECT_EQ(first.pos(), before + QPoint(4, 40)) << "its upper left corner stays";
    QTest::keyClick(&first, Qt::Key_Minus);
    EXPECT_LT(first.width(), 340);

    PinWindow &second = pin();
    EXPECT_TRUE(stage.pins.goToNext());
    EXPECT_TRUE(QTest::qWaitFor([&] { return first.isActiveWindow(); }));
    QTest::keyClick(&first, Qt::Key_Tab);
    EXPECT_TRUE(QTest::qWaitFor([&] { return second.isActiveWindow(); }));
    stage.pins.closeAll();
    EXPECT_FALSE(stage.pins.goToNext());
}

TEST_F(PinsTest, ItsMenuCopiesAndOpensTheImage)
{
    PinWindow &window = pin();
    QImage opened;
    stage.pins.openEditor = [&](const QImage &image) { opened = image; };
    std::unique_ptr<QMenu> menu(window.makeMenu());
    QStringList titles;
    for (QAction *action : menu->actions()) {
        titles.append(action->isSeparator() ? "-" : action->text());
        if (action->text() == "Copy" || action->text() == "Open in Editor")
            action->trigger();
    }
    EXPECT_EQ(titles, (QStringList{"Copy", "Open in Editor", "-", "Actual Size", "Opacity", "-", "Close",
                                   "Close All Pins"}));
    EXPECT_EQ(opened.size(), QSize(300, 150));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !stage.notices.isEmpty(); }));
    EXPECT_EQ(stage.notices.last(), (Notice{"Copied", "checkmark.circle.fill"}));
    EXPECT_EQ(stage.fakes.pasteboard.image().size(), QSize(300, 150));
}
