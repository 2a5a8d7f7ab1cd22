#include "editor_window_fixture.h"

#include "editor/canvas_view.h"
#include "editor/object_clipboard.h"
#include "editor/status_line.h"
#include "editor/texts.h"
#include "support/accessible_walk.h"
#include "support/printers.h"
#include "ui/color_panel.h"
#include "ui/controls.h"
#include "ui/sheet.h"

#include <QLineEdit>
#include <QPushButton>

TEST_F(EditorWindowTest, ClosingHandsTheControllerBackOnce)
{
    auto editor = stage.open(filled({120, 80}));
    int closed = 0;
    editor->onClose = [&](EditorWindowController *which) {
        EXPECT_EQ(which, editor.get());
        ++closed;
    };
    editor->show();
    editor->window().close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return closed > 0; }));
    editor->window().close();
    QCoreApplication::processEvents();
    EXPECT_EQ(closed, 1);
}

TEST_F(EditorWindowTest, CopiesTheFinishedImageWithItsEffects)
{
    auto editor = stage.open(filled({120, 80}));
    editor->run(EditorCommand::ToggleBorder);
    editor->sharing().copyImage();
    ASSERT_TRUE(waitForNotice("Image copied to clipboard"));
    EXPECT_EQ(stage.fakes.pasteboard.image().size(), QSize(136, 96));
}

TEST_F(EditorWindowTest, CountsTheLinesOfTextItCopies)
{
    auto editor = stage.open(filled({120, 80}));
    stage.fakes.text.answer = QList<RecognizedLine>{{"only one", {}, {}, 1}};
    editor->reading().grabText();
    EXPECT_TRUE(editor->session().isBusy());
    EXPECT_TRUE(waitForNotice("Copied 1 lines of text")) << "the whole picture always speaks of lines";
    EXPECT_EQ(stage.fakes.pasteboard.text(), "only one");
    EXPECT_FALSE(editor->session().isBusy());

    Q_EMIT editor->canvas().textAreaChosen(QRect(10, 10, 40, 20));
    EXPECT_TRUE(waitForNotice("Copied 1 line of text"));
    stage.fakes.text.answer = QList<RecognizedLine>{{"one", {}, {}, 1}, {"two", {}, {}, 1}};
    Q_EMIT editor->canvas().textAreaChosen(QRect(10, 10, 40, 20));
    EXPECT_TRUE(waitForNotice("Copied 2 lines of text"));
    stage.fakes.text.answer = fail("The engine is missing.");
    Q_EMIT editor->canvas().textAreaChosen(QRect(10, 10, 40, 20));
    EXPECT_TRUE(waitForNotice("No text found in that area"));
    editor->reading().grabText();
    EXPECT_TRUE(waitForNotice("No text found"));
}

TEST_F(EditorWindowTest, ReadsNothingThatObjectsHide)
{
    auto editor = stage.open(filled({120, 80}));
    Annotation box = editor->document().makeAnnotation(ToolKind::Rectangle, {10, 10});
    box.end = {60, 60};
    box.style = 2; // filled
    editor->document().add(box);
    stage.fakes.text.answer = QList<RecognizedLine>{{"one", {}, {}, 1}};
    editor->reading().grabText();
    ASSERT_TRUE(waitForNotice("Copied 1 lines of text"));
    EXPECT_EQ(stage.reader.seen.size(), QSize(120, 80));
    EXPECT_NE(stage.reader.seen.pixelColor(30, 30), QColor(Qt::white));
    stage.reader.seen = {};
    Q_EMIT editor->canvas().textAreaChosen(QRect(20, 20, 40, 20));
    ASSERT_TRUE(waitForNotice("Copied 1 line of text"));
    EXPECT_EQ(stage.reader.seen.size(), QSize(40, 20));
    EXPECT_NE(stage.reader.seen.pixelColor(10, 10), QColor(Qt::white));
}

TEST_F(EditorWindowTest, UploadsTheFinishedImageAndCopiesItsLink)
{
    stage.settings.setImgurClientID("abc");
    stage.fakes.http.answers = {
        HttpResponse{200, R"({"data":{"link":"https://i.imgur.com/xyz.png"},"success":true})"}};
    auto editor = stage.open(filled({120, 80}));
    editor->sharing().upload();
    EXPECT_TRUE(waitForNotice("Link copied: i.imgur.com"));
    EXPECT_EQ(stage.fakes.pasteboard.text(), "https://i.imgur.com/xyz.png");
    EXPECT_FALSE(editor->session().isBusy());
}

TEST_F(EditorWindowTest, AMissingKeyOffersTheSettings)
{
    auto editor = stage.open(filled({120, 80}));
    editor->show();
    editor->reading().runAI(ClaudeClient::Action::Describe);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet(*editor, "error") != nullptr; }));
    EXPECT_FALSE(editor->session().isBusy());
    for (auto *button : sheet(*editor, "error")->findChildren<QPushButton *>()) {
        if (button->text() == "Open Settings")
            button->click();
    }
    EXPECT_EQ(stage.settingsOpened, 1);
}

TEST_F(EditorWindowTest, ANameFromTheServiceRenamesOnlyFilesOfTheLibrary)
{
    stage.settings.setApiKey("key");
    stage.fakes.http.answers = {HttpResponse{
        200, R"({"content":[{"type":"text","text":"Invoice March"}],"stop_reason":"end_turn"})"}};
    auto inside = stage.open(put("shot.png"));
    inside->reading().runAI(ClaudeClient::Action::Name);
    EXPECT_TRUE(waitForNotice("Renamed to “Invoice March”"));
    EXPECT_TRUE(QFileInfo::exists(stage.inLibrary("Invoice March.png")));

    auto outside = stage.open(filled({120, 80}), stage.home.path("shot.png"));
    outside->show();
    outside->reading().runAI(ClaudeClient::Action::Name);
    EXPECT_TRUE(QTest::qWaitFor([&] { return sheet(*outside, "aiResult") != nullptr; }));
    EXPECT_EQ(outside->document().fileURL().toLocalFile(), stage.home.path("shot.png"));
}

TEST_F(EditorWindowTest, TheStatusLineTellsWhatIsThereAndWhatToDo)
{
    auto editor = stage.open(filled({120, 80}));
    EditorDocument &document = editor->document();
    StatusLine status(*editor);
    const auto objects = [](int count) { return EditorTexts::tr("%n object(s)", nullptr, count); };
    EXPECT_EQ(status.counts(), objects(0) + "  ·  120 × 80 px");
    EXPECT_EQ(status.hint(),
              "Drag to draw an arrow. Hold Shift to snap to 45°. Pick a style above.  ·  Ctrl+K for all "
              "commands  ·  F6 for the bars");
    addBox(document);
    EXPECT_EQ(status.counts(), "Red box  ·  " + objects(1) + "  ·  120 × 80 px");
    editor->session().setMode(EditorSession::Mode::PickingColor);
    EXPECT_EQ(status.hint(), "Click anywhere on the image to pick its color · Esc to cancel");
    editor->session().setMode(EditorSession::Mode::SelectingText);
    EXPECT_EQ(status.hint(), "Drag over text in the image to copy it · Esc to cancel");
    {
        const auto first = editor->session().beginWork();
        auto second = editor->session().beginWork();
        second.reset();
        EXPECT_EQ(status.hint(), "Working…") << "the other one still runs";
    }
    EXPECT_FALSE(editor->session().isBusy());
    editor->session().setDisplayZoom(0.634);
    EXPECT_EQ(status.zoom(), "Fit · 63%");
    editor->session().setZoom(2);
    editor->session().setDisplayZoom(2);
    EXPECT_EQ(status.zoom(), "200%");
}

TEST_F(EditorWindowTest, OptionsFollowTheToolAndTheSelection)
{
    auto editor = stage.open(filled({120, 80}));
    editor->show();
    EditorDocument &document = editor->document();
    const auto visible = [&](const char *name) {
        return editor->window().findChild<QWidget *>(name)->isVisible();
    };
    document.setTool(ToolKind::Callout);
    EXPECT_TRUE(visible("font") && visible("size") && visible("style") && visible("color-Red"));
    document.setTool(ToolKind::Stamp);
    EXPECT_TRUE(visible("stamp") && visible("color-Red"));
    EXPECT_FALSE(visible("size") || visible("style") || visible("font"));
    document.setTool(ToolKind::Blur);
    EXPECT_FALSE(visible("color-Red"));
    addBox(document); // selected
    EXPECT_TRUE(visible("color-Red") && visible("style"));
    editor->window().findChild<QAbstractButton *>("color-Blue")->click();
    EXPECT_EQ(document.annotations().first().color, QColor(0, 122, 255));
}

TEST_F(EditorWindowTest, TypingOnTheCanvasWritesIntoTheObject)
{
    auto editor = stage.open(filled({800, 600}, Qt::white));
    editor->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor->window()));
    EditorDocument &document = editor->document();
    QTest::keyClick(&editor->canvas(), Qt::Key_T);
    const QPoint at = editor->canvas().interaction().viewport().toView(QPointF(100, 100)).toPoint();
    QTest::mouseClick(&editor->canvas(), Qt::LeftButton, {}, at);
    auto *field = editor->canvas().findChild<QWidget *>("inlineText");
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "Two");
    QTest::keyClick(field, Qt::Key_Return, Qt::AltModifier);
    QTest::keyClicks(field, "lines");
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_EQ(document.annotations().size(), 1);
    EXPECT_EQ(document.annotations().first().text, "Two\nlines");
    EXPECT_TRUE(editor->canvas().hasFocus());
}

TEST_F(EditorWindowTest, ASavedPresetTakesTheNameThatWasTyped)
{
    auto editor = stage.open(filled({120, 80}));
    editor->show();
    editor->document().setTool(ToolKind::Ellipse);
    const auto answer = [&](const QString &name) {
        editor->promptSavePreset();
        auto *field = editor->window().findChildren<QWidget *>("savePreset").last()->findChild<QLineEdit *>();
        EXPECT_EQ(field->text(), "My Oval");
        field->setText(name);
        QTest::keyClick(field, Qt::Key_Return);
    };
    answer("   ");
    EXPECT_TRUE(stage.notices.isEmpty());
    EXPECT_EQ(stage.presets.presets().size(), 4);
    answer(" Round & red ");
    EXPECT_EQ(stage.notices.last(), (Notice{"Saved preset “Round & red”", "paintpalette.fill"}));
    EXPECT_EQ(stage.presets.presets().last().tool, "ellipse");
}

TEST_F(EditorWindowTest, TheStylePickerShowsTheChoiceAndNothingMoves)
{
    auto editor = stage.open(filled({120, 80}));
    editor->show();
    EditorDocument &document = editor->document();
    auto *picker = editor->window().findChild<SegmentedPicker *>("style");
    auto *slider = editor->window().findChild<QWidget *>("size");
    document.chooseTool(ToolKind::Rectangle);
    QCoreApplication::processEvents();
    const QPoint before = slider->pos();
    addBox(document);
    QCoreApplication::processEvents();
    EXPECT_EQ(slider->pos(), before) << "though an object is selected";
    Q_EMIT picker->chosen(1);
    EXPECT_EQ(picker->current(), 1);
    EXPECT_EQ(document.selected()->style, 1);
    document.undo();
    document.chooseTool(ToolKind::Rectangle);
    EXPECT_EQ(picker->current(), 1) << "the next one looks like that";
}

TEST_F(EditorWindowTest, AChosenColourNeverGoesToWhatIsSelectedLater)
{
    auto editor = stage.open(filled({120, 80}));
    editor->show();
    EditorDocument &document = editor->document();
    addBox(document);
    editor->window().findChild<QAbstractButton *>("moreColors")->click();
    auto *panel = editor->window().findChild<ColorPanel *>("colorPanel");
    ASSERT_NE(panel, nullptr);
    panel->choose(QColor(1, 2, 3));
    EXPECT_EQ(document.annotations().first().color, QColor(1, 2, 3));
    document.setSelectedID({});
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(EditorWindowTest, CtrlCWithoutASelectionCopiesTheFinishedPicture)
{
    auto editor = stage.open(filled({120, 80}));
    editor->run(EditorCommand::ToggleBorder);
    editor->run(EditorCommand::CopyObject);
    EXPECT_TRUE(waitForNotice("Image copied to clipboard"));
    EXPECT_EQ(stage.fakes.pasteboard.image().size(), QSize(136, 96));
    addBox(editor->document());
    editor->run(EditorCommand::CopyObject);
    EXPECT_TRUE(stage.fakes.pasteboard.has(ObjectClipboard::kMarker));
    stage.fakes.pasteboard.clear();
    editor->run(EditorCommand::Cut);
    EXPECT_TRUE(stage.fakes.pasteboard.has(ObjectClipboard::kMarker));
    EXPECT_TRUE(editor->document().annotations().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return stage.pending.isIdle(); }));
    EXPECT_EQ(stage.fakes.pasteboard.image().width(), 56);
}

TEST_F(EditorWindowTest, WhatWasAskedForOutlivesTheWindow)
{
    const QString path = put("shot.png");
    auto editor = stage.open(path);
    editor->saving().save();
    addBox(editor->document());
    editor->saving().save(); // waits behind the first
    editor->sharing().copyImage();
    editor->sharing().pin();
    editor.reset();
    EXPECT_FALSE(stage.pending.isIdle()) << "quitting has something to wait for";
    EXPECT_TRUE(QTest::qWaitFor([&] { return stage.pending.isIdle(); }));
    EXPECT_EQ(stage.open(path)->document().annotations().size(), 1);
    EXPECT_EQ(stage.fakes.pasteboard.image().size(), QSize(120, 80));
    EXPECT_EQ(stage.pins.windows().size(), 1u);
}

TEST_F(EditorWindowTest, PicturesThatCannotBeShownAreToldOf)
{
    auto document = std::make_unique<EditorDocument>(filled({120, 80}));
    Annotation broken = document->makeAnnotation(ToolKind::Image, {10, 10});
    broken.end = {60, 60};
    broken.unshownImage = "no picture";
    document->add(broken);
    EditorWindowController editor(std::move(document), stage.ports());
    ASSERT_EQ(stage.notices.size(), 1);
    EXPECT_TRUE(stage.notices.first().text.contains("can't be shown"));
}

TEST_F(EditorWindowTest, ALateCopyNeverReplacesANewerOne)
{
    auto editor = stage.open(filled({120, 80}));
    editor->sharing().copyImage();
    editor->sharing().copyFile();
    stage.fakes.pasteboard.setText("newer");
    EXPECT_TRUE(QTest::qWaitFor([&] { return stage.pending.isIdle(); }));
    EXPECT_EQ(stage.fakes.pasteboard.text(), "newer");
    EXPECT_TRUE(stage.notices.isEmpty()) << "nothing is said to be copied";
}

TEST_F(EditorWindowTest, ReadersAndTheKeyboardGetEverywhere)
{
    auto editor = stage.open(filled({800, 600}));
    editor->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor->window()));
    AccessibleWalk::expectUsable(editor->window(), 36, 4);
    for (EditorCommand command : {EditorCommand::CommandPalette, EditorCommand::Describe}) {
        editor->run(command);
        ASSERT_TRUE(QTest::qWaitFor([&] { return editor->window().findChild<Sheet *>() != nullptr; }));
        auto *sheet = editor->window().findChild<Sheet *>();
        QAccessibleInterface *told = QAccessible::queryAccessibleInterface(sheet);
        EXPECT_EQ(told->role(), QAccessible::Dialog);
        EXPECT_TRUE(told->state().modal);
        EXPECT_FALSE(told->text(QAccessible::Name).isEmpty());
        AccessibleWalk::expectUsable(editor->window(), 1, 1);
        sheet->close();
        ASSERT_TRUE(QTest::qWaitFor([&] { return editor->window().findChild<Sheet *>() == nullptr; }));
    }
}
