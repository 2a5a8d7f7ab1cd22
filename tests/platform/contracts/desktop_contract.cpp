#include "platform/contracts/desktop_contract.h"

#include "platform/pattern.h"

#include <QSet>

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DesktopContract);

namespace {

const ListedWindow *find(const QList<ListedWindow> &windows, quint32 id)
{
    for (const ListedWindow &window : windows) {
        if (window.id == id)
            return &window;
    }
    return nullptr;
}

} // namespace

TEST_P(DesktopContract, TellsScreensThatStandApartWithThePrimaryFirst)
{
    const QList<Screen> screens = m_screens.screens();
    ASSERT_FALSE(screens.isEmpty());
    QSet<quint32> ids;
    for (qsizetype i = 0; i < screens.size(); ++i) {
        EXPECT_EQ(screens[i].isPrimary, i == 0);
        EXPECT_FALSE(screens[i].name.isEmpty());
        EXPECT_GT(screens[i].scale, 0);
        EXPECT_FALSE(screens[i].native.isEmpty());
        ids.insert(screens[i].id);
    }
    EXPECT_EQ(ids.size(), screens.size());
    EXPECT_EQ(m_screens.screens(), screens);
}

TEST_P(DesktopContract, ListsWindowsOfOthersFrontToBackWhileTheyAreOpen)
{
    const quint32 lower = m_world->openWindow(1, QRect(60, 70, 300, 200));
    const quint32 upper = m_world->openWindow(2, QRect(200, 100, 300, 200));
    ASSERT_TRUE(lower && upper);
    const QList<ListedWindow> windows = m_screens.windows();
    const ListedWindow *below = find(windows, lower);
    const ListedWindow *above = find(windows, upper);
    ASSERT_TRUE(below && above);
    EXPECT_LT(above, below);
    EXPECT_EQ(below->frame, QRectF(60, 70, 300, 200));
    EXPECT_EQ(below->layer, 0);
    EXPECT_GT(below->pid, 0);
    EXPECT_FALSE(below->owner.isEmpty());
    m_world->closeWindow(lower);
    EXPECT_EQ(find(m_screens.windows(), lower), nullptr);
    m_world->closeWindow(upper);
}

TEST_P(DesktopContract, TakesADisplayInItsBackingPixelsAndOpaque)
{
    for (const Screen &screen : m_screens.screens()) {
        const auto picture = m_pictures.display(screen, Pointer::Hidden).result();
        ASSERT_TRUE(picture) << picture.error().message.toStdString();
        EXPECT_EQ(picture->size(), screen.native.size());
        EXPECT_EQ(picture->format(), QImage::Format_RGB32);
        EXPECT_EQ(picture->devicePixelRatio(), 1);
        EXPECT_EQ(qAlpha(reinterpret_cast<const QRgb *>(picture->constScanLine(0))[0]), 255);
    }
}

TEST_P(DesktopContract, TakesARegionAtItsPlaceWithTruncatedSize)
{
    const Screen screen = m_screens.screens().constFirst();
    const quint32 window = m_world->openWindow(3, QRect(80, 90, 320, 240));
    ASSERT_TRUE(window);
    const QPointF at = screen.fromNative(QPointF(100, 120)) - screen.frame().topLeft();
    const QSizeF size = QSizeF(50.7, 40.2) / screen.scale;
    const auto picture = m_pictures.region(screen, QRectF(at, size), Pointer::Hidden).result();
    ASSERT_TRUE(picture) << picture.error().message.toStdString();
    EXPECT_EQ(picture->size(), QSize(50, 40));
    EXPECT_EQ(*picture, pattern(QSize(320, 240), 3).copy(20, 30, 50, 40));
    for (const QRectF &wrong :
         {QRectF(10, 10, 0, 20), QRectF(10, 10, -5, 5), QRectF(1e9, 1e9, 10, 10), QRectF(0, 0, qQNaN(), 10)})
        EXPECT_FALSE(m_pictures.region(screen, wrong, Pointer::Hidden).result()) << wrong.x();
    m_world->closeWindow(window);
}

TEST_P(DesktopContract, TakesAWindowAloneAlsoWhenItIsCovered)
{
    const quint32 lower = m_world->openWindow(4, QRect(60, 70, 300, 200));
    const quint32 upper = m_world->openWindow(5, QRect(100, 100, 300, 200));
    ASSERT_TRUE(lower && upper);
    const auto picture = m_pictures.window(lower, Pointer::Hidden).result();
    ASSERT_TRUE(picture) << picture.error().message.toStdString();
    EXPECT_EQ(*picture, pattern(QSize(300, 200), 4));
    m_world->closeWindow(lower);
    EXPECT_EQ(m_pictures.window(lower, Pointer::Hidden).result().error().kind, Error::Kind::NotFound);
    EXPECT_EQ(m_pictures.window(0x7ffffff, Pointer::Hidden).result().error().kind, Error::Kind::NotFound);
    m_world->closeWindow(upper);
}

TEST_P(DesktopContract, PutsThePointerWhereItIsTold)
{
    for (const Screen &screen : m_screens.screens()) {
        const QPointF middle = screen.frame().center();
        m_pointer.warp(middle);
        EXPECT_LE((m_pointer.position() - middle).manhattanLength(), 2 / screen.scale);
    }
    EXPECT_EQ(m_pointer.wheel(2).result().has_value(), m_pointer.canScroll());
}
