#include "library/ui/preview_overlay.h"
#include "library_window_stage.h"
#include "support/accessible_walk.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>

TEST_F(LibraryWindowTest, KeysMoveThroughRowsAndSections)
{
    ASSERT_EQ(grid().cards().columns(), 4);
    ASSERT_EQ(m_model->sections().size(), 2);
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        QString selected;
    } steps[] = {
        {Qt::Key_Right, {}, "A"},
        {Qt::Key_Right, {}, "B"},
        {Qt::Key_Down, {}, "E"}, // the last row of the section is shorter
        {Qt::Key_Down, {}, "F"},
        {Qt::Key_Right, {}, "G"},
        {Qt::Key_Down, {}, "J"},
        {Qt::Key_Down, {}, "J"},
        {Qt::Key_Up, {}, "F"},
        {Qt::Key_Up, {}, "E"},
        {Qt::Key_Home, {}, "A"},
        {Qt::Key_Left, {}, "A"},
        {Qt::Key_Right, Qt::ShiftModifier, "AB"},
        {Qt::Key_Down, Qt::ShiftModifier, "ABCDE"},
        {Qt::Key_Left, Qt::ShiftModifier, "ABCD"},
        {Qt::Key_End, {}, "J"},
        {Qt::Key_A, Qt::ControlModifier, "ABCDEFGHIJ"},
        {Qt::Key_Escape, {}, ""},
    };
    for (const auto &step : steps) {
        QTest::keyClick(&grid(), step.key, step.modifiers);
        EXPECT_EQ(selected(), step.selected) << "after key " << std::hex << step.key;
    }
    grid().setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(&grid(), Qt::Key_Home);
    QTest::keyClick(&grid(), Qt::Key_Left);
    EXPECT_EQ(selected(), "B") << "the next one, where lines run to the left";
    grid().setLayoutDirection(Qt::LeftToRight);
    QTest::keyClick(&grid(), Qt::Key_End);
    EXPECT_TRUE(QRectF(grid().viewport()->rect()).contains(grid().cardRect(9))) << "what is chosen is shown";
    QTest::keyClick(&grid(), Qt::Key_Return);
    EXPECT_EQ(m_opened, QStringList{"J"});
}

TEST_F(LibraryWindowTest, DeleteMovesToTheTrashTellsAndGoesOnThere)
{
    QTest::keyClick(&grid(), Qt::Key_Home);
    QTest::keyClick(&grid(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_told.size() == 1; }));
    EXPECT_FALSE(QFile::exists(inFolder("A")));
    EXPECT_FALSE(QFile::exists(inFolder("B")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_model->visibleCount() == 8; }));
    QTest::keyClick(&grid(), Qt::Key_Left);
    EXPECT_EQ(m_model->selectedPaths().size(), 1);
    EXPECT_EQ(grid().current(), m_model->visibleIndex(m_model->selectedPaths().first()));
    QTest::keyClick(&grid(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_model->visibleCount() == 10; }));
    EXPECT_TRUE(QFile::exists(inFolder("A")));
}

TEST_F(LibraryWindowTest, ThePointerSelectsOneSeveralAndABand)
{
    QWidget *view = grid().viewport();
    QTest::mouseClick(view, Qt::LeftButton, {}, middle(1));
    EXPECT_EQ(selected(), "B");
    QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, middle(3));
    EXPECT_EQ(selected(), "BD");
    QTest::mouseClick(view, Qt::LeftButton, Qt::ShiftModifier, middle(4));
    EXPECT_EQ(selected(), "DE");
    QTest::mouseClick(view, Qt::LeftButton, {}, middle(4));
    EXPECT_EQ(selected(), "E") << "a click on one of several leaves it alone";

    // From beside the first card to the middle of the second.
    const QPoint from(4, middle(0).y());
    QTest::mousePress(view, Qt::LeftButton, {}, from);
    QTest::mouseMove(view, middle(1));
    EXPECT_EQ(selected(), "AB");
    QTest::mouseMove(view, middle(0));
    EXPECT_EQ(selected(), "A");
    QTest::mouseRelease(view, Qt::LeftButton, {}, middle(0));
    EXPECT_EQ(selected(), "A");
    // With Ctrl a band turns what it holds over, and with a press on one of several all of them stay.
    QTest::mousePress(view, Qt::LeftButton, Qt::ControlModifier, from);
    QTest::mouseMove(view, middle(2));
    EXPECT_EQ(selected(), "BC");
    QTest::mouseRelease(view, Qt::LeftButton, Qt::ControlModifier, middle(2));
    QTest::mousePress(view, Qt::LeftButton, {}, middle(1));
    EXPECT_EQ(selected(), "BC");
    QTest::mouseRelease(view, Qt::LeftButton, {}, middle(1));
    EXPECT_EQ(selected(), "B");
    QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, middle(2));
    QContextMenuEvent menu(QContextMenuEvent::Mouse, middle(2), view->mapToGlobal(middle(2)));
    QCoreApplication::sendEvent(view, &menu);
    EXPECT_EQ(selected(), "BC") << "the menu is of all that is selected";
    m_window->findChild<QMenu *>()->close();
    QTest::mouseDClick(view, Qt::LeftButton, {}, grid().cardRect(2).topLeft().toPoint() + QPoint(20, 20));
    EXPECT_EQ(m_opened, QStringList{"C"});
}

TEST_F(LibraryWindowTest, CardsHaveNamesForAssistiveTechnology)
{
    QAccessibleInterface *list = QAccessible::queryAccessibleInterface(&grid());
    ASSERT_TRUE(list);
    ASSERT_EQ(list->childCount(), 10);
    EXPECT_TRUE(list->child(2)->text(QAccessible::Name).startsWith("C, "));
    QTest::keyClick(&grid(), Qt::Key_Home);
    EXPECT_EQ(list->focusChild(), list->child(0));
    EXPECT_TRUE(list->child(0)->state().selected);
    const QRect card = list->child(5)->rect();
    EXPECT_EQ(list->childAt(card.center().x(), card.center().y()), list->child(5));
}

TEST_F(LibraryWindowTest, SearchingLeadsToWhatIsFoundAndCardsShowTheirPictures)
{
    QTest::keyClick(&grid(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(m_window->searchField(), "h");
    QTest::keyClick(m_window->searchField(), Qt::Key_Return);
    EXPECT_EQ(selected(), "H");
    EXPECT_TRUE(grid().hasFocus());
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {});
    QCoreApplication::sendEvent(&grid(), &menuKey);
    auto *menu = m_window->findChild<QMenu *>();
    ASSERT_TRUE(menu && menu->isVisible()) << "what was found has a menu";
    menu->close();
    const QPoint inPicture = grid().cardRect(0).topLeft().toPoint() + QPoint(40, 40);
    const QRgb wanted = QColor::fromHsv(7 * 30, 200, 200).rgb();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return grid().viewport()->grab().toImage().pixel(inPicture) == wanted; }, 5000));
}

TEST_F(LibraryWindowTest, ReadersAndTheKeyboardGetEverywhere)
{
    AccessibleWalk::expectUsable(*m_window, 20, 6);
    QTest::keyClick(&grid(), Qt::Key_Home);
    AccessibleWalk::expectUsable(*m_window, 25, 8);
}

TEST_F(LibraryWindowTest, APreviewedFilmIsHeardUntilItIsPausedOrClosed)
{
    machine.movies.hasPictures = true;
    const QString film = home.path("Shots/Film.mp4");
    ASSERT_TRUE(QFile::copy(inFolder("A"), film));
    m_model->reload();
    const auto sounds = [this] {
        const std::lock_guard guard(m_soundMutex);
        return m_sounds;
    };
    QTest::mouseMove(grid().viewport(), middle(m_model->visibleIndex(film)));
    m_model->setSelection({film});
    QTest::qWait(100);
    EXPECT_TRUE(sounds().isEmpty()) << "under the pointer it is silent";
    m_model->setPreviewing(film);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sounds() == QList<double>{0}; }));
    auto *preview = m_window->findChild<PreviewOverlay *>();
    QTest::qWait(150);
    QTest::keyClick(preview, Qt::Key_P);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_silenced == 1; }));
    QTest::mouseClick(preview, Qt::LeftButton, {}, preview->rect().center());
    ASSERT_TRUE(QTest::qWaitFor([&] { return sounds().size() == 2; }));
    EXPECT_GT(sounds().last(), 0);
    QTest::keyClick(preview, Qt::Key_Space);
    EXPECT_FALSE(preview->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_silenced == sounds().size(); }));
}
