#pragma once

#include "ui/focus_ring.h"
#include "ui/roles.h"
#include "ui/sheet.h"

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

// What holds for every window of the program: assistive technology learns what each control is and is called,
// and the keyboard reaches all of them, sees where it is, and gets out again.
namespace AccessibleWalk {

inline std::string pathOf(QAccessibleInterface *part)
{
    QStringList names;
    for (; part; part = part->parent()) {
        const QObject *object = part->object();
        names.prepend(QStringLiteral("%1 '%2'").arg(
            object ? QString::fromLatin1(object->metaObject()->className()) + '#' + object->objectName()
                   : QStringLiteral("(part)"),
            part->text(QAccessible::Name)));
        if (part->role() == QAccessible::Application || (object && object->isWidgetType() &&
                                                         static_cast<const QWidget *>(object)->isWindow()))
            break;
    }
    return names.join(QStringLiteral(" > ")).toStdString();
}

inline bool isControl(QAccessibleInterface *part)
{
    if (part->state().focusable)
        return true;
    QAccessibleActionInterface *actions = part->actionInterface();
    return actions && actions->actionNames().contains(QAccessibleActionInterface::pressAction());
}

// Counts the controls that it saw.
inline int expectEachTellsWhatItIs(QAccessibleInterface *part)
{
    if (!part || !part->isValid() || part->state().invisible)
        return 0;
    int controls = 0;
    const QAccessible::Role role = part->role();
    if (isControl(part)) {
        ++controls;
        EXPECT_TRUE(role != QAccessible::NoRole && role != QAccessible::Client) << "no role: " << pathOf(part);
        EXPECT_FALSE(part->text(QAccessible::Name).trimmed().isEmpty()) << "no name: " << pathOf(part);
        if (role == QAccessible::CheckBox || role == QAccessible::RadioButton)
            EXPECT_TRUE(part->state().checkable) << "no state: " << pathOf(part);
        if (role == QAccessible::PageTab || role == QAccessible::ListItem)
            EXPECT_TRUE(part->state().selectable) << "no state: " << pathOf(part);
    }
    for (int i = 0; i < part->childCount(); ++i)
        controls += expectEachTellsWhatItIs(part->child(i));
    return controls;
}

inline std::string nameOf(const QWidget *widget)
{
    return widget ? pathOf(QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget))) : "nothing";
}

inline int controlsWithTab(const QWidget &window)
{
    const auto *sheet = window.findChild<Sheet *>();
    int count = 0;
    for (const QWidget *child : (sheet ? sheet : &window)->findChildren<QWidget *>())
        count += child->isVisible() && child->isEnabled() && (child->focusPolicy() & Qt::TabFocus) &&
                 !child->focusProxy();
    return count;
}

// Once round with the Tab key. Gives the stops.
inline QList<QWidget *> expectKeyboardGoesRound(QWidget &window)
{
    QList<QWidget *> stops;
    QImage before = window.grab().toImage();
    constexpr int kMany = 300;
    for (int i = 0; i < kMany; ++i) {
        QWidget *from = QApplication::focusWidget();
        QTest::keyClick(from ? from : &window, Qt::Key_Tab);
        QCoreApplication::processEvents();
        QWidget *at = QApplication::focusWidget();
        if (at && at == from && controlsWithTab(window) == 1)
            return {at};
        EXPECT_NE(at, from) << "the keyboard can't leave " << nameOf(from);
        if (!at || at == from || stops.contains(at))
            break;
        stops += at;
        EXPECT_TRUE(at->isVisible()) << nameOf(at);
        const QImage now = window.grab().toImage();
        const QRect around = QRect(at->mapTo(&window, QPoint()), at->size()).adjusted(-6, -6, 6, 6);
        EXPECT_TRUE(now.copy(around) != before.copy(around))
            << "nothing shows the keyboard at " << nameOf(at) << " at " << around.x() << ", " << around.y();
        before = now;
    }
    EXPECT_LT(stops.size(), kMany) << "no end";
    return stops;
}

// The whole of it, for a window that is shown.
inline void expectUsable(QWidget &window, int leastControls, int leastStops)
{
    Roles::install();
    // Those that were made before that are the toolkit's.
    for (QWidget *widget : window.findChildren<QWidget *>() + QList<QWidget *>{&window})
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(QAccessible::queryAccessibleInterface(widget)));
    FocusRing ring(*qApp);
    QApplication::setActiveWindow(&window);
    QCoreApplication::processEvents();
    QAccessibleInterface *root = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(root, nullptr);
    EXPECT_NE(root->role(), QAccessible::Client) << pathOf(root);
    EXPECT_FALSE(root->text(QAccessible::Name).isEmpty()) << "a window without a name: " << pathOf(root);
    EXPECT_GE(expectEachTellsWhatItIs(root), leastControls);
    EXPECT_GE(expectKeyboardGoesRound(window).size(), leastStops);
}

} // namespace AccessibleWalk
