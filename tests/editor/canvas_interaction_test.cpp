#include "canvas_fixture.h"
#include "editor/drag_shapes.h"
#include "editor/object_clipboard.h"

TEST_F(CanvasTest, DrawsEachDraggedToolFromPressToRelease)
{
    for (ToolKind tool :
         {ToolKind::Arrow, ToolKind::Rectangle, ToolKind::Ellipse, ToolKind::Line, ToolKind::Highlight,
          ToolKind::Blur, ToolKind::Spotlight, ToolKind::Magnify, ToolKind::Measure}) {
        use(tool);
        stroke({100, 100}, {240, 180});
        const Annotation drawn = objects().last();
        EXPECT_EQ(drawn.kind, tool);
        EXPECT_EQ(drawn.start, QPointF(100, 100));
        EXPECT_EQ(drawn.end, QPointF(240, 180));
        EXPECT_EQ(document.selectedID(), drawn.id);
        document.deleteSelected();
    }
}

TEST_F(CanvasTest, APenKeepsEveryPointAndIgnoresShift)
{
    use(ToolKind::Pen);
    press(10, 10);
    drag(20, 30, Qt::ShiftModifier);
    drag(50, 35, Qt::ShiftModifier);
    release(50, 35);
    EXPECT_EQ(only().points, (QList<QPointF>{{10, 10}, {20, 30}, {50, 35}}));
}

TEST_F(CanvasTest, ShiftSnapsLinesToEighthsAndBoxesToSquares)
{
    EXPECT_EQ(constrained({0, 0}, {-30, 10}, ToolKind::Rectangle), QPointF(-30, 30));
    EXPECT_EQ(constrained({5, 5}, {5, -15}, ToolKind::Ellipse), QPointF(25, -15))
        << "zero counts as positive";
    const QPointF flat = constrained({0, 0}, {100, 9}, ToolKind::Arrow);
    EXPECT_NEAR(flat.x(), std::hypot(100, 9), 1e-9) << "the length stays";
    EXPECT_NEAR(flat.y(), 0, 1e-9);
    const QPointF slant = constrained({0, 0}, {-10, -11}, ToolKind::Measure);
    EXPECT_NEAR(slant.x(), slant.y(), 1e-9);

    use(ToolKind::Rectangle);
    stroke({100, 100}, {160, 220}, Qt::ShiftModifier);
    EXPECT_EQ(only().end, QPointF(220, 220));
}

TEST_F(CanvasTest, DropsWhatIsTooSmallInSilence)
{
    for (ToolKind tool : {ToolKind::Arrow, ToolKind::Rectangle, ToolKind::Pen, ToolKind::Blur}) {
        use(tool);
        click(50, 50);
    }
    EXPECT_TRUE(objects().isEmpty());
    EXPECT_FALSE(document.canUndo());
}

TEST_F(CanvasTest, AClickWithTheCalloutToolMakesABubbleAndOpensItsText)
{
    use(ToolKind::Callout);
    click(100, 100);
    EXPECT_EQ(only().rect(), QRectF(100, 100, 220, 99)) << "18 percent of the width, but at least 220";
    EXPECT_TRUE(fieldIsOpen);
    EXPECT_EQ(canvas.editedObject(), only().id);
    typed = "  Look here \n";
    click(700, 500);
    EXPECT_EQ(objects().first().text, "Look here");
    EXPECT_FALSE(fieldIsOpen && canvas.editedObject() == objects().first().id);
}

TEST_F(CanvasTest, AClickWithTheStampToolCentresAStampOnIt)
{
    use(ToolKind::Stamp);
    click(300, 300);
    EXPECT_EQ(only().rect(), QRectF(276, 276, 48, 48)) << "8 percent of the shorter side";
    document.deleteSelected();
    document.setStampValue("key:Space");
    click(300, 300);
    EXPECT_EQ(only().rect().size(), QSizeF(48 * 2.2, 48));
    EXPECT_EQ(only().rect().center(), QPointF(300, 300));
}

TEST_F(CanvasTest, AStepIsPlacedByThePressAlone)
{
    use(ToolKind::Step);
    press(40, 50);
    EXPECT_EQ(only().number, 1);
    release(40, 50);
    click(140, 50);
    EXPECT_EQ(objects().last().number, 2);
}

TEST_F(CanvasTest, MovesFromWhereTheObjectWasAsOneUndoStep)
{
    const Annotation box = addBox({100, 100, 80, 60});
    use(ToolKind::Select);
    press(150, 140);
    drag(151, 141);
    drag(170, 150);
    release(170, 150);
    EXPECT_EQ(only().start, QPointF(120, 110));
    document.undo();
    EXPECT_EQ(only().start, box.start);
    click(150, 140);
    EXPECT_EQ(undoSteps(), 1) << "the adding alone: a click is no step";
}

TEST_F(CanvasTest, OtherToolsMoveOnlyTheSelectedObject)
{
    const Annotation box = addBox({100, 100, 80, 60});
    use(ToolKind::Arrow);
    press(150, 140); // it is selected, having been added last
    drag(160, 150);
    release(160, 150);
    EXPECT_EQ(only().start, box.start + QPointF(10, 10));

    document.setSelectedID({});
    stroke({150, 140}, {300, 300});
    EXPECT_EQ(objects().size(), 2) << "an arrow begins on the box instead";
}

TEST_F(CanvasTest, HandlesOfTheSelectionResizeIt)
{
    addBox({100, 100, 80, 60});
    use(ToolKind::Rectangle);
    stroke({180, 160}, {220, 210});
    EXPECT_EQ(only().rect(), QRectF(100, 100, 120, 110));
    // From up to 8 points away, and no farther.
    stroke({220 + 5, 210 + 5}, {230, 220});
    EXPECT_EQ(only().rect(), QRectF(100, 100, 130, 120));
    EXPECT_EQ(undoSteps(), 3);
}

TEST_F(CanvasTest, EachHandleMovesItsOwnSidesAlone)
{
    using enum AnnotationHandle;
    const Annotation box = addBox({100, 100, 80, 60});
    const std::pair<AnnotationHandle, QRectF> rows[]{
        {TopLeft, {110, 105, 70, 55}},     {TopRight, {100, 105, 90, 55}}, {BottomLeft, {110, 100, 70, 65}},
        {BottomRight, {100, 100, 90, 65}}, {Top, {100, 105, 80, 55}},      {Bottom, {100, 100, 80, 65}},
        {Left, {110, 100, 70, 60}},        {Right, {100, 100, 90, 60}}};
    for (const auto &[handle, rect] : rows) {
        const QPointF from = *box.handlePoint(handle);
        stroke(from, from + QPointF(10, 5));
        EXPECT_EQ(only().rect(), rect) << int(handle);
        document.undo();
        EXPECT_EQ(only().rect(), box.rect()) << "one step";
        document.setSelectedID(box.id);
    }
}

TEST_F(CanvasTest, ReachesAnObjectFromSixPointsAwayAtAnyZoom)
{
    addBox({100, 100, 80, 60}); // to 183 with half of its line
    use(ToolKind::Select);
    const std::tuple<double, double, bool> rows[]{
        {1, 5.9, true}, {1, 6.1, false}, {4, 1.4, true}, {4, 1.6, false}, {0.5, 11.9, true}};
    for (const auto &[zoom, away, isHit] : rows) {
        document.setSelectedID({});
        canvas.setZoom(zoom);
        click(183 + away, 130);
        EXPECT_EQ(document.selectedID().has_value(), isHit) << zoom << ": " << away;
    }
}

TEST_F(CanvasTest, SelectingAnObjectTakesItsLookForTheNextAndChangesNone)
{
    const Annotation first = addBox({100, 100, 80, 60});
    document.setSelectedID({});
    document.setColor(Qt::darkGreen);
    document.setLineWidth(11);
    const Annotation second = addBox({400, 300, 80, 60});
    const QList<Annotation> before = objects();
    use(ToolKind::Select);
    const std::function<void()> ways[]{[&] { click(140, 130); }, [&] { key(Qt::Key_Backtab); },
                                       [&] { canvas.selectForMenu(at(140, 130)); }};
    for (const auto &select : ways) {
        document.setSelectedID({});
        document.setColor(Qt::darkGreen);
        document.setSelectedID(second.id);
        select();
        EXPECT_EQ(document.selectedID(), first.id);
        EXPECT_EQ(objects(), before);
        EXPECT_EQ(document.color(), first.color);
        EXPECT_EQ(document.lineWidth(), first.lineWidth);
    }
}

TEST_F(CanvasTest, ShiftOnALinesEndSnapsFromItsOtherEnd)
{
    use(ToolKind::Line);
    stroke({100, 100}, {200, 100});
    press(200, 100);
    drag(203, 190, Qt::ShiftModifier);
    release(203, 190);
    EXPECT_NEAR(only().end.x(), only().end.y(), 1e-6);
    EXPECT_EQ(only().start, QPointF(100, 100));
}

TEST_F(CanvasTest, TheCropToolTakesNoNoticeOfHandles)
{
    addBox({100, 100, 80, 60});
    use(ToolKind::Crop);
    stroke({100, 100}, {300, 250});
    EXPECT_EQ(document.base().size(), QSize(200, 150));
    document.undo();
    EXPECT_EQ(document.base().size(), QSize(width, height));
    EXPECT_EQ(only().rect(), QRectF(100, 100, 80, 60));
}

TEST_F(CanvasTest, DropsANarrowCropBand)
{
    use(ToolKind::Crop);
    stroke({100, 100}, {107, 500});
    stroke({100, 100}, {500, 107});
    EXPECT_EQ(document.base().size(), QSize(width, height));
    EXPECT_FALSE(document.canUndo());
    stroke({-50, -50}, {9, 9});
    EXPECT_EQ(document.base().size(), QSize(9, 9)) << "the band is cut to the picture";
}

TEST_F(CanvasTest, CutsOutRowsOrColumnsByTheToolsStyle)
{
    use(ToolKind::Cutout);
    press(100, 100);
    drag(400, 160);
    EXPECT_EQ(canvas.band(), QRectF(0, 100, width, 60));
    release(400, 160);
    EXPECT_EQ(document.base().size(), QSize(width, height - 60));

    document.setStyle(1, ToolKind::Cutout);
    press(300, 10);
    drag(200, 400);
    EXPECT_EQ(canvas.band(), QRectF(200, 0, 100, height - 60));
    release(200, 400);
    EXPECT_EQ(document.base().size(), QSize(width - 100, height - 60));
}

TEST_F(CanvasTest, ThePressCommitsAnOpenText)
{
    use(ToolKind::Text);
    click(50, 60);
    ASSERT_TRUE(fieldIsOpen);
    EXPECT_TRUE(canvas.editedObject().isNull());
    typed = "Hello";
    press(300, 300);
    EXPECT_EQ(only().text, "Hello");
    EXPECT_EQ(only().start, QPointF(50, 60));
    release(300, 300);
    typed = "   ";
    canvas.commitText();
    EXPECT_EQ(objects().size(), 1) << "an empty text makes no object";
}

TEST_F(CanvasTest, AnEmptiedTextGoesAndAnEmptiedCalloutStays)
{
    writeHello();
    use(ToolKind::Select);
    doubleClick(60, 70);
    ASSERT_TRUE(fieldIsOpen);
    EXPECT_EQ(typed, "Hello");
    canvas.commitText();
    key(Qt::Key_Return);
    typed = "";
    canvas.commitText();
    EXPECT_TRUE(objects().isEmpty());
    document.undo();
    EXPECT_EQ(only().text, "Hello") << "one step brings it back";
    document.undo();
    EXPECT_FALSE(document.canUndo()) << "a text that stayed as it was is no step";
    document.redo();

    use(ToolKind::Callout);
    stroke({200, 200}, {400, 300});
    typed = "";
    canvas.commitText();
    EXPECT_EQ(objects().size(), 1) << "a new bubble without words goes";
}

TEST_F(CanvasTest, PlacesTheTextFieldOverItsObject)
{
    use(ToolKind::Text);
    document.setLineWidth(5);
    click(50, 60);
    const auto field = canvas.inlineText();
    ASSERT_TRUE(field);
    EXPECT_EQ(field->frame, QRectF(at(50, 60), QSizeF(240, 40))) << "30 pixels of type, 1.35 high";
    EXPECT_EQ(field->placeholder, "Type, then Return");
    canvas.commitText();

    use(ToolKind::Callout);
    stroke({200, 200}, {400, 300});
    const auto bubble = canvas.inlineText();
    ASSERT_TRUE(bubble);
    EXPECT_EQ(bubble->frame, QRectF(at(212, 209), QSizeF(176, 82))) << "inset by 0.4 and 0.3 of the type";
    EXPECT_EQ(bubble->placeholder, "Type your callout, then Return (⌥↩ for a new line)");
}

TEST_F(CanvasTest, TheEyedropperTakesOnePixelAndEnds)
{
    addBox({100, 100, 80, 60});
    canvas.startEyedropper();
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::Cross);
    click(10, 20);
    EXPECT_EQ(only().color, QColor(0x12, 0xab, 0xef)) << "the selected object takes it too";
    EXPECT_EQ(notices, QList<Notice>({{"Picked #12ABEF", "eyedropper"}}));
    EXPECT_EQ(session.mode(), EditorSession::Mode::Editing);
    for (const bool escapes : {false, true}) {
        canvas.startEyedropper();
        if (escapes)
            key(Qt::Key_Escape);
        else
            click(-20, -20);
        EXPECT_EQ(notices.size(), 1);
        EXPECT_EQ(session.mode(), EditorSession::Mode::Editing);
    }
}

TEST_F(CanvasTest, AskedForTextItHandsOverTheAreaInWholePixels)
{
    canvas.startTextSelection();
    stroke({100.4, 50.6}, {200.2, 90.9});
    EXPECT_EQ(textAreas, QList<QRect>{QRect(100, 50, 101, 41)});
    EXPECT_EQ(session.mode(), EditorSession::Mode::Editing);

    canvas.startTextSelection();
    stroke({100, 50}, {106, 90});
    EXPECT_EQ(textAreas.size(), 1) << "too narrow";

    canvas.startTextSelection();
    press(100, 50);
    drag(300, 200);
    key(Qt::Key_Escape);
    drag(310, 210);
    release(310, 210);
    EXPECT_EQ(textAreas.size(), 1);
    EXPECT_EQ(session.mode(), EditorSession::Mode::Editing);
}

TEST_F(CanvasTest, EscapeEndsADragWithoutATrace)
{
    use(ToolKind::Crop);
    press(100, 100);
    drag(300, 300);
    key(Qt::Key_Escape);
    drag(320, 320);
    release(320, 320);
    EXPECT_EQ(document.base().size(), QSize(width, height));
}

TEST_F(CanvasTest, SpaceAndDragPushThePictureOnlyWhenItIsZoomed)
{
    canvas.setZoom(4);
    const QPointF before = canvas.viewport().origin();
    key(Qt::Key_Space);
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::OpenHand);
    canvas.press({{100, 100}, {}, 1});
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::ClosedHand);
    canvas.drag({130, 90}, {});
    canvas.release({130, 90});
    canvas.keyRelease({Qt::Key_Space, {}, false});
    EXPECT_EQ(canvas.viewport().origin(), before + QPointF(30, -10));
    EXPECT_TRUE(objects().isEmpty());
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::Cross);
}

TEST_F(CanvasTest, PinchesAndWheelsWithCtrlZoomAndWheelsWithoutPan)
{
    using Scroll = CanvasInteraction::Scroll;
    EXPECT_FALSE(canvas.scroll(Scroll{{10, 10}, {}, {0, 1}, {}})) << "fitting passes the event on";
    EXPECT_TRUE(canvas.scroll(Scroll{{10, 10}, {0, 20}, {}, Qt::ControlModifier}));
    EXPECT_NEAR(*session.zoom(), 1.1, 1e-9);
    canvas.setZoom(4);
    const QPointF origin = canvas.viewport().origin();
    EXPECT_TRUE(canvas.scroll(Scroll{{10, 10}, {3, -4}, {}, {}}));
    EXPECT_EQ(canvas.viewport().origin(), origin + QPointF(3, -4));
    EXPECT_TRUE(canvas.scroll(Scroll{{10, 10}, {0, 5}, {}, Qt::ShiftModifier}));
    EXPECT_EQ(canvas.viewport().origin(), origin + QPointF(8, -4));
    EXPECT_TRUE(canvas.scroll(Scroll{{10, 10}, {-5, 0}, {}, {}}));
    // A fraction of a notch, as from a high-resolution wheel.
    EXPECT_TRUE(canvas.scroll(Scroll{{10, 10}, {}, {0, 0.25}, {}}));
    EXPECT_EQ(canvas.viewport().origin(), origin + QPointF(3, 3.5));
    EXPECT_TRUE(canvas.scroll(Scroll{{10, 10}, {}, {0, -1000}, Qt::ControlModifier}));
    EXPECT_NEAR(*session.zoom(), 0.4, 1e-9) << "a tenth at most, however fast";

    canvas.setZoom(2);
    const QPointF anchor(200, 150), under = canvas.viewport().toImage(anchor);
    canvas.pinch(0.5, anchor);
    EXPECT_DOUBLE_EQ(*session.zoom(), 3);
    EXPECT_NEAR(canvas.viewport().toImage(anchor).x(), under.x(), 1e-6);
}

TEST_F(CanvasTest, PastesWhereThePointerIs)
{
    addBox({100, 100, 80, 60});
    ObjectClipboard::copy(document, fakes.pasteboard, &session);
    document.deleteSelected();
    pointerPosition = at(400, 300);
    canvas.paste();
    EXPECT_EQ(only().rect().center(), QPointF(400, 300));
    pointerPosition.reset();
    canvas.paste();
    EXPECT_EQ(objects().size(), 2);
}

TEST_F(CanvasTest, AMenuSelectsWhatLiesUnderThePointer)
{
    const Annotation box = addBox({100, 100, 80, 60});
    document.setSelectedID({});
    canvas.selectForMenu(at(140, 130));
    EXPECT_EQ(document.selectedID(), box.id);
    canvas.selectForMenu(at(700, 500));
    EXPECT_EQ(document.selectedID(), box.id) << "a menu beside it keeps the selection";
}

TEST_F(CanvasTest, CursorsFollowTheTool)
{
    use(ToolKind::Select);
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::Arrow);
    use(ToolKind::Text);
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::Text);
    use(ToolKind::Cutout);
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::ResizeRows);
    document.setStyle(1, ToolKind::Cutout);
    EXPECT_EQ(canvas.cursor(), CanvasInteraction::Cursor::ResizeColumns);
}

TEST_F(CanvasTest, UndoInADragTakesTheDragBack)
{
    addBox({100, 100, 80, 60});
    use(ToolKind::Select);
    press(140, 130);
    drag(240, 230);
    canvas.undo();
    drag(300, 300);
    release(300, 300);
    EXPECT_EQ(only().rect(), QRectF(100, 100, 80, 60));

    // What is only being drawn is no step yet.
    use(ToolKind::Ellipse);
    document.setSelectedID({});
    press(300, 300);
    drag(400, 400);
    canvas.undo();
    release(400, 400);
    EXPECT_EQ(only().kind, ToolKind::Rectangle);
    use(ToolKind::Crop);
    press(300, 300);
    drag(400, 400);
    canvas.undo();
    release(400, 400);
    EXPECT_EQ(objects().size(), 1);
    EXPECT_EQ(document.base().size(), QSize(width, height));
}

TEST_F(CanvasTest, ACalloutWithoutATextLeavesNothingBehind)
{
    use(ToolKind::Callout);
    click(300, 300);
    EXPECT_TRUE(fieldIsOpen);
    canvas.commitText();
    EXPECT_TRUE(objects().isEmpty());
    EXPECT_FALSE(document.canUndo() || document.canRedo()) << "as if it had never been";

    click(300, 300);
    typed = "Look";
    canvas.commitText();
    EXPECT_EQ(only().text, "Look");
    canvas.editSelectedText();
    typed.clear();
    canvas.commitText();
    EXPECT_EQ(objects().size(), 1) << "one that had a text keeps its bubble";
}
