#include "ui/appearance.h"
#include "ui/bar_keys.h"
#include "ui/controls.h"
#include "ui/overflow_button.h"
#include "ui/sheet.h"
#include "ui/tips.h"
#include "ui/toast.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gmock/gmock.h>

namespace {

struct Window : QWidget {
    Window()
    {
        resize(600, 400);
        show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(this));
        activateWindow();
    }
};

QWidget *visibleRing(QWidget &window)
{
    for (QWidget *child : window.findChildren<QWidget *>()) {
        if (child->isVisible() && child->testAttribute(Qt::WA_TransparentForMouseEvents) &&
            child->testAttribute(Qt::WA_NoSystemBackground))
            return child;
    }
    return nullptr;
}

} // namespace

TEST(SegmentedPicker, IsOperatedByArrowKeysAndTellsEveryChoiceOnce)
{
    Window window;
    SegmentedPicker picker(&window);
    picker.setSegments({{"One", {}}, {"Two", {}}, {"Three", {}}});
    picker.resize(picker.sizeHint());
    picker.show();
    QSignalSpy chosen(&picker, &SegmentedPicker::chosen);
    QTest::keyClick(&picker, Qt::Key_Right);
    QTest::keyClick(&picker, Qt::Key_End);
    QTest::keyClick(&picker, Qt::Key_Right);
    QTest::mouseClick(&picker, Qt::LeftButton, {}, picker.segmentRect(0).center());
    ASSERT_EQ(chosen.count(), 3);
    EXPECT_EQ(chosen[1][0].toInt(), 2);
    EXPECT_EQ(picker.current(), 0);
    picker.setCurrent(2);
    picker.setSegmentEnabled(0, false);
    QTest::keyClick(&picker, Qt::Key_Home);
    EXPECT_EQ(picker.current(), 1) << "the first that can be chosen";
    picker.setSegmentEnabled(2, false);
    for (const auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_End})
        QTest::keyClick(&picker, key);
    EXPECT_EQ(picker.current(), 1);
    EXPECT_EQ(chosen.count(), 4);
}

TEST(OverflowButton, TakesInWhatHasNoRoomAndGivesItBackWhenThereIs)
{
    Window window;
    QWidget bar(&window);
    auto *row = new QHBoxLayout(&bar);
    QList<BarButton *> buttons;
    for (const char *name : {"Crop", "Blur", "Share"}) {
        buttons.append(new BarButton("photo", name, BarButton::Label::Under));
        row->addWidget(buttons.last());
    }
    auto *more = new OverflowButton(&bar, "More", {buttons[2], buttons[1]});
    row->addWidget(more);
    const int whole = row->minimumSize().width();
    bar.show();
    const auto shown = [&] {
        return std::ranges::count_if(buttons, [](const BarButton *button) { return !button->isHidden(); });
    };
    for (const auto &[room, wanted] : {std::pair(whole, 3), {whole - 1, 1}, {whole, 3}}) {
        bar.resize(room, 60);
        EXPECT_TRUE(QTest::qWaitFor([&] { return shown() == wanted; })) << room << " of " << whole;
        EXPECT_EQ(more->isHidden(), wanted == 3);
    }
}

TEST(BarKeys, GoFromOneControlToTheNextThatCanBeUsed)
{
    Window window;
    QPushButton first("One", &window), second("Two", &window), third("Three", &window);
    int left = 0;
    for (QPushButton *button : {&first, &second, &third}) {
        button->move(left += 100, 0);
        button->show();
    }
    const BarKeys keys(&window);
    second.setEnabled(false);
    first.setFocus();
    QTest::keyClick(&first, Qt::Key_Right);
    EXPECT_TRUE(third.hasFocus());
    QTest::keyClick(&third, Qt::Key_Right);
    EXPECT_TRUE(third.hasFocus()) << "there is none beyond";
    QTest::keyClick(&third, Qt::Key_Home);
    EXPECT_TRUE(first.hasFocus());
}

TEST(BarButton, OpensItsMenuByPointerAndByKey)
{
    Window window;
    BarButton button("photo", "Effects", BarButton::Label::Beside, &window);
    auto *menu = new QMenu;
    menu->addAction("Border");
    button.setMenu(menu);
    button.show();
    QSignalSpy asked(&button, &BarButton::menuAboutToOpen);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
    EXPECT_EQ(asked.count(), 2);
}

// Where words run from the right, a control is the picture of itself in a mirror, and nothing of its words is cut.
TEST(Controls, StandTheOtherWayRoundWhereWordsRunFromTheRight)
{
    const auto ink = [](QWidget &control, Qt::LayoutDirection direction) {
        QGuiApplication::setLayoutDirection(direction);
        control.resize(control.sizeHint());
        const QImage seen = control.grab().toImage();
        QRegion inked;
        for (int y = 4; y < seen.height() - 4; ++y) {
            for (int x = 4; x < seen.width() - 4; ++x) {
                if (qGray(seen.pixel(x, y)) < 160)
                    inked += QRect(direction == Qt::LeftToRight ? x : seen.width() - 1 - x, y, 1, 1);
            }
        }
        return inked.boundingRect();
    };
    BarButton button(QString(), "Export it", BarButton::Label::Beside);
    BarButton withIcon("square", "Export it", BarButton::Label::Beside);
    ValueSlider slider("Width", 1, 40);
    for (QWidget *control : {static_cast<QWidget *>(&button), static_cast<QWidget *>(&withIcon), static_cast<QWidget *>(&slider)}) {
        const QRect usual = ink(*control, Qt::LeftToRight), mirrored = ink(*control, Qt::RightToLeft);
        ASSERT_GT(usual.width(), 30);
        constexpr int kSideBearings = 3; // of the first and the last letter
        EXPECT_NEAR(usual.left(), mirrored.left(), kSideBearings);
        EXPECT_NEAR(usual.right(), mirrored.right(), kSideBearings);
    }
    NumberLabel zoom;
    zoom.setAlignment(Qt::AlignHCenter);
    zoom.setText("Fit · 65%");
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    const QImage usual = zoom.grab().toImage();
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(zoom.grab().toImage(), usual) << "words that run from the left keep their order";
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST(FocusRing, AppearsForTheKeyboardAndGoesForThePointer)
{
    Appearance appearance(*qApp);
    Window window;
    auto *layout = new QVBoxLayout(&window);
    auto *first = new QPushButton("First");
    auto *second = new QPushButton("Second");
    layout->addWidget(first);
    layout->addWidget(second);
    QApplication::processEvents();
    first->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(visibleRing(window), nullptr);
    QTest::keyClick(first, Qt::Key_Tab);
    EXPECT_TRUE(QTest::qWaitFor([&] { return second->hasFocus() && visibleRing(window); }));
    EXPECT_EQ(visibleRing(window)->geometry(), second->geometry().adjusted(-4, -4, 4, 4));
    QTest::mouseClick(first, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !visibleRing(window); }));
}

TEST(Sheet, AnswersReturnAndEscAndGivesTheFocusBack)
{
    Window window;
    QLineEdit field(&window);
    field.show();
    field.setFocus();
    int done = 0, given = 0;
    const auto makeSheet = [&] {
        auto *sheet = new Sheet(&window, {}, "Something went wrong");
        QObject::connect(sheet->addCancelButton("Cancel"), &QPushButton::clicked, sheet, [&] { ++given; });
        QObject::connect(sheet->addPrimaryButton("OK"), &QPushButton::clicked, sheet, [&] { ++done; });
        sheet->open();
        return QPointer<Sheet>(sheet);
    };
    auto sheet = makeSheet();
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return sheet.isNull(); }));
    EXPECT_EQ(window.focusWidget(), &field);

    sheet = makeSheet();
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(given, 1);
    EXPECT_EQ(done, 1);
}

TEST(Sheet, KeepsTheTabKeyInside)
{
    Window window;
    QLineEdit field(&window);
    field.show();
    Sheet *sheet = new Sheet(&window, {}, "Save Style Preset");
    auto *name = new QLineEdit;
    sheet->content()->addWidget(name);
    sheet->addCancelButton("Cancel");
    sheet->addPrimaryButton("Save");
    sheet->open();
    EXPECT_EQ(window.focusWidget(), name);
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        ASSERT_TRUE(sheet->isAncestorOf(window.focusWidget()));
    }
}

TEST(ToastPresenter, KeepsAToastForTwoSecondsThenFadesIt)
{
    NoticeBoard board;
    ToastPresenter presenter(board);
    QElapsedTimer timer;
    timer.start();
    board.post("Saved shot.png", "checkmark.circle.fill");
    board.post("Image copied to clipboard", "checkmark.circle.fill");
    EXPECT_EQ(presenter.count(), 2);
    QWidget *toast = nullptr;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == "toast")
            toast = widget;
    }
    ASSERT_NE(toast, nullptr);
    EXPECT_TRUE(toast->windowFlags() & Qt::WindowDoesNotAcceptFocus);
    EXPECT_TRUE(QTest::qWaitFor([&] { return toast->windowOpacity() < 1; }, 4000));
    EXPECT_GE(timer.elapsed(), 2200);
    QEnterEvent enter({5, 5}, {5, 5}, {5, 5});
    QApplication::sendEvent(toast, &enter);
    EXPECT_EQ(toast->windowOpacity(), 1) << "it stays under the pointer";
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(toast, &leave);
    EXPECT_TRUE(QTest::qWaitFor([&] { return presenter.count() == 0; }, 4000));
    EXPECT_GE(timer.elapsed(), 2490);
}

TEST(TipCenter, ShowsAfterAWhileAndHidesForAnyKey)
{
    TipCenter tips(nullptr);
    Window window;
    QPushButton button("Undo", &window);
    button.resize(80, 30);
    button.show();
    tips.attach(&button, {"Undo", "Take the last change back.", "⌘Z"});
    EXPECT_EQ(button.accessibleDescription(), "Take the last change back. (Ctrl+Z)");
    QElapsedTimer timer;
    timer.start();
    QEnterEvent enter({5, 5}, {5, 5}, button.mapToGlobal(QPointF(5, 5)));
    QApplication::sendEvent(&button, &enter);
    EXPECT_FALSE(tips.isShown());
    ASSERT_TRUE(QTest::qWaitFor([&] { return tips.isShown(); }, 2000));
    EXPECT_GE(timer.elapsed(), 449);
    QTest::keyClick(&button, Qt::Key_A);
    EXPECT_FALSE(tips.isShown());

    // Warm: the next one comes at once.
    timer.restart();
    QApplication::sendEvent(&button, &enter);
    ASSERT_TRUE(QTest::qWaitFor([&] { return tips.isShown(); }, 2000));
    EXPECT_LT(timer.elapsed(), 400);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&button, &leave);
    EXPECT_FALSE(tips.isShown());
}
