#pragma once

#include "ui/focus_ring.h"
#include "ui/roles.h"
#include "ui/sheet.h"
#include "ui/theme.h"
#include "ui/theme_style.h"

#include <QAccessible>
#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QWidget>
#include <cmath>
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

inline double luminance(QRgb color)
{
    const auto part = [](int value) {
        const double v = value / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(color)) + 0.7152 * part(qGreen(color)) + 0.0722 * part(qBlue(color));
}

inline double contrast(QRgb a, QRgb b)
{
    const double x = luminance(a) + 0.05, y = luminance(b) + 0.05;
    return std::max(x, y) / std::min(x, y);
}

// How far what is drawn in a part stands out from the colour that most of the part has.
inline double contrastIn(const QImage &part)
{
    QHash<QRgb, int> counts;
    QRgb ground = 0;
    for (int y = 0; y < part.height(); ++y) {
        for (int x = 0; x < part.width(); ++x) {
            const QRgb color = part.pixel(x, y);
            if (++counts[color] > counts.value(ground))
                ground = color;
        }
    }
    double most = 1;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        most = std::max(most, contrast(it.key(), ground));
    return most;
}

// In a photograph with three pixels to a point, so that thin letters have their full colour somewhere.
// Counts what it measured.
inline int expectReadable(QWidget &window)
{
    constexpr double kText = 4.5, kIcon = 3;
    constexpr int kScale = 3;
    QImage photograph(window.size() * kScale, QImage::Format_RGB32);
    photograph.setDevicePixelRatio(kScale);
    window.render(&photograph);
    photograph.setDevicePixelRatio(1);
    int measured = 0;
    const auto *sheet = window.findChild<Sheet *>(); // dims what is behind it
    for (QWidget *part : (sheet ? sheet : &window)->findChildren<QWidget *>()) {
        if (!part->isVisible() || !part->isEnabled() || part->visibleRegion().isEmpty() ||
            part->inherits("RecentThumb")) // a picture of any colours
            continue;
        const auto *label = qobject_cast<QLabel *>(part);
        const auto *button = qobject_cast<QAbstractButton *>(part);
        const auto *field = qobject_cast<QLineEdit *>(part);
        if (!(label && !label->text().isEmpty()) && !button && !field)
            continue;
        const QRect inner = part->visibleRegion().boundingRect().adjusted(1, 1, -1, -1);
        const QRect pixels(part->mapTo(&window, inner.topLeft()) * kScale, inner.size() * kScale);
        const bool isEmpty = field && field->text().isEmpty() && field->placeholderText().isEmpty();
        const bool isText = label || (field && !isEmpty) || (button && !button->text().isEmpty() && !part->inherits("Swatch"));
        ++measured;
        EXPECT_GE(contrastIn(photograph.copy(pixels)), isText ? kText : kIcon)
            << nameOf(part) << (Theme::tokens(part).dark ? " in dark" : " in light");
        if (field && field->hasFrame()) { // its edge, which tells where to click
            const QRect edge(pixels.left() - kScale, pixels.center().y(), 2 * kScale, 1);
            EXPECT_GE(contrastIn(photograph.copy(edge.adjusted(-4, 0, 4, 0))), kIcon) << "the edge of " << nameOf(part);
        }
    }
    return measured;
}

// In both themes and in those of high contrast.
inline void expectReadableInEachTheme(QWidget &window, int least)
{
    const QPalette before = QApplication::palette();
    for (const Theme::Tokens *tokens : {&Theme::light(), &Theme::dark(), &Theme::highContrastLight(),
                                        &Theme::highContrastDark()}) {
        QApplication::setPalette(Theme::palette(*tokens));
        QCoreApplication::processEvents();
        EXPECT_GE(expectReadable(window), least);
    }
    QApplication::setPalette(before);
    QCoreApplication::processEvents();
}

// The whole of it, for a window that is shown.
inline void expectUsable(QWidget &window, int leastControls, int leastStops)
{
    Roles::install();
    // Those that were made before that are the toolkit's.
    for (QWidget *widget : window.findChildren<QWidget *>() + QList<QWidget *>{&window})
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(QAccessible::queryAccessibleInterface(widget)));
    if (!qobject_cast<ThemeStyle *>(QApplication::style()))
        QApplication::setStyle(new ThemeStyle);
    FocusRing ring(*qApp);
    QApplication::setActiveWindow(&window);
    QCoreApplication::processEvents();
    QAccessibleInterface *root = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(root, nullptr);
    EXPECT_NE(root->role(), QAccessible::Client) << pathOf(root);
    EXPECT_FALSE(root->text(QAccessible::Name).isEmpty()) << "a window without a name: " << pathOf(root);
    EXPECT_GE(expectEachTellsWhatItIs(root), leastControls);
    EXPECT_GE(expectKeyboardGoesRound(window).size(), leastStops);
    expectReadableInEachTheme(window, leastStops);
}

} // namespace AccessibleWalk
