#include "editor_window_fixture.h"

#include "library/library_versions.h"
#include "support/printers.h"

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
