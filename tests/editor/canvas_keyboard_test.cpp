#include "canvas_fixture.h"
#include "editor/drag_shapes.h"

TEST_F(CanvasTest, KeysPickTools)
{
    EXPECT_TRUE(key(Qt::Key_B));
    EXPECT_EQ(document.tool(), ToolKind::Blur);
    EXPECT_FALSE(key(Qt::Key_A, Qt::ControlModifier));
    EXPECT_EQ(document.tool(), ToolKind::Blur);
    EXPECT_FALSE(key(Qt::Key_Z));

    addBox({0, 0, 50, 50});
    EXPECT_TRUE(key(Qt::Key_R));
    EXPECT_FALSE(document.selectedID()) << "the options are the tool's";
}

TEST_F(CanvasTest, ArrowKeysMoveAndWithAltResize)
{
    addBox({100, 100, 80, 60});
    key(Qt::Key_Right);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(only().rect(), QRectF(101, 90, 80, 60));
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(only().rect(), QRectF(101, 90, 81, 60));
    EXPECT_EQ(undoSteps(), 4) << "one for each key";

    use(ToolKind::Step);
    click(300, 300);
    for (int i = 0; i < 40; ++i)
        key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(only().lineWidth, 30);
    const std::pair<Qt::Key, int> keys[]{
        {Qt::Key_Down, 29}, {Qt::Key_Up, 30}, {Qt::Key_Left, 29}, {Qt::Key_Right, 30}};
    for (const auto &[arrow, lineWidth] : keys) {
        key(arrow, Qt::AltModifier);
        EXPECT_EQ(only().lineWidth, lineWidth) << arrow;
    }
    document.setSelectedID({});
    EXPECT_FALSE(key(Qt::Key_Right));
}

TEST_F(CanvasTest, ReturnPlacesWhatTheToolMakesInTheMiddleAndKeysGoOnFromThere)
{
    for (ToolKind tool : Tools::toolbarTools()) {
        if (tool == ToolKind::Select || tool == ToolKind::Crop || tool == ToolKind::Cutout)
            continue;
        use(tool);
        document.setSelectedID({});
        const auto before = objects().size();
        ASSERT_TRUE(key(Qt::Key_Return)) << Tools::rawValue(tool).toStdString();
        if (fieldIsOpen)
            typed = "Words";
        canvas.commitText();
        ASSERT_EQ(objects().size(), before + 1) << Tools::rawValue(tool).toStdString();
        const Annotation made = objects().last();
        EXPECT_EQ(made.kind, tool);
        EXPECT_TRUE(made.isMeaningful());
        EXPECT_EQ(document.selectedID(), made.id);
        EXPECT_TRUE(document.imageBounds().contains(made.bounds().center()));
        announced.clear();
        key(Qt::Key_Right);
        EXPECT_NEAR(objects().last().bounds().left(), made.bounds().left() + 1, 0.01);
        EXPECT_EQ(announced.size(), 1) << "each step is told once";
    }
    use(ToolKind::Rectangle);
    document.setSelectedID({});
    key(Qt::Key_Return);
    const QPointF middle = objects().last().start;
    document.setSelectedID({});
    key(Qt::Key_Return);
    EXPECT_NE(objects().last().start, middle) << "not on top of the one that lies there";
    document.setTool(ToolKind::Select);
    document.setSelectedID({});
    EXPECT_FALSE(key(Qt::Key_Return));
}

TEST_F(CanvasTest, KeysMoveAFrameThatReturnTakesAndEscapeDrops)
{
    use(ToolKind::Crop);
    key(Qt::Key_Return);
    const QRectF first = *canvas.band();
    EXPECT_TRUE(session.isPlacing());
    key(Qt::Key_Right);
    key(Qt::Key_Up, Qt::ShiftModifier);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(*canvas.band(), first.translated(1, -10).adjusted(0, 0, -1, 0));
    EXPECT_EQ(announced.last(), QStringLiteral("%1 by %2 at %3, %4")
                                    .arg(first.width() - 1)
                                    .arg(first.height())
                                    .arg(first.x() + 1)
                                    .arg(first.y() - 10));
    for (int i = 0; i < 100; ++i)
        key(Qt::Key_Left, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_GE(canvas.band()->width(), 8) << "never too small to be cut to";
    for (int i = 0; i < 200; ++i)
        key(i % 2 ? Qt::Key_Right : Qt::Key_Down, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(canvas.band()->bottomRight(), QPointF(width, height)) << "nor larger than the picture";
    key(Qt::Key_Escape);
    EXPECT_FALSE(canvas.band() || session.isPlacing() || document.canUndo());
    key(Qt::Key_Return);
    key(Qt::Key_Return);
    EXPECT_EQ(document.base().size(), first.size().toSize());
    EXPECT_FALSE(session.isPlacing());

    use(ToolKind::Cutout);
    key(Qt::Key_Return);
    const QRectF rows = *canvas.band();
    EXPECT_EQ(rows.width(), document.base().width());
    key(Qt::Key_Down, Qt::AltModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(document.base().height(), first.height() - rows.height() - 1);

    key(Qt::Key_Return);
    press(10, 10);
    EXPECT_FALSE(session.isPlacing()) << "the pointer goes on without the keys' frame";
    release(10, 10);
    key(Qt::Key_Return);
    key(Qt::Key_R);
    EXPECT_FALSE(session.isPlacing()) << "and so does another tool";
}

TEST_F(CanvasTest, KeysChooseAColourAndAnAreaOfText)
{
    canvas.startEyedropper();
    key(Qt::Key_Return);
    for (int i = 0; i < 100; ++i)
        key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(*canvas.aim(), QPointF(0.5, 300.5)) << "inside the picture, in the middle of a pixel";
    for (int i = 0; i < 28; ++i)
        key(Qt::Key_Up, Qt::ShiftModifier);
    for (int i = 0; i < 10; ++i)
        key(Qt::Key_Right);
    key(Qt::Key_Return);
    EXPECT_EQ(document.color(), QColor(0x12, 0xab, 0xef));
    EXPECT_EQ(session.mode(), EditorSession::Mode::Editing);

    canvas.startTextSelection();
    key(Qt::Key_Return);
    key(Qt::Key_Down, Qt::ShiftModifier);
    const QRect area = canvas.band()->toRect();
    key(Qt::Key_Return);
    EXPECT_EQ(textAreas, QList<QRect>{area});
}

TEST_F(CanvasTest, ArrowKeysScrollAZoomedPictureAndFollowWhatTheyMove)
{
    canvas.setZoom(4);
    const QPointF origin = canvas.viewport().origin();
    EXPECT_TRUE(key(Qt::Key_Right));
    EXPECT_EQ(canvas.viewport().origin(), origin - QPointF(40, 0));
    EXPECT_TRUE(key(Qt::Key_Down, Qt::ShiftModifier));
    EXPECT_LT(canvas.viewport().origin().y(), origin.y() - 300);
    addBox({0, 0, 20, 20});
    key(Qt::Key_Right);
    const QRectF view({}, canvas.viewport().view);
    EXPECT_TRUE(view.contains(canvas.viewport().toView(only().bounds())));
}

TEST_F(CanvasTest, TabGoesThroughTheObjectsInBothDirections)
{
    EXPECT_FALSE(key(Qt::Key_Tab)) << "without objects the key belongs to the window";
    const Annotation first = addBox({0, 0, 50, 50});
    const Annotation second = addBox({100, 0, 50, 50});
    document.setSelectedID({});
    key(Qt::Key_Tab);
    EXPECT_EQ(document.selectedID(), first.id);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(document.selectedID(), first.id);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(document.selectedID(), second.id);
    document.setSelectedID({});
    key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(document.selectedID(), second.id);
    canvas.setZoom(6);
    addBox({700, 500, 50, 50});
    for (int i = 0; i < 3; ++i) {
        key(Qt::Key_Tab);
        const QRectF view({}, canvas.viewport().view);
        EXPECT_TRUE(view.intersects(canvas.viewport().toView(document.selected()->bounds()))) << i;
    }
    use(ToolKind::Select);
    const QPointF inside = document.selected()->bounds().center();
    doubleClick(inside.x(), inside.y());
    EXPECT_FALSE(fieldIsOpen) << "a box holds no text";
}

TEST_F(CanvasTest, AHeldArrowKeyIsOneStep)
{
    addBox({100, 100, 80, 60});
    const auto before = document.undoSteps();
    canvas.keyPress({Qt::Key_Right, {}, false});
    for (int i = 0; i < 9; ++i)
        canvas.keyPress({Qt::Key_Right, {}, true});
    EXPECT_EQ(only().start.x(), 110);
    EXPECT_EQ(document.undoSteps(), before + 1);
    // Held on when the next object is selected: a step of its own.
    const Annotation other = addBox({300, 300, 80, 60});
    canvas.keyPress({Qt::Key_Right, {}, true});
    EXPECT_EQ(document.undoSteps(), before + 3);
    document.undo();
    EXPECT_EQ(document.object(other.id)->start.x(), 300);
    document.undo();
    document.undo();
    EXPECT_EQ(only().start.x(), 100);
}
