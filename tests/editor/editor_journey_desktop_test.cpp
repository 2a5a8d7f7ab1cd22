#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor_stage.h"
#include "library/library_versions.h"
#include "support/accessibility_bus.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/xdotool.h"
#include "ui/appearance.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <gmock/gmock.h>

// An editor on a real desktop, used as a person would: every action is a pointer or a key event from another
// program.

namespace {

class Journey : public testing::Test {
protected:
    Journey()
    {
        QImage image = filled({900, 600}, QColor(250, 250, 252));
        path = stage.inLibrary("shot.png");
        EXPECT_TRUE(ImageFiles::write(image, path));
        open();
    }
    void open()
    {
        editor = stage.open(path);
        editor->onClose = [this](EditorWindowController *) { closed = true; };
        closed = false;
        editor->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&editor->window()));
        EXPECT_TRUE(QTest::qWaitFor([this] { return session().displayZoom() == 1; }))
            << "the picture fits at 100 percent";
    }
    EditorDocument &document() { return editor->document(); }
    EditorSession &session() { return editor->session(); }
    const QList<Annotation> &objects() { return document().annotations(); }

    // The screen position of an image pixel.
    QPoint at(const QPointF &pixel)
    {
        return editor->canvas().mapToGlobal(
            editor->canvas().interaction().viewport().toView(pixel).toPoint());
    }
    static QStringList move(const QPoint &to)
    {
        return {"mousemove", QString::number(to.x()), QString::number(to.y())};
    }
    void drag(const QPointF &from, const QPointF &to)
    {
        xdotool(move(at(from)) + QStringList{"mousedown", "1"} + move(at((from * 2 + to) / 3)) +
                move(at((from + to * 2) / 3)) + move(at(to)) + QStringList{"mouseup", "1"});
    }
    void click(const QPointF &pixel) { xdotool(move(at(pixel)) + QStringList{"click", "1"}); }
    static void key(const QString &key) { xdotool({"key", key}); }
    static void type(const QString &text) { xdotool({"type", "--delay", "5", text}); }
    void pick(ToolKind tool)
    {
        key(QString(Tools::shortcutKey(tool)).toLower());
        ASSERT_TRUE(QTest::qWaitFor([&] { return document().tool() == tool; }));
    }
    void expectObjects(qsizetype count)
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return objects().size() == count; }))
            << objects().size() << " objects";
    }
    // A drag with a tool that leaves one object more.
    void draw(ToolKind tool, const QPointF &from, const QPointF &to)
    {
        pick(tool);
        const auto before = objects().size();
        drag(from, to);
        expectObjects(before + 1);
        EXPECT_EQ(objects().last().kind, tool);
    }
    void save()
    {
        const auto before = stage.notices.size();
        key("ctrl+s");
        ASSERT_TRUE(QTest::qWaitFor([&] { return stage.notices.size() > before; }));
        EXPECT_EQ(stage.notices.last().text, "Saved shot.png");
    }
    void close()
    {
        key("ctrl+w");
        ASSERT_TRUE(QTest::qWaitFor([&] { return closed; }));
        editor.reset();
    }
    QStringList kinds()
    {
        QStringList result;
        for (const Annotation &annotation : objects())
            result.append(Tools::rawValue(annotation.kind));
        return result;
    }

    Appearance appearance{*qApp};
    EditorStage stage;
    QString path;
    std::unique_ptr<EditorWindowController> editor;
    bool closed = false;
};

} // namespace

TEST_F(Journey, DrawsWithEveryToolSavesReopensMovesAndRestores)
{
    draw(ToolKind::Arrow, {60, 60}, {160, 120});
    draw(ToolKind::Rectangle, {200, 60}, {300, 120});
    draw(ToolKind::Ellipse, {340, 60}, {440, 120});
    draw(ToolKind::Line, {480, 60}, {580, 120});
    draw(ToolKind::Pen, {620, 60}, {720, 120});
    draw(ToolKind::Highlight, {760, 60}, {860, 100});
    pick(ToolKind::Text);
    click({60, 160});
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor->canvas().interaction().isEditingText(); }));
    type("Check this");
    key("Return");
    expectObjects(7);
    EXPECT_EQ(objects().last().text, "Check this");
    draw(ToolKind::Callout, {260, 160}, {460, 240});
    type("Due in March");
    key("Return");
    ASSERT_TRUE(QTest::qWaitFor([&] { return objects().last().text == "Due in March"; }));
    pick(ToolKind::Step);
    click({560, 200});
    expectObjects(9);
    pick(ToolKind::Stamp);
    click({660, 200});
    expectObjects(10);
    draw(ToolKind::Blur, {60, 320}, {160, 380});
    draw(ToolKind::Spotlight, {200, 320}, {300, 380});
    draw(ToolKind::Magnify, {340, 320}, {440, 420});
    draw(ToolKind::Measure, {480, 340}, {640, 340});

    // What was typed can be typed again; then back and forth.
    pick(ToolKind::Select);
    click({80, 172});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return document().selected() && document().selected()->text == "Check this"; }));
    key("Return");
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor->canvas().interaction().isEditingText(); }));
    type("Look here");
    key("Return");
    ASSERT_TRUE(QTest::qWaitFor([&] { return objects()[6].text == "Look here"; }));
    key("ctrl+z");
    ASSERT_TRUE(QTest::qWaitFor([&] { return objects()[6].text == "Check this"; }));
    key("ctrl+shift+z");
    ASSERT_TRUE(QTest::qWaitFor([&] { return objects()[6].text == "Look here"; }));

    // The two tools that work on the picture itself.
    pick(ToolKind::Cutout);
    drag({100, 480}, {300, 540});
    ASSERT_TRUE(QTest::qWaitFor([&] { return document().base().height() == 540; }));
    pick(ToolKind::Crop);
    drag({20, 20}, {880, 520});
    ASSERT_TRUE(QTest::qWaitFor([&] { return document().base().size() == QSize(860, 500); }));
    const QStringList drawn = kinds();
    const QList<Annotation> before = objects();
    save();
    close();

    open();
    EXPECT_EQ(document().base().size(), QSize(860, 500));
    EXPECT_EQ(kinds(), drawn);
    for (qsizetype i = 0; i < before.size(); ++i) {
        EXPECT_EQ(objects()[i].start, before[i].start) << drawn[i].toStdString();
        EXPECT_EQ(objects()[i].end, before[i].end) << drawn[i].toStdString();
        EXPECT_EQ(objects()[i].text, before[i].text) << drawn[i].toStdString();
    }

    pick(ToolKind::Select);
    const QPointF boxCenter = objects()[1].rect().center();
    drag(boxCenter, boxCenter + QPointF(40, 30));
    ASSERT_TRUE(QTest::qWaitFor([&] { return objects()[1].rect().center() == boxCenter + QPointF(40, 30); }));
    save();
    close();

    LibraryVersions history(stage.library, stage.clock);
    const auto versions = history.versions(path);
    ASSERT_EQ(versions.size(), 2);
    ASSERT_TRUE(history.restore(versions.last(), path));
    open();
    EXPECT_EQ(document().base().size(), QSize(900, 600));
    EXPECT_TRUE(objects().isEmpty()) << "the first version is the capture as it came";
    close();
    ASSERT_TRUE(history.restore(history.versions(path).first(), path));
    open();
    EXPECT_EQ(kinds(), drawn) << "and what was restored over can be had back";
}

TEST_F(Journey, IsOperatedByTheKeyboardAlone)
{
    draw(ToolKind::Rectangle, {200, 60}, {300, 120});
    draw(ToolKind::Ellipse, {340, 60}, {440, 120});
    key("Escape");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !document().selectedID(); }));
    key("Tab");
    ASSERT_TRUE(QTest::qWaitFor([&] { return document().selectedID() == objects()[0].id; }));
    key("Right");
    ASSERT_TRUE(QTest::qWaitFor([&] { return objects()[0].start == QPointF(201, 60); }));

    // Out of the canvas, along the bar, and back.
    key("F6");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !editor->canvas().hasFocus(); }));
    const QWidget *first = QApplication::focusWidget();
    key("Tab");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() != first; }));
    for (int i = 0; i < 4 && !editor->canvas().hasFocus(); ++i)
        key("F6");
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor->canvas().hasFocus(); }));

    key("ctrl+k");
    ASSERT_TRUE(QTest::qWaitFor([&] { return session().isPaletteOpen(); }));
    type("drop shadow");
    key("Return");
    EXPECT_TRUE(QTest::qWaitFor([&] { return document().effects().shadow; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor->canvas().hasFocus(); }));
}

TEST_F(Journey, IsDrawnInByTheKeyboardAloneAndTellsAReaderOfIt)
{
    AccessibilityBus bus;
    ASSERT_TRUE(bus.isConnected());
    bus.listen();
    QTest::qWait(200); // until the toolkit has heard of the listener
    const auto hears = [&](const QString &key, const QString &words) {
        bus.forget();
        this->key(key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return bus.spoken().contains(words); }, 3000))
            << key.toStdString() << ": " << bus.spoken().join(" | ").toStdString();
    };
    pick(ToolKind::Arrow);
    hears("Return", "red arrow [graphic]");
    const Annotation arrow = objects().first();
    const QPoint corner = arrow.bounds().topLeft().toPoint();
    hears("Right", QStringLiteral("%1, %2").arg(corner.x() + 1).arg(corner.y()));
    hears("Right", QStringLiteral("%1, %2").arg(corner.x() + 2).arg(corner.y()));
    QTest::qWait(300);
    EXPECT_EQ(bus.events().size(), 1) << "one event for one step";
    hears("Return", "red arrow [graphic]");
    bus.forget();
    key("Tab");
    ASSERT_TRUE(QTest::qWaitFor([&] { return document().selectedID() == arrow.id; }));
    QTest::qWait(300);
    QStringList told;
    for (const auto &event : bus.events())
        told += event.kind + QString::number(event.detail) + ' ' + event.words + bus.name(event.source);
    EXPECT_EQ(bus.spoken(), QStringList{"red arrow [graphic]"});
    EXPECT_LE(bus.events().size(), 8) << told.join('\n').toStdString();
    bus.forget();
    key("Delete");
    expectObjects(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bus.spoken().contains(editor->canvas().accessibleLabel() + " [canvas]"); }, 3000));

    pick(ToolKind::Crop);
    key("Return");
    ASSERT_TRUE(QTest::qWaitFor([&] { return session().isPlacing(); }));
    hears("shift+Right", "540 by 360 at 190, 120");
    key("Return");
    EXPECT_TRUE(QTest::qWaitFor([&] { return document().base().size() == QSize(540, 360); }));

    // The bars are one stop each, whose controls the arrows reach.
    hears("F6", "Zoom Out [push button]");
}

TEST_F(Journey, ZoomsWithCtrlAndTheWheelAndPansWithSpace)
{
    xdotool(move(at({400, 300})) +
            QStringList{"keydown", "ctrl", "click", "--repeat", "8", "4", "keyup", "ctrl"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return session().zoom().value_or(0) > 3; }));
    const QPoint pointer = at({400, 300});
    xdotool(move(pointer) + QStringList{"keydown", "ctrl", "click", "4", "keyup", "ctrl"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return session().zoom().value_or(0) > 3.4; }));
    EXPECT_LE((at({400, 300}) - pointer).manhattanLength(), 2) << "the point under the pointer stays";

    const QPointF origin = editor->canvas().interaction().viewport().origin();
    // Key and pointer events of one burst may overtake one another.
    xdotool({"keydown", "space"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor->canvas().cursor().shape() == Qt::OpenHandCursor; }));
    xdotool(QStringList{"mousedown", "1"} + move(pointer - QPoint(30, 20)) + QStringList{"mouseup", "1"});
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return editor->canvas().interaction().viewport().origin() == origin - QPointF(30, 20); }));
    xdotool({"keyup", "space"});
    EXPECT_TRUE(objects().isEmpty());
    key("ctrl+0");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !session().zoom(); }));
    key("ctrl+1");
    ASSERT_TRUE(QTest::qWaitFor([&] { return session().zoom() == 1; }));
}

TEST_F(Journey, ShowsItsObjectsOnTheAccessibilityBus)
{
    draw(ToolKind::Rectangle, {200, 60}, {300, 120});
    AccessibilityBus bus;
    ASSERT_TRUE(bus.isConnected());
    std::optional<AccessibilityBus::Node> canvas;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        canvas = bus.find(bus.root(), editor->canvas().accessibleLabel(), 4);
        return canvas.has_value();
    }));
    const auto shown = bus.children(*canvas);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(bus.name(shown.first()), "red box");
    const QDBusMessage extents = bus.call(shown.first(), "org.a11y.atspi.Component", "GetExtents",
                                          {QVariant::fromValue<quint32>(0)});
    ASSERT_FALSE(extents.arguments().isEmpty());
    const auto structure = extents.arguments().first().value<QDBusArgument>();
    int x = 0, y = 0, width = 0, height = 0;
    structure.beginStructure();
    structure >> x >> y >> width >> height;
    structure.endStructure();
    const QPoint topLeft = at({200, 60});
    EXPECT_NEAR(x, topLeft.x(), 5);
    EXPECT_NEAR(y, topLeft.y(), 5);
    EXPECT_NEAR(width, 106, 3);
    EXPECT_NEAR(height, 66, 3);
    QDBusConnection::disconnectFromBus("reader");
}
