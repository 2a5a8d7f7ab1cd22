#include "ui/color_panel.h"

#include <QLineEdit>
#include <QTest>
#include <gmock/gmock.h>

TEST(ColorPanel, TellsTheColourWhileItIsChosenAndEscTakesItBack)
{
    QWidget window;
    window.show();
    auto *panel = new ColorPanel(QColor(255, 0, 0), &window);
    QList<QColor> told;
    QObject::connect(panel, &ColorPanel::changed, &window, [&told](const QColor &color) { told += color; });
    panel->openUnder(&window);
    auto *field = panel->findChild<QLineEdit *>("hexField");
    EXPECT_EQ(field->text(), "#FF0000");
    field->selectAll();
    QTest::keyClicks(field, "#00FF0");
    EXPECT_TRUE(told.isEmpty()) << "not a colour yet";
    QTest::keyClicks(field, "0");
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.last(), QColor(0, 255, 0));
    panel->choose(QColor(128, 128, 128));
    for (QWidget *child : panel->findChildren<QWidget *>()) {
        if (child->accessibleName() == "Saturation and brightness")
            QTest::keyClick(child, Qt::Key_Right, Qt::ShiftModifier);
    }
    EXPECT_EQ(told.last().hsvHue(), 120) << "as it was before the grey, which has none";
    QTest::keyClick(panel, Qt::Key_Escape);
    EXPECT_EQ(told.last(), QColor(255, 0, 0));
    EXPECT_FALSE(panel->isVisible());
}
