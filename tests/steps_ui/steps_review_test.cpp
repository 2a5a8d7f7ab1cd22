#include "guide_stage.h"
#include "steps/steps_export.h"
#include "steps/ui/caption_field.h"
#include "steps/ui/review_header.h"
#include "steps/ui/step_list.h"
#include "steps/ui/step_picture_view.h"
#include "steps/ui/step_row.h"
#include "steps/ui/steps_review_window.h"
#include "support/accessible_walk.h"
#include "support/printers.h"
#include "ui/sheet.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

namespace {

class StepsReview : public testing::Test, protected GuideStage {
protected:
    void open(int count)
    {
        QList<GuideStep> steps;
        for (int i = 0; i < count; ++i)
            steps.append(step(QString(QChar('a' + i % 26))));
        begin(steps);
        model->openStepEditor = [this](const StepsGuideModel::StepEdit &edit) {
            edited.append(edit.displayName);
        };
        window = std::make_unique<StepsReviewWindow>(*model);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void settleAll(int count)
    {
        settle();
        ASSERT_TRUE(QTest::qWaitFor([&] { return list().findChildren<StepRow *>().size() >= count; }));
    }
    StepList &list() { return window->list(); }
    StepRow &row(int index) { return *list().row(id(index)); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QPushButton *button(const QString &text)
    {
        for (auto *each : window->findChildren<QPushButton *>()) {
            if (each->text() == text && each->isVisible())
                return each;
        }
        return nullptr;
    }

    std::unique_ptr<StepsReviewWindow> window;
    QStringList edited;
};

TEST_F(StepsReview, TakesItsCaptionsFromTabToTab)
{
    open(3);
    settleAll(3);
    row(0).caption().setFocus();
    QTest::keyClicks(QApplication::focusWidget(), "1");
    key(Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), "2");
    key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), "3");
    key(Qt::Key_Backtab);
    QTest::keyClicks(QApplication::focusWidget(), "4");
    EXPECT_EQ(captions(), (QStringList{"a1", "b24", "c3"}));
    key(Qt::Key_Escape);
    key(Qt::Key_Down);
    key(Qt::Key_F2);
    const int before = row(2).height();
    QTest::keyClicks(QApplication::focusWidget(), QString(200, 'w'));
    EXPECT_TRUE(QTest::qWaitFor([&] { return row(2).height() > before; })) << "it grows with its text";
    key(Qt::Key_Tab);
    EXPECT_TRUE(window->header().title().hasFocus()) << "after the last one";
}

TEST_F(StepsReview, DeletesWhatIsSelectedAndBringsItBack)
{
    open(5);
    settleAll(5);
    list().setFocus();
    key(Qt::Key_Down);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(list().selected(), (QList<QUuid>{id(1), id(2)}));
    key(Qt::Key_Delete);
    EXPECT_EQ(captions(), (QStringList{"a", "d", "e"}));
    ASSERT_NE(button("Undo"), nullptr);
    button("Undo")->click();
    EXPECT_EQ(captions(), (QStringList{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(button("Undo"), nullptr);
    key(Qt::Key_A, Qt::AltModifier); // another program's key
    EXPECT_TRUE(list().selected().isEmpty());
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    EXPECT_TRUE(model->steps().isEmpty());
    EXPECT_FALSE(list().isVisible());
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(model->steps().size(), 5);
    EXPECT_TRUE(list().isVisible());
}

TEST_F(StepsReview, MovesStepsByKeyAndByDragging)
{
    open(4);
    settleAll(4);
    list().setFocus();
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(captions(), (QStringList{"b", "a", "c", "d"}));
    window->resize(900, 3000); // all in view
    QTest::qWait(50);
    StepRow &last = row(3);
    const QPoint grip(20, 20);
    QTest::mousePress(&last, Qt::LeftButton, {}, grip);
    const QPoint target = last.mapFromGlobal(row(0).mapToGlobal(QPoint(20, 5)));
    QTest::mouseMove(&last, grip - QPoint(0, 40));
    QTest::mouseMove(&last, target);
    QTest::mouseRelease(&last, Qt::RightButton, {}, target);
    EXPECT_EQ(captions(), (QStringList{"b", "a", "c", "d"})) << "the card is still held";
    QTest::mouseRelease(&last, Qt::LeftButton, {}, target);
    EXPECT_EQ(captions(), (QStringList{"d", "b", "a", "c"}));
}

TEST_F(StepsReview, DragsAMarkerByItsEdgeAndLeavesItAtADoubleClick)
{
    open(2);
    settleAll(2);
    StepPictureView &picture = row(0).picture();
    const double scale = picture.width() / 1200.0;
    const double reach = StepsExport::ringRadius(QSize(1200, 600));
    const QPoint edge = ((QPointF(100, 100) + QPointF(reach, 0)) * scale).toPoint();
    QTest::mousePress(&picture, Qt::LeftButton, {}, edge);
    QTest::mouseMove(&picture, edge + QPoint(30, 5));
    QTest::mouseMove(&picture, edge + QPoint(60, 20));
    QTest::mouseRelease(&picture, Qt::LeftButton, {}, edge + QPoint(60, 20));
    const QPointF moved = model->steps()[0].click.value();
    EXPECT_NEAR(moved.x(), 100 + 60 / scale, 1) << "where it was taken hold of doesn't jump to the pointer";
    EXPECT_NEAR(moved.y(), 100 + 20 / scale, 1);
    ASSERT_NE(button("Reset position"), nullptr);
    button("Reset position")->click();
    EXPECT_EQ(model->steps()[0].click, QPointF(100, 100));

    const QPoint far = picture.rect().center();
    QTest::mouseClick(&picture, Qt::LeftButton, {}, far);
    QTest::mouseDClick(&picture, Qt::LeftButton, {}, far);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !edited.isEmpty(); }));
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    EXPECT_EQ(model->steps()[0].click, QPointF(100, 100));
    QTest::mouseClick(&picture, Qt::LeftButton, {}, far); // a click alone puts it there
    EXPECT_TRUE(QTest::qWaitFor([this] { return model->markerMoved(id(0)); }));
}

TEST_F(StepsReview, ShowsALongGuideAtOnceAndMakesItsCardsLittleByLittle)
{
    open(60);
    EXPECT_NE(list().row(id(0)), nullptr);
    EXPECT_EQ(list().row(id(59)), nullptr);
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum());
    EXPECT_NE(list().row(id(59)), nullptr) << "what comes into view is there";
    settleAll(60);
    EXPECT_TRUE(list().viewport()->rect().intersects(
        QRect(row(59).mapTo(list().viewport(), QPoint()), row(59).size())));
}

TEST_F(StepsReview, SaysWhyNothingWasExportedAndLooksAgain)
{
    machine.text.answer = fail("The recogniser is missing.");
    open(3);
    settle();
    model->saveToLibrary();
    ASSERT_NE(button("Search Again"), nullptr);
    EXPECT_EQ(list().selected().size(), 3);
    machine.text.answer = QList<RecognizedLine>();
    button("Search Again")->click();
    settle();
    EXPECT_TRUE(model->unsearched().isEmpty());
    EXPECT_TRUE(library.items().isEmpty()) << "what was refused isn't done later unasked";
}
TEST_F(StepsReview, ReadersAndTheKeyboardGetEverywhere)
{
    open(3);
    settleAll(3);
    AccessibleWalk::expectUsable(*window, 12, 6);
}


} // namespace
