#include "document/draft.h"
#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor_stage.h"
#include "library/library_versions.h"
#include "support/pictures.h"
#include "support/printers.h"

#include <QAbstractButton>
#include <QDir>
#include <QTest>
#include <gmock/gmock.h>

namespace {

class DraftsTest : public testing::Test {
protected:
    QString put(const QString &name, const QColor &color = Qt::white)
    {
        const QString path = stage.inLibrary(name);
        EXPECT_TRUE(ImageFiles::write(filled({120, 80}, color), path));
        return path;
    }
    static void addBox(EditorDocument &document)
    {
        Annotation box = document.makeAnnotation(ToolKind::Rectangle, {10, 10});
        box.end = {60, 60};
        document.add(box);
    }
    QString draftOf(const QString &path) const
    {
        return Draft::directoryOf(path, stage.library.projectDirectory(path));
    }
    // Edited and let go of, as by a crash: nothing is closed or saved in order.
    void editAndCrash(const QString &path)
    {
        auto editor = stage.open(path);
        addBox(editor->document());
        ASSERT_TRUE(QTest::qWaitFor([&] { return Draft::exists(draftOf(path)); })) << "by itself, in time";
        DraftKeeper::finishAll();
        lost.push_back(std::move(editor));
    }

    EditorStage stage;
    std::vector<std::unique_ptr<EditorWindowController>> lost;
};

} // namespace

TEST_F(DraftsTest, UnsavedEditsComeBackAndCanBeDiscarded)
{
    const QString path = put("shot.png");
    editAndCrash(path);
    EXPECT_EQ(lost.back()->window().windowTitle(), "shot *");
    EXPECT_EQ(ImageFiles::read(path)->pixelColor(10, 30), QColor(Qt::white)) << "the file is as it was";

    auto editor = stage.open(path);
    EXPECT_EQ(editor->document().annotations().size(), 1);
    EXPECT_TRUE(editor->document().hasUnsavedChanges());
    auto *discard = editor->window().findChild<QAbstractButton *>("discardDraft");
    ASSERT_NE(discard, nullptr);
    discard->click();
    EXPECT_TRUE(editor->document().annotations().isEmpty());
    EXPECT_EQ(editor->window().windowTitle(), "shot");
    EXPECT_TRUE(editor->document().canUndo()) << "a slip of the hand is no loss";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Draft::exists(draftOf(path)); }));
}

TEST_F(DraftsTest, SavingEndsTheDraft)
{
    const QString path = put("shot.png");
    editAndCrash(path);
    lost.clear();
    auto editor = stage.open(path);
    editor->saving().save();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !editor->document().hasUnsavedChanges(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Draft::exists(draftOf(path)); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !editor->window().findChild<QWidget *>("draftBar"); }));
    auto again = stage.open(path);
    EXPECT_EQ(again->document().annotations().size(), 1);
    EXPECT_FALSE(again->document().isFromDraft());
    // What is edited from there on is of the file as it was saved.
    addBox(editor->document());
    editor.reset();
    DraftKeeper::finishAll();
    auto later = stage.open(path);
    EXPECT_EQ(later->document().annotations().size(), 2);
    EXPECT_FALSE(later->document().hasSetDraftAside());
    const auto version = FileHistory(stage.library, path).versions().value(0);
    EXPECT_FALSE(Draft::exists(Draft::directoryOf(path, version.folder + "/project")))
        << "what nobody has saved is of no version";
}

TEST_F(DraftsTest, AnotherPictureOfThatNameNeverGetsThem)
{
    const QString path = put("shot.png");
    editAndCrash(path);
    put("shot.png", Qt::black);
    auto editor = stage.open(path);
    EXPECT_TRUE(editor->document().annotations().isEmpty());
    EXPECT_EQ(editor->document().base().pixelColor(5, 5), QColor(Qt::black));
    ASSERT_EQ(stage.notices.size(), 1);
    EXPECT_FALSE(Draft::exists(draftOf(path)));
    const QFileInfo info(draftOf(path));
    EXPECT_EQ(info.dir().entryList({info.fileName() + ".aside-*"}).size(), 1) << "and they aren't lost";
}

TEST_F(DraftsTest, ClosingKeepsWhatIsBeingTypedAndNeverAsks)
{
    const QString path = put("shot.png");
    auto editor = stage.open(path);
    editor->show();
    editor->document().chooseTool(ToolKind::Text);
    const QPoint at = editor->canvas().interaction().viewport().toView(QPointF(20, 20)).toPoint();
    QTest::mouseClick(&editor->canvas(), Qt::LeftButton, {}, at);
    QTest::keyClicks(editor->canvas().findChild<QWidget *>("inlineText"), "Note");
    editor->window().close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return stage.pending.isIdle(); }));
    auto again = stage.open(path);
    ASSERT_EQ(again->document().annotations().size(), 1);
    EXPECT_EQ(again->document().annotations().first().text, "Note");
}

TEST_F(DraftsTest, APictureWithoutAFileWaitsForTheNextStart)
{
    const QString folder = stage.ports().draftFolder;
    {
        auto untouched = stage.open(filled({120, 80}));
        auto editor = stage.open(filled({120, 80}, Qt::yellow));
        addBox(editor->document());
        editor->document().applyCrop({0, 0, 100, 70});
    }
    DraftKeeper::finishAll();
    const auto waiting = Draft::list(folder);
    ASSERT_EQ(waiting.size(), 1) << "what nobody changed needs no draft";
    EXPECT_EQ(waiting.first().title, "Untitled Capture");
    const auto source = Draft::open(waiting.first());
    ASSERT_TRUE(source);
    auto editor =
        std::make_unique<EditorWindowController>(std::make_unique<EditorDocument>(*source), stage.ports());
    EXPECT_EQ(editor->document().base().size(), QSize(100, 70));
    EXPECT_EQ(editor->document().annotations().size(), 1);
    EXPECT_TRUE(editor->document().hasUnsavedChanges());

    const QString copy = stage.home.path("kept.png");
    editor->saving().saveInto(copy);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Draft::list(folder).isEmpty(); }))
        << "safe in a file of its own";
}

TEST_F(DraftsTest, AHalfWrittenStateIsPassedOver)
{
    const QString directory = stage.home.path("draft");
    const EditorDocument::Contents first{filled({20, 20}, Qt::red), {}, {}};
    ASSERT_TRUE(Draft::write(directory, first, {"digest", "A"}));
    QDir(directory).mkpath("2.part");
    QDir(directory).mkpath("3");
    ASSERT_TRUE(Draft::read(directory, "digest"));
    EXPECT_EQ(Draft::read(directory, "digest")->base.pixelColor(1, 1), QColor(Qt::red));
    EXPECT_FALSE(Draft::read(directory, "other"));
    EXPECT_EQ(QFile::permissions(directory) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions())
        << "nobody else's to see";
    // The pixels of the state before serve again, also when that state is gone.
    EditorDocument::Contents second = first;
    second.effects.border = true;
    ASSERT_TRUE(Draft::write(directory, second, {"digest", "A"}, true));
    EXPECT_TRUE(Draft::read(directory, "digest")->effects.border);
    EXPECT_EQ(QDir(directory).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
}

TEST_F(DraftsTest, ASaveThatEndsAfterItsWindowEndsTheDraftToo)
{
    for (const bool isEditedLater : {false, true}) {
        const QString path = put("shot.png");
        auto editor = stage.open(path);
        addBox(editor->document());
        editor->saving().save();
        if (isEditedLater)
            addBox(editor->document());
        editor->window().close();
        editor.reset();
        EXPECT_TRUE(QTest::qWaitFor([&] { return stage.pending.isIdle(); }));
        DraftKeeper::finishAll();
        EXPECT_EQ(Draft::exists(draftOf(path)), isEditedLater);
        auto again = stage.open(path);
        EXPECT_EQ(again->document().annotations().size(), isEditedLater ? 2 : 1);
        EXPECT_FALSE(again->document().hasSetDraftAside()) << "the edits are of this very file";
        EXPECT_EQ(again->document().isFromDraft(), isEditedLater);
        again->document().setSaved(again->document().contents());
        DraftKeeper::finishAll();
        ASSERT_TRUE(stage.library.remove(path));
    }
}
