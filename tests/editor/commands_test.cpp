#include "editor/command_palette.h"
#include "editor/editor_commands.h"
#include "editor/editor_view.h"
#include "editor/options_bar.h"
#include "editor_stage.h"
#include "settings/hot_key_action.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "ui/controls.h"
#include "ui/shortcut_text.h"
#include "ui/tips.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QTest>
#include <gmock/gmock.h>

namespace {

// Lines of a file beside the test: fields between bars.
QList<QStringList> expected(const QString &name)
{
    QFile file(QStringLiteral(LUMENPOST_TEST_DATA) + '/' + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QList<QStringList> rows;
    for (const QString &line : QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts))
        rows.append(line.split('|'));
    return rows;
}

QStringList titles(const QList<PaletteCommand> &commands)
{
    QStringList result;
    for (const PaletteCommand &command : commands)
        result.append(command.title);
    return result;
}

PaletteList paletteOf(const QStringList &words)
{
    QList<PaletteCommand> commands;
    for (const QString &title : words)
        commands.append({title, {}, {}, [] {}});
    return PaletteList(commands);
}

QStringList shown(const PaletteList &list)
{
    QStringList result;
    for (const PaletteCommand *command : list.filtered())
        result.append(command->title);
    return result;
}

} // namespace

TEST(PaletteList, FindsEveryWordInAnyOrder)
{
    PaletteList list = paletteOf({"Undo", "Zoom to Fit", "Save", "Save As…"});
    list.setQuery("zoom fit");
    EXPECT_EQ(shown(list), QStringList{"Zoom to Fit"});
    list.setQuery("FIT  zoom");
    EXPECT_EQ(shown(list), QStringList{"Zoom to Fit"});
    list.setQuery("undo   ");
    EXPECT_EQ(shown(list), QStringList{"Undo"});
    list.setQuery("   ");
    EXPECT_EQ(list.count(), 4);
    list.setQuery("save");
    EXPECT_EQ(shown(list), (QStringList{"Save", "Save As…"}));
    list.setQuery("nothing like it");
    EXPECT_EQ(list.selected(), nullptr);
    list.move(1);
    EXPECT_EQ(list.selection(), 0);
}

TEST(PaletteList, WrapsRoundAndBeginsAnewWithEveryQuery)
{
    PaletteList list = paletteOf({"a", "b", "c"});
    list.move(-1);
    EXPECT_EQ(list.selected()->title, "c");
    list.move(1);
    EXPECT_EQ(list.selected()->title, "a");
    list.move(2);
    list.setQuery("");
    EXPECT_EQ(list.selection(), 0);
}

TEST(EditorCommands, HaveNoKeyThatIsAGlobalOneFromTheStart)
{
    EditorStage stage;
    auto editor = stage.open(filled({400, 300}));
    QList<QKeySequence> keys;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        for (const QAction *action : window->findChildren<QAction *>())
            keys += action->shortcuts();
        for (const QShortcut *shortcut : window->findChildren<QShortcut *>())
            keys += shortcut->key();
    }
    ASSERT_TRUE(keys.contains(shortcutSequence("⇧⌘C")) && keys.contains(shortcutSequence("⇧⌘S")));
    for (const HotKeyInfo &info : kHotKeys)
        EXPECT_FALSE(keys.contains(shortcutSequence(info.defaultCombo().display()))) << info.rawValue;
}

TEST(EditorCommands, ThePaletteListsItsLinesInOrder)
{
    EditorStage stage;
    auto editor = stage.open(filled({400, 300}));
    const auto rows = expected("palette.txt");
    const auto check = [&](qsizetype count) {
        const auto commands = editor->paletteCommands();
        ASSERT_EQ(commands.size(), count);
        for (qsizetype i = 0; i < count; ++i) {
            EXPECT_EQ(commands[i].title, rows[i][0]);
            EXPECT_EQ(commands[i].symbol, rows[i][1]) << rows[i][0].toStdString();
            EXPECT_EQ(commands[i].shortcut, rows[i][2]) << rows[i][0].toStdString();
        }
    };
    check(rows.size() - 4);
    EditorDocument &document = editor->document();
    Annotation box = document.makeAnnotation(ToolKind::Rectangle, {10, 10});
    box.end = {90, 90};
    document.add(box);
    check(rows.size());
}

TEST(EditorCommands, EveryLineOfThePaletteDoesSomething)
{
    // Each is run on a document of its own with a selected object, and must leave a trace.
    const QStringList all = [] {
        EditorStage stage;
        auto editor = stage.open(filled({400, 300}));
        editor->document().add(editor->document().makeAnnotation(ToolKind::Step, {50, 50}));
        return titles(editor->paletteCommands());
    }();
    for (qsizetype i = 0; i < all.size(); ++i) {
        EditorStage stage;
        stage.fakes.text.answer = QList<RecognizedLine>{};
        auto editor = stage.open(filled({400, 300}));
        EditorDocument &document = editor->document();
        document.add(document.makeAnnotation(ToolKind::Step, {50, 50}));
        document.add(document.makeAnnotation(ToolKind::Step, {90, 90}));
        document.undo();
        document.setSelectedID(document.annotations().first().id);
        if (all[i] == "Bring to Front" || all[i] == "Send to Back") {
            document.redo();
            document.setSelectedID(document.annotations()[all[i] == "Bring to Front" ? 0 : 1].id);
        }
        const bool wantsLast = all[i] == "Arrow Tool"; // the tool a document begins with
        document.setTool(wantsLast ? ToolKind::Select : ToolKind::Arrow);
        editor->session().setZoom(all[i] == "Zoom to Fit" ? std::optional(3.0) : std::nullopt);
        bool changed = false;
        QObject::connect(&document, &EditorDocument::changed, &document, [&] { changed = true; });
        QObject::connect(&editor->session(), &EditorSession::changed, &document, [&] { changed = true; });
        const auto pinned = [&] { return !stage.pins.windows().empty(); };
        const auto popped = [&] {
            return editor->window().findChild<QMenu *>("shareMenu") ||
                   editor->window().findChild<QWidget *>("saveAs") ||
                   editor->window().findChild<QWidget *>("error");
        };
        editor->paletteCommands()[i].run();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return changed || !stage.notices.isEmpty() || pinned() || popped();
        })) << all[i].toStdString();
        // Whatever still runs ends before the stage goes.
        EXPECT_TRUE(QTest::qWaitFor([&] { return !editor->session().isBusy() && stage.pending.isIdle(); }));
    }
}

TEST(EditorCommands, ToolButtonsSpeakTheirTitlesTipsAndKeys)
{
    EditorStage stage;
    auto editor = stage.open(filled({400, 300}));
    QList<ToolKind> inGroups;
    for (const auto &group : EditorView::toolGroups())
        inGroups += group;
    EXPECT_EQ(inGroups, Tools::toolbarTools());
    for (ToolKind tool : inGroups) {
        auto *button = editor->window().findChild<BarButton *>("tool-" + Tools::rawValue(tool));
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->text(), Tools::shortTitle(tool));
        EXPECT_EQ(TipCenter::content(button), (TipContent{Tools::shortTitle(tool), Tools::tipDetail(tool),
                                                          QString(Tools::shortcutKey(tool))}));
        button->click();
        EXPECT_EQ(editor->document().tool(), tool);
        EXPECT_TRUE(button->isChecked());
        button->click();
        EXPECT_TRUE(button->isChecked());
    }
}

TEST(EditorCommands, BarsAndMenusSpeakTheirWords)
{
    EditorStage stage;
    auto editor = stage.open(filled({400, 300}));
    for (const QStringList &row : expected("bars.txt")) {
        QWidget *control = nullptr;
        for (QWidget *candidate : editor->window().findChildren<QWidget *>()) {
            const TipContent tip = TipCenter::content(candidate);
            if (tip.title == row[0] && tip.detail == row[1])
                control = candidate;
        }
        EXPECT_NE(control, nullptr) << row.join(" | ").toStdString();
        auto *button = qobject_cast<BarButton *>(control);
        QStringList items;
        if (button && button->menu()) {
            Q_EMIT button->menuAboutToOpen();
            for (QAction *action : button->menu()->actions()) {
                if (!action->isSeparator())
                    items.append(action->text().section('\t', 0, 0).replace("&&", "&"));
            }
        }
        EXPECT_EQ(items.join(", "), row.value(2)) << row[0].toStdString();
    }
}

TEST(EditorCommands, NoTwoShortcutsOfTheWindowAreTheSame)
{
    EditorStage stage;
    auto editor = stage.open(filled({400, 300}));
    QStringList seen;
    for (QAction *action : editor->window().actions()) {
        for (const QKeySequence &sequence : action->shortcuts()) {
            EXPECT_FALSE(sequence.isEmpty());
            EXPECT_FALSE(seen.contains(sequence.toString())) << sequence.toString().toStdString();
            seen.append(sequence.toString());
        }
    }
    EXPECT_GE(seen.size(), 16);
}

TEST(CommandPalette, RunsTheChosenLineAfterItHasClosed)
{
    EditorStage stage;
    auto editor = stage.open(filled({400, 300}));
    editor->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor->window()));
    editor->run(EditorCommand::CommandPalette);
    auto *palette = editor->window().findChild<CommandPalette *>("palette");
    ASSERT_NE(palette, nullptr);
    auto *field = palette->findChild<QLineEdit *>("paletteField");
    QTest::keyClicks(field, "border");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_FALSE(editor->session().isPaletteOpen());
    EXPECT_FALSE(editor->document().effects().border) << "not before the next turn";
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor->document().effects().border; }));

    editor->run(EditorCommand::CommandPalette);
    field = editor->window().findChildren<QLineEdit *>("paletteField").last();
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(editor->session().isPaletteOpen());
}
