#include "support/temporary_folder.h"
#include "support/xdotool.h"
#include "ui/hud_panel.h"
#include "ui/toast.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

namespace {

QWidget *shownToast()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == "toast" && widget->isVisible())
            return widget;
    }
    return nullptr;
}

// A window that someone is typing in.
struct Typing {
    Typing()
    {
        field.show();
        field.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&field));
    }
    bool keepsTheKeyboard() const
    {
        return !QTest::qWaitFor([this] { return !field.isActiveWindow(); }, 300);
    }
    QLineEdit field;
};

} // namespace

TEST(Toast, ShowsOnTheScreenUnderThePointerAndLeavesTheKeyboardAlone)
{
    NoticeBoard board;
    for (const QScreen *screen : QGuiApplication::screens()) {
        Typing typing;
        ToastPresenter presenter(board);
        QCursor::setPos(screen->geometry().center());
        ASSERT_TRUE(QTest::qWaitFor([&] { return QCursor::pos() == screen->geometry().center(); }));
        board.post("Saved shot.png", "checkmark.circle.fill");
        ASSERT_NE(shownToast(), nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(shownToast()));
        const QRect visible = screen->availableGeometry();
        EXPECT_NEAR(shownToast()->geometry().center().x(), visible.center().x(), 1);
        EXPECT_EQ(shownToast()->geometry().bottom() + 1, visible.bottom() + 1 - 80);
        EXPECT_TRUE(typing.keepsTheKeyboard());
    }
}

TEST(Toast, StaysUnderThePointerAndDoesWhatItOffersWithoutTakingTheKeyboard)
{
    Typing typing;
    NoticeBoard board;
    ToastPresenter presenter(board);
    QImage picture(600, 400, QImage::Format_RGB32);
    picture.fill(Qt::red);
    int edited = 0;
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().topLeft() + QPoint(2, 2));
    board.post({.text = "Saved to Library",
                .symbol = "checkmark.circle.fill",
                .picture = picture,
                .file = "/none.png",
                .actions = {{"Edit", "pencil", [&] { ++edited; }}, {"Trash", "trash", [] {}}}});
    QWidget *toast = shownToast();
    ASSERT_NE(toast, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(toast));
    auto *button = toast->findChildren<QAbstractButton *>().value(0);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->accessibleName(), "Edit");

    QCursor::setPos(button->mapToGlobal(button->rect().center()));
    EXPECT_FALSE(QTest::qWaitFor([&] { return shownToast() != toast; }, 6500)) << "it left under the pointer";
    board.post("Another", "sparkles");
    for (const QWidget *other : QApplication::topLevelWidgets()) {
        if (other != toast && other->objectName() == "toast" && other->isVisible())
            EXPECT_LE(other->geometry().bottom(), toast->y()) << "it covers what can still be used";
    }
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(edited, 1);
    EXPECT_FALSE(toast->isVisible());
    EXPECT_TRUE(typing.keepsTheKeyboard());
}

TEST(Toast, StaysWhileItsPictureIsDraggedElsewhere)
{
    const TemporaryFolder folder;
    QImage picture(900, 4000, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(folder.path("shot.png")));
    NoticeBoard board;
    ToastPresenter presenter(board);
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().center());
    board.post(
        {.text = "Saved to Library", .symbol = {}, .picture = picture, .file = folder.path("shot.png")});
    const QPointer<QWidget> toast = shownToast();
    ASSERT_TRUE(toast && QTest::qWaitForWindowExposed(toast));
    bool wasUp = false;
    // Longer than it stays without the pointer.
    QTimer::singleShot(3000, [&] { wasUp = toast && toast->isVisible() && toast->windowOpacity() == 1; });
    const QPoint grip = toast->mapToGlobal(QPoint(40, 40));
    xdotool({"mousemove", QString::number(grip.x()), QString::number(grip.y()), "mousedown", "1",
             "mousemove_relative", "--", "0", "-30", "mousemove_relative", "--", "0", "-300", "sleep", "3.5",
             "mouseup", "1"});
    EXPECT_TRUE(wasUp);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !toast; }, 5000)) << "it never left";
}

TEST(HudPanel, IsShownAndDraggedWithoutTakingTheKeyboard)
{
    Typing typing;
    const QRectF visible = QGuiApplication::primaryScreen()->availableGeometry();
    auto panel = HUDPanel::make({200, 200, 300, 100}, visible, new QLabel("12 frames"));
    panel->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(panel.get()));
    EXPECT_EQ(panel->pos(), hudPosition({200, 200, 300, 100}, visible, panel->size()).toPoint());
    const QPoint before = panel->pos();
    QTest::mousePress(panel.get(), Qt::LeftButton, {}, {5, 5});
    QMouseEvent move(QEvent::MouseMove, QPointF(35, 25), panel->mapToGlobal(QPointF(35, 25)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(panel.get(), &move);
    EXPECT_EQ(panel->pos(), before + QPoint(30, 20));
    EXPECT_TRUE(typing.keepsTheKeyboard());
}
