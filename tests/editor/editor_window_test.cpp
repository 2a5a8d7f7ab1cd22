#include "document/image_files.h"
#include "document/project_file.h"
#include "editor/canvas_view.h"
#include "editor/object_clipboard.h"
#include "editor/status_line.h"
#include "editor/texts.h"
#include "editor_stage.h"
#include "library/library_versions.h"
#include "support/accessible_walk.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "ui/color_panel.h"
#include "ui/controls.h"
#include "ui/sheet.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

namespace {

class EditorWindowTest : public testing::Test {
protected:
    QString put(const QString &name)
    {
        const QString path = stage.inLibrary(name);
        EXPECT_TRUE(ImageFiles::write(filled({120, 80}), path));
        return path;
    }
    static void addBox(EditorDocument &document)
    {
        Annotation box = document.makeAnnotation(ToolKind::Rectangle, {10, 10});
        box.end = {60, 60};
        box.style = 2;
        document.add(box);
    }
    static void save(EditorWindowController &editor)
    {
        QSignalSpy ended(&editor.saving(), &DocumentSaving::ended);
        editor.saving().save();
        ASSERT_TRUE(ended.count() || ended.wait());
    }
    bool waitForNotice(const QString &text)
    {
        return QTest::qWaitFor([&] {
            return std::any_of(stage.notices.begin(), stage.notices.end(),
                               [&text](const Notice &notice) { return notice.text == text; });
        });
    }
    QWidget *sheet(EditorWindowController &editor, const QString &name) const
    {
        return editor.window().findChild<QWidget *>(name);
    }

    EditorStage stage;
};

} // namespace

TEST_F(EditorWindowTest, SavingInTheLibraryKeepsAVersionAndAProject)
{
    const QString path = put("shot.png");
    auto editor = stage.open(path);
    addBox(editor->document());
    QSignalSpy changed(&stage.library, &Library::changed);
    save(*editor);
    EXPECT_EQ(stage.notices, QList<Notice>({{"Saved shot.png", "checkmark.circle.fill"}}));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_NE(ImageFiles::read(path)->pixelColor(30, 30), QColor(Qt::white)) << "the file is flat";

    const auto versions = FileHistory(stage.library, path).versions();
    ASSERT_EQ(versions.size(), 1);
    EXPECT_EQ(ImageFiles::read(versions.first().folder + "/shot.png")->pixelColor(30, 30), QColor(Qt::white));

    // A second editor finds the object again, over the untouched pixels.
    auto again = stage.open(path);
    ASSERT_EQ(again->document().annotations().size(), 1);
    EXPECT_EQ(again->document().annotations().first().rect(), QRectF(10, 10, 50, 50));
    EXPECT_EQ(again->document().base().pixelColor(30, 30), QColor(Qt::white));
}

TEST_F(EditorWindowTest, SavingElsewhereWritesAFlatFileAlone)
{
    const QString path = stage.home.path("outside.png");
    auto editor = stage.open(filled({120, 80}), path);
    addBox(editor->document());
    save(*editor);
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_TRUE(FileHistory(stage.library, path).versions().isEmpty());
    EXPECT_FALSE(QFileInfo::exists(stage.library.projectDirectory(path)));
}

TEST_F(EditorWindowTest, SavingTwiceAtOnceKeepsTheLaterState)
{
    const QString path = put("shot.png");
    auto editor = stage.open(path);
    QSignalSpy ended(&editor->saving(), &DocumentSaving::ended);
    editor->saving().save();
    addBox(editor->document());
    editor->saving().save();
    ASSERT_TRUE(ended.wait());
    EXPECT_EQ(stage.open(path)->document().annotations().size(), 1);
    EXPECT_FALSE(editor->saving().isSaving());
}

TEST_F(EditorWindowTest, AFileThatCannotBeWrittenLeavesTheEditOpenAndSaysWhy)
{
    const QString path = stage.home.path("missing/folder/shot.png");
    auto editor = stage.open(filled({120, 80}), path);
    addBox(editor->document());
    editor->show();
    save(*editor);
    EXPECT_NE(sheet(*editor, "alert"), nullptr);
    EXPECT_TRUE(stage.notices.isEmpty());
    EXPECT_EQ(editor->document().annotations().size(), 1);
    EXPECT_EQ(editor->document().fileURL().toLocalFile(), path);
}

TEST_F(EditorWindowTest, ASaveThatFailsAfterItsWindowClosedIsToldOfOnce)
{
    auto editor = stage.open(filled({120, 80}), stage.home.path("missing/folder/shot.png"));
    editor->saving().save();
    addBox(editor->document());
    editor->saving().save(); // waits, and goes with the first
    editor.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return stage.pending.isIdle() && !stage.notices.isEmpty(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(stage.notices, QList<Notice>({{"Couldn't write shot.png: there is no such folder.",
                                             "exclamationmark.triangle.fill"}}));
}

TEST_F(EditorWindowTest, ASaveThatIsUnderWayOutlivesItsWindow)
{
    const QString path = put("shot.png");
    auto editor = stage.open(path);
    addBox(editor->document());
    editor->saving().save();
    editor.reset();
    EXPECT_TRUE(waitForNotice("Saved shot.png"));
    EXPECT_EQ(stage.open(path)->document().annotations().size(), 1);
}

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

TEST_F(EditorWindowTest, SavingWithoutAFileAsksForOne)
{
    auto editor = stage.open(filled({120, 80}));
    editor->show();
    EXPECT_EQ(editor->window().windowTitle(), "Untitled Capture");
    editor->saving().save();
    EXPECT_NE(sheet(*editor, "saveAs"), nullptr);
}

TEST_F(EditorWindowTest, ACopyIntoTheSameFolderIsNoVersionAndNoProject)
{
    const QString path = put("shot.png");
    auto editor = stage.open(path);
    addBox(editor->document());
    const QString copy = stage.inLibrary("copy.jpg");
    editor->saving().saveInto(copy);
    EXPECT_TRUE(waitForNotice("Saved copy.jpg"));
    EXPECT_TRUE(QFileInfo::exists(copy));
    EXPECT_TRUE(editor->document().hasUnsavedChanges()) << "its own file is as it was";
    EXPECT_FALSE(QFileInfo::exists(stage.library.projectDirectory(copy)));
    EXPECT_TRUE(FileHistory(stage.library, path).versions().isEmpty());
    EXPECT_EQ(editor->document().fileURL().toLocalFile(), path);
}

TEST_F(EditorWindowTest, FollowsARenameInTheLibrary)
{
    auto editor = stage.open(put("shot.png"));
    EXPECT_EQ(editor->window().windowTitle(), "shot");
    const auto renamed = stage.library.rename(stage.inLibrary("shot.png"), "Invoice of March");
    ASSERT_TRUE(renamed);
    EXPECT_EQ(editor->window().windowTitle(), "Invoice of March");
    addBox(editor->document());
    save(*editor);
    EXPECT_FALSE(QFileInfo::exists(stage.inLibrary("shot.png")));
    EXPECT_EQ(stage.open(*renamed)->document().annotations().size(), 1);
}

TEST_F(EditorWindowTest, AGuidesStepIsSavedByItsOwnHandler)
{
    auto editor = stage.open(put("shot.png"));
    int handled = 0;
    editor->session().saveHandler = [&](EditorDocument &) { ++handled; };
    editor->saving().save();
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(stage.notices, QList<Notice>({{"Step updated in your guide", "list.number"}}));
    EXPECT_FALSE(editor->saving().isSaving());
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

TEST_F(EditorWindowTest, SaveAsOntoItsOwnFileIsASave)
{
    const QString path = put("shot.png");
    auto editor = stage.open(path);
    addBox(editor->document());
    QSignalSpy ended(&editor->saving(), &DocumentSaving::ended);
    editor->saving().saveInto(path);
    ASSERT_TRUE(ended.wait());
    EXPECT_EQ(stage.open(path)->document().annotations().size(), 1) << "with its objects";
}

TEST_F(EditorWindowTest, SaveAsOntoAnotherLibraryFileKeepsAVersionAndDropsItsProject)
{
    const QString other = put("other.png");
    auto first = stage.open(other);
    addBox(first->document());
    save(*first);
    first.reset();
    QImage black = filled({50, 40}, Qt::black);
    auto editor = stage.open(black);
    editor->saving().saveInto(other);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stage.pending.isIdle(); }));
    EXPECT_EQ(FileHistory(stage.library, other).versions().size(), 2);
    auto again = stage.open(other);
    EXPECT_EQ(again->document().base().size(), QSize(50, 40));
    EXPECT_TRUE(again->document().annotations().isEmpty());
}

TEST_F(EditorWindowTest, AKindOfFileThatIsNotWrittenIsSavedAsAnother)
{
    const QString path = stage.inLibrary("clip.gif");
    ASSERT_TRUE(QFile::copy(put("shot.png"), path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    auto editor = stage.open(filled({120, 80}), path);
    editor->show();
    editor->saving().save();
    EXPECT_NE(sheet(*editor, "saveAs"), nullptr);
    editor->saving().saveInto(path);
    EXPECT_NE(sheet(*editor, "alert"), nullptr);
    file.seek(0);
    EXPECT_EQ(file.readAll(), before);
}

TEST_F(EditorWindowTest, ARenameWhileASaveRunsTakesTheSaveAlong)
{
    auto editor = stage.open(put("shot.png"));
    QSignalSpy ended(&editor->saving(), &DocumentSaving::ended);
    editor->saving().save();
    addBox(editor->document());
    editor->saving().save(); // waits
    const auto renamed = stage.library.rename(stage.inLibrary("shot.png"), "Invoice");
    ASSERT_TRUE(renamed);
    ASSERT_TRUE(ended.wait());
    EXPECT_FALSE(QFileInfo::exists(stage.inLibrary("shot.png"))) << "the old name isn't written again";
    EXPECT_FALSE(editor->document().hasUnsavedChanges());
    auto again = stage.open(*renamed);
    EXPECT_EQ(again->document().annotations().size(), 1);
    EXPECT_FALSE(again->document().isFromDraft());
}

TEST_F(EditorWindowTest, WhatAFormatCannotHoldIsSavedAsPngWithItsObjects)
{
    const QString jpeg = put("tall.jpg");
    auto editor = stage.open(filled({8, 66000}), jpeg);
    addBox(editor->document());
    save(*editor);
    const QString png = stage.inLibrary("tall.png");
    EXPECT_EQ(stage.notices.last().text, "Saved as tall.png: JPG files can’t hold a picture of this size");
    EXPECT_EQ(ImageFiles::pixelSize(png), QSize(8, 66000));
    EXPECT_EQ(ImageFiles::pixelSize(jpeg), QSize(120, 80)) << "stays as it was";
    EXPECT_EQ(editor->document().fileURL().toLocalFile(), png);
    EXPECT_EQ(stage.open(png)->document().annotations().size(), 1);

    const QString heic = stage.home.path("elsewhere.heic");
    editor->saving().saveInto(heic);
    EXPECT_TRUE(waitForNotice("Saved as elsewhere.png: HEIC files can’t hold a picture of this size"));
    EXPECT_FALSE(QFileInfo::exists(heic));
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
