#include "base/colors.h"
#include "capture/ui/overlay_window.h"
#include "capture_ui/overlay_fixture.h"
#include "support/accessible_walk.h"

using Overlay = CaptureOverlayController;

TEST_F(OverlayTest, CropsTheDraggedAreaFromTheFrozenPicture)
{
    open(1);
    drag({150, 200}, {50, 180}); // leftwards and upwards
    EXPECT_EQ(result<Overlay::Image>().image, pixels(50, 180, 100, 20));

    open(2);
    drag({10, 20}, {110.5, 70});
    EXPECT_EQ(result<Overlay::Image>().image, pixels(20, 40, 201, 100));

    open(1.5);
    drag({10, 20}, {10 + 200 / 1.5, 20 + 100 / 1.5});
    EXPECT_EQ(result<Overlay::Image>().image, pixels(15, 30, 200, 100));
}

TEST_F(OverlayTest, KeepsADragInsideItsDisplay)
{
    const std::pair<QPointF, QRectF> drags[]{
        {{700, -40}, {150, 0, 250, 100}}, {{-40, 340}, {0, 100, 150, 200}}, {{-1, -1}, {0, 0, 150, 100}}};
    for (const auto &[to, selected] : drags) {
        open(2);
        move({150, 100});
        press({150, 100});
        dragTo(to);
        EXPECT_EQ(view->selection(), selected) << to.x() << "," << to.y();
        release(to);
        EXPECT_EQ(result<Overlay::Image>().image,
                  snapshot.image.copy(QRectF(selected.topLeft() * 2, selected.size() * 2).toRect()));
    }
}

TEST_F(OverlayTest, GrowsASquareAwayFromTheStartWithShift)
{
    open(1);
    drag({200, 200}, {140, 230}, Qt::ShiftModifier); // the right side stays at the start
    EXPECT_EQ(result<Overlay::Image>().image, pixels(140, 200, 60, 60));

    open(1);
    drag({200, 200}, {210, 130}, Qt::ShiftModifier);
    EXPECT_EQ(result<Overlay::Image>().image, pixels(200, 130, 70, 70));
}

TEST_F(OverlayTest, TakesATrembleForAClick)
{
    open(1);
    drag({30, 30}, {33, 32});
    EXPECT_EQ(result<Overlay::Window>().id, 21u);
    for (const QPointF &thin : {QPointF(32, 70), QPointF(90, 32)}) {
        open(1);
        drag({30, 30}, thin);
        EXPECT_EQ(result<Overlay::Window>().id, 21u) << "nor is a line a selection";
    }

    open(1); // beyond the tremble and back: a selection that is too small to be one
    move({30, 30});
    press({30, 30});
    dragTo({40, 40});
    dragTo({32, 40});
    release({32, 40});
    EXPECT_EQ(result<Overlay::Window>().id, 21u);

    open(1);
    move({30, 30});
    press({30, 30});
    dragTo({40, 40});
    dragTo({33, 33});
    release({33, 33});
    EXPECT_EQ(result<Overlay::Image>().image.size(), QSize(3, 3));
}

TEST_F(OverlayTest, PicksTheFrontmostWindowUnderAClickOrTheWholeDisplay)
{
    open(1);
    click({70, 60});
    EXPECT_EQ(result<Overlay::Window>().id, 21u);
    open(1);
    click({200, 60});
    EXPECT_EQ(result<Overlay::Window>().id, 22u);
    open(2);
    click({5, 5});
    EXPECT_EQ(result<Overlay::Image>().image, snapshot.image);
}

TEST_F(OverlayTest, GivesARectangleWhenOnlySelecting)
{
    open(2, true);
    drag({10, 20}, {110, 80});
    EXPECT_EQ(result<Overlay::Selection>().rect, QRectF(10, 20, 100, 60));
    EXPECT_EQ(result<Overlay::Selection>().screen, snapshot.screen);

    open(2, true); // under 8 points a drag is a click
    drag({200, 100}, {207, 150});
    EXPECT_EQ(result<Overlay::Selection>().rect, QRectF(60, 40, 340, 200))
        << "the window's part in the display";

    open(2, true);
    click({5, 290});
    EXPECT_EQ(result<Overlay::Selection>().rect, QRectF(0, 0, 400, 300));

    open(2, true);
    key(Qt::Key_Return);
    EXPECT_EQ(result<Overlay::Selection>().rect, QRectF(0, 0, 400, 300));
}

TEST_F(OverlayTest, ObeysReturnEscapeAndTheRightButton)
{
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        open(1);
        key(enter);
        EXPECT_EQ(result<Overlay::Image>().image, snapshot.image);
    }
    open(1);
    key(Qt::Key_Escape);
    result<Overlay::Cancelled>();
    open(1);
    press({50, 50});
    send(QEvent::MouseButtonPress, {60, 60}, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    release({60, 60}); // comes in while the windows are closing
    result<Overlay::Cancelled>();
    EXPECT_EQ(workspace.restored, 4);
}

TEST_F(OverlayTest, CancelsWhenNothingCanBeCropped)
{
    open(1);
    snapshot.image = {};
    view = std::make_unique<OverlayView>(snapshot, *controller, nullptr);
    view->resize(points);
    drag({10, 10}, {50, 50});
    result<Overlay::Cancelled>();
}

TEST_F(OverlayTest, MovesThePointerByPixelsWithTheArrowKeys)
{
    open(2);
    move({100, 100});
    key(Qt::Key_Right);
    EXPECT_EQ(pointer.at, QPointF(1100.5, 150));
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(pointer.at, QPointF(1100.5, 155));
    EXPECT_EQ(view->mouse(), QPointF(100.5, 105));
    const std::pair<Qt::Key, QPointF> ends[]{{Qt::Key_Up, {100.5, 0}},
                                             {Qt::Key_Left, {0, 0}},
                                             {Qt::Key_Down, {0, 299.5}},
                                             {Qt::Key_Right, {399.5, 299.5}}};
    for (const auto &[way, end] : ends) {
        for (int i = 0; i < 100; ++i)
            key(way, Qt::ShiftModifier);
        EXPECT_EQ(view->mouse(), end) << "stays on its display";
        EXPECT_EQ(pointer.at, end + QPointF(1000, 50));
    }
}

TEST_F(OverlayTest, SelectsWithSpaceAndTheArrowKeys)
{
    open(1);
    move({100, 100});
    key(Qt::Key_Space);
    for (int i = 0; i < 5; ++i) {
        key(Qt::Key_Right, Qt::ShiftModifier);
        // The motion that the moved pointer brings; its Shift must not make a square.
        send(QEvent::MouseMove, *view->mouse() + QPointF(0.4, 0), Qt::NoButton, Qt::NoButton,
             Qt::ShiftModifier);
        EXPECT_EQ(view->selection(), QRectF(100, 100, 10 * (i + 1), 0));
    }
    for (int i = 0; i < 7; ++i)
        key(Qt::Key_Down);
    EXPECT_EQ(view->selection(), QRectF(100, 100, 50, 7));
    move({160, 120}); // the mouse carries on
    EXPECT_EQ(view->selection(), QRectF(100, 100, 60, 20));
    EXPECT_TRUE(results.isEmpty());
    key(Qt::Key_Space);
    EXPECT_EQ(result<Overlay::Image>().image, pixels(100, 100, 60, 20));
}

TEST_F(OverlayTest, TakesTheSelectionThatWasMadeByKeysWithReturn)
{
    open(1);
    move({200, 150});
    key(Qt::Key_Space);
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(result<Overlay::Image>().image, pixels(200, 150, 20, 10));

    open(1, true);
    move({200, 150});
    key(Qt::Key_Space);
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Enter);
    EXPECT_EQ(result<Overlay::Selection>().rect, QRectF(200, 150, 10, 10));
}

TEST_F(OverlayTest, MovesTheSelectionWhileSpaceIsHeldInADragOfTheMouse)
{
    open(1);
    move({100, 100});
    press({100, 100});
    dragTo({160, 140});
    key(Qt::Key_Space);
    EXPECT_TRUE(results.isEmpty()) << "nothing is taken yet";
    dragTo({190, 150});
    EXPECT_EQ(view->selection(), QRectF(130, 110, 60, 40));
    dragTo({700, 150}); // no farther than the display reaches, and back from where it stopped
    EXPECT_EQ(view->selection(), QRectF(340, 110, 60, 40));
    dragTo({395, 150});
    EXPECT_EQ(view->selection(), QRectF(335, 110, 60, 40));
    QKeyEvent released(QEvent::KeyRelease, Qt::Key_Space, {});
    QApplication::sendEvent(view.get(), &released);
    dragTo({365, 170});
    EXPECT_EQ(view->selection(), QRectF(335, 110, 30, 60));
    release({365, 170});
    EXPECT_EQ(result<Overlay::Image>().image, pixels(335, 110, 30, 60));
}

TEST_F(OverlayTest, CoversNoPixelMoreThanWasDraggedAtAnyScale)
{
    int wrong = 0;
    for (const double scale : {1.25, 1.5, 1.75}) {
        const QImage picture(QSize(400, 300) * scale, QImage::Format_RGB32);
        const OverlayLayout layout(QSizeF(picture.size()) / scale, picture);
        for (int from = 0; from < 40; ++from) {
            for (int size = 3; size < 60; ++size) {
                const QRectF points(QPointF(from, from) / scale, QSizeF(size, size) / scale);
                wrong += layout.pixels(points) != QRect(from, from, size, size);
            }
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(OverlayTest, TellsTheSizeOfTheHoleInPixels)
{
    open(2);
    move({100, 100});
    press({100, 100});
    dragTo({150.5, 120});
    ASSERT_TRUE(view->marks().size);
    EXPECT_EQ(view->marks().size->text, "101 × 40");
    EXPECT_EQ(view->marks().size->rect.topLeft(), QPointF(100, 74));
    dragTo({150, 30}); // no room above
    EXPECT_EQ(view->marks().size->rect.topLeft(), QPointF(100, 106));
    dragTo({0, 300});
    dragTo({399, 0});
    EXPECT_TRUE(QRectF(QPointF(), QSizeF(points)).contains(view->marks().size->rect));
}

TEST_F(OverlayTest, ShowsEachStateWithItsMarks)
{
    open(1);
    EXPECT_EQ(view->marks(), OverlayMarks()) << "before the pointer came";

    move({70, 60}); // over a window
    EXPECT_EQ(view->marks().hole, QRectF(20, 20, 100, 80));
    EXPECT_TRUE(view->marks().crosshair && view->marks().hint && view->marks().loupe);
    EXPECT_EQ(view->marks().hint->rect.top(), 40);
    EXPECT_NEAR(view->marks().hint->rect.center().x(), 200, 1);

    press({70, 60});
    EXPECT_FALSE(view->marks().hole) << "no hover highlight while pressed";
    EXPECT_TRUE(view->marks().crosshair && view->marks().hint && view->marks().loupe);

    dragTo({170, 90});
    EXPECT_EQ(view->marks().hole, QRectF(70, 60, 100, 30));
    EXPECT_FALSE(view->marks().crosshair || view->marks().hint);
    EXPECT_TRUE(view->marks().loupe);

    open(1);
    move({70, 60});
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(view.get(), &leave);
    EXPECT_EQ(view->marks(), OverlayMarks()) << "the pointer is on another display";
}

TEST_F(OverlayTest, HighlightsTheWindowUnderAPointerThatWasThereBeforeTheOverlay)
{
    open(1);
    view->resize(30, 30);
    view->pointerMoved({70, 60});
    view->resize(points);
    view->grab();
    EXPECT_EQ(view->marks().hole, QRectF(20, 20, 100, 80));
}

TEST_F(OverlayTest, FlipsTheLoupeAtTheRightAndTheBottomEdge)
{
    open(1);
    const auto circleAt = [&](QPointF at) {
        move(at);
        return view->marks().loupe ? view->marks().loupe->circle.topLeft() : QPointF(-1, -1);
    };
    EXPECT_EQ(circleAt({100, 100}), QPointF(124, 124));
    EXPECT_EQ(circleAt({256, 130}), QPointF(280, 154)); // reaches both edges exactly
    EXPECT_EQ(circleAt({257, 130}), QPointF(257 - 144, 154));
    EXPECT_EQ(circleAt({256, 131}), QPointF(280, 131 - 170));
    EXPECT_EQ(circleAt({392, 200}), QPointF(392 - 144, 200 - 170));

    EXPECT_EQ(circleAt({7, 7}), QPointF(31, 31));
    for (const QPointF edge : {QPointF(6, 100), QPointF(100, 6), QPointF(393, 100), QPointF(100, 293)})
        EXPECT_EQ(circleAt(edge), QPointF(-1, -1)) << edge.x() << "," << edge.y();
}

TEST_F(OverlayTest, ReadsThePixelUnderThePointer)
{
    open(2);
    move({100.5, 60});
    ASSERT_TRUE(view->marks().loupe);
    EXPECT_EQ(view->marks().loupe->text, "201, 120 #C97800");
    EXPECT_EQ(view->marks().loupe->crop, pixels(194, 113, 15, 15));
    EXPECT_EQ(view->marks().loupe->badge.topLeft(), QPointF(124.5, 84 + 126));
}

TEST_F(OverlayTest, DimsAllButTheHole)
{
    open(1);
    const auto dimmedPixel = [&](int x, int y) {
        const QColor color = snapshot.image.pixelColor(x, y);
        return qRgb(qRound(color.red() * 0.62), qRound(color.green() * 0.62), qRound(color.blue() * 0.62));
    };
    const auto near = [](QRgb a, QRgb b) {
        return std::abs(qRed(a) - qRed(b)) <= 1 && std::abs(qGreen(a) - qGreen(b)) <= 1 &&
               std::abs(qBlue(a) - qBlue(b)) <= 1;
    };
    move({250, 250});
    press({250, 250});
    dragTo({350, 285});
    const QImage seen = painted();
    EXPECT_EQ(seen.pixel(300, 270), snapshot.image.pixel(300, 270)) << "inside, at full brightness";
    EXPECT_EQ(seen.pixel(250, 270), brandColor().rgb()) << "the border lies inside";
    EXPECT_EQ(seen.pixel(251, 270), brandColor().rgb());
    EXPECT_NE(seen.pixel(252, 270), brandColor().rgb());
    EXPECT_EQ(seen.pixel(349, 270), brandColor().rgb());
    EXPECT_TRUE(near(seen.pixel(249, 270), dimmedPixel(249, 270)));
    EXPECT_TRUE(near(seen.pixel(10, 290), dimmedPixel(10, 290)));
}

TEST_F(OverlayTest, DrawsADashedCrosshairThroughThePixelUnderThePointer)
{
    open(1);
    move({300, 250});
    const QImage with = painted();
    press({300, 250});
    dragTo({310, 260}); // no crosshair any more
    const QImage without = painted();
    QString dashes;
    for (int x = 0; x < 18; ++x)
        dashes += with.pixel(x, 250) == with.pixel(0, 250)    ? '#'
                  : with.pixel(x, 250) == qRgb(255, 255, 255) ? '.'
                                                              : '?';
    EXPECT_EQ(dashes, "#####....#####....");
    for (int gray = 0; gray < 256; ++gray) {
        const QRgb ground = qRgb(gray, gray, gray);
        EXPECT_GE(std::max(AccessibleWalk::contrast(with.pixel(0, 250), ground), AccessibleWalk::contrast(~0U, ground)), 3) << gray;
    }
    EXPECT_EQ(with.pixel(2, 249), without.pixel(2, 249));
    EXPECT_EQ(with.pixel(2, 251), without.pixel(2, 251));
    EXPECT_NE(with.pixel(300, 2), without.pixel(300, 2));
}

TEST_F(OverlayTest, MagnifiesEachPixelToEightPoints)
{
    open(1);
    move({100, 100});
    const QImage seen = painted();
    const QRectF circle = view->marks().loupe->circle;
    for (int row = 3; row < 12; ++row) {
        for (int column = 3; column < 12; ++column) {
            if (row >= 6 && row <= 8 && column >= 6 && column <= 8)
                continue; // the frame around the centre
            const QPoint cell(int(circle.left()) + column * 8 + 4, int(circle.top()) + row * 8 + 4);
            EXPECT_EQ(seen.pixel(cell), snapshot.image.pixel(100 - 7 + column, 100 - 7 + row));
        }
    }
}

TEST_F(OverlayTest, RepaintsAllThatChangedAndLittleElse)
{
    open(1);
    const auto step = [&](const std::function<void()> &action) {
        const QImage before = painted();
        const OverlayMarks marks = view->marks();
        action();
        const QImage after = painted();
        const QRegion repainted = OverlayDrawing::difference(marks, view->marks(), points, 1);
        int missed = 0;
        for (int y = 0; y < points.height(); ++y) {
            for (int x = 0; x < points.width(); ++x)
                missed += before.pixel(x, y) != after.pixel(x, y) && !repainted.contains(QPoint(x, y));
        }
        EXPECT_EQ(missed, 0) << "pointer at " << view->mouse()->x() << "," << view->mouse()->y();
        return repainted;
    };
    for (const QPointF at :
         {QPointF(70, 60), QPointF(200, 60), QPointF(390, 290), QPointF(5, 5), QPointF(256, 131)})
        step([&] { move(at); });
    step([&] { press({150, 250}); });
    for (const QPointF at : {QPointF(152, 252), QPointF(170, 290), QPointF(20, 20), QPointF(22, 20)})
        step([&] { dragTo(at); });

    open(1);
    move({10, 270});
    const QRegion small = step([&] { move({11, 270}); });
    EXPECT_FALSE(small.contains(QPoint(300, 100)));
    EXPECT_TRUE(small.contains(QPoint(11, 299)));
}

TEST_F(OverlayTest, GoesWithItsControllerAndGivesTheKeyboardBack)
{
    open(1);
    view.reset();
    controller->show();
    const QPointer<QWidget> window(controller->windows().front().get());
    controller.reset();
    EXPECT_EQ(workspace.restored, 1);
    EXPECT_FALSE(window && window->isVisible());
    EXPECT_TRUE(results.isEmpty());
}

TEST_F(OverlayTest, ASelectionStaysWithItsDisplayWhenThePointerHasLeftIt)
{
    open(1);
    DisplaySnapshot other = snapshot;
    other.screen = Screen{2, "R", QRect(1400, 50, 400, 300), 1, false};
    for (const bool byKeys : {false, true}) {
        results.clear();
        CaptureOverlayController two({pointer, workspace}, {}, false, "", {snapshot, other},
                                     [this](const Overlay::Outcome &r) { results.append(r); });
        pointer.at = {1100, 150};
        two.show();
        ASSERT_EQ(two.windows().size(), 2u);
        OverlayView &left = two.windows()[0]->overlayView(), &right = two.windows()[1]->overlayView();
        const auto mouse = [&](QEvent::Type type, QPointF at, Qt::MouseButton button) {
            QMouseEvent event(type, at, at, at, button, Qt::LeftButton, {});
            QApplication::sendEvent(&left, &event);
        };
        if (byKeys) {
            two.toggleSelection(right); // under the pointer, whoever has the keyboard
            pointer.at = {1500, 150};
            for (int i = 0; i < 5; ++i) {
                two.nudge(right, 10, 0);
                pointer.at = {1500, 150};
                two.nudge(right, 0, 10);
                pointer.at = {1500, 150};
            }
        } else {
            mouse(QEvent::MouseButtonPress, {100, 100}, Qt::LeftButton);
            mouse(QEvent::MouseMove, {150, 150}, Qt::NoButton);
            pointer.at = {1500, 150};
        }
        EXPECT_EQ(left.selection(), QRectF(100, 100, 50, 50));
        EXPECT_FALSE(right.selection());
        two.accept(right);
        EXPECT_EQ(result<Overlay::Image>().image, pixels(100, 100, 50, 50));
    }
}

TEST_F(OverlayTest, IsGivenUpWhenTheDisplaysChange)
{
    for (const auto signal : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved}) {
        open(1);
        view.reset();
        controller->show();
        Q_EMIT(qApp->*signal)(QGuiApplication::primaryScreen());
        result<Overlay::Cancelled>();
    }
}

TEST_F(OverlayTest, CoversEveryDisplayAndGoesAtOnceWithTheFirstResult)
{
    open(1);
    view.reset();
    pointer.at = {1100, 150};
    workspace.front = Workspace::Application{7, "Terminal"};
    controller->show();
    ASSERT_EQ(controller->windows().size(), 1u);
    EXPECT_EQ(workspace.remembered, workspace.front);
    controller->finish(Overlay::Cancelled{});
    controller->finish(Overlay::Image{snapshot.image});
    EXPECT_TRUE(controller->windows().empty());
    EXPECT_EQ(workspace.restored, 1);
    result<Overlay::Cancelled>();
}
