#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor/editor_view.h"
#include "editor/object_clipboard.h"
#include "editor/texts.h"
#include "editor_stage.h"
#include "support/pictures.h"
#include "support/printers.h"

#include <QBuffer>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <gmock/gmock.h>

namespace {

class CanvasViewTest : public testing::Test {
protected:
    CanvasViewTest()
    {
        QImage image = filled({400, 300});
        editor = stage.open(image);
        editor->show();
    }
    bool drop(const QMimeData &data)
    {
        CanvasView &canvas = editor->canvas();
        QDragEnterEvent enter({200, 150}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setAccepted(false);
        QCoreApplication::sendEvent(&canvas, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(canvas.interaction().viewport().toView(QPointF(200, 150)), Qt::CopyAction, &data,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&canvas, &event);
        return true;
    }
    QStringList menuTitles()
    {
        std::unique_ptr<QMenu> menu(static_cast<EditorView &>(editor->window()).makeObjectMenu());
        QStringList titles;
        for (QAction *action : menu->actions()) {
            if (!action->isSeparator())
                titles.append(action->text().section('\t', 0, 0) + (action->isEnabled() ? "" : " (off)"));
        }
        return titles;
    }
    const QList<Annotation> &objects() const { return editor->document().annotations(); }

    EditorStage stage;
    std::unique_ptr<EditorWindowController> editor;
};

} // namespace

TEST_F(CanvasViewTest, TakesDroppedPicturesAndRefusesTheRest)
{
    QImage picture = filled({40, 20}, Qt::blue);
    QMimeData pixels;
    pixels.setImageData(picture);
    EXPECT_TRUE(drop(pixels));
    ASSERT_EQ(objects().size(), 1);
    EXPECT_EQ(objects().first().rect().center(), QPointF(200, 150));
    EXPECT_EQ(editor->document().tool(), ToolKind::Select);

    const QString file = stage.home.path("dropped.jpg");
    ASSERT_TRUE(ImageFiles::write(picture, file));
    QMimeData url;
    url.setUrls({QUrl::fromLocalFile(file)});
    EXPECT_TRUE(drop(url));
    EXPECT_TRUE(QTest::qWaitFor([&] { return objects().size() == 2; }));

    QFile text(stage.home.path("letter.txt"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("Dear reader");
    text.close();
    QMimeData letter;
    letter.setUrls({QUrl::fromLocalFile(text.fileName())});
    EXPECT_FALSE(drop(letter));
    QMimeData words;
    words.setText("Dear reader");
    EXPECT_FALSE(drop(words));

    // One that begins like a picture and then breaks off.
    QFile broken(stage.home.path("broken.png"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write(ImageFiles::encode(picture, ImageFiles::Type::Png).left(60));
    broken.close();
    QMimeData half;
    half.setUrls({QUrl::fromLocalFile(broken.fileName())});
    drop(half);
    EXPECT_FALSE(QTest::qWaitFor([&] { return objects().size() > 2; }, 200));
}

TEST_F(CanvasViewTest, PastesWhatCanBeReadAndIgnoresTheRest)
{
    stage.fakes.pasteboard.setFlavors({{"image/png", "not a picture"}});
    editor->run(EditorCommand::Paste);
    QImage huge = filled({9000, 3000}, Qt::red);
    stage.fakes.pasteboard.setFlavors({{"image/png", ImageFiles::encode(huge, ImageFiles::Type::Png)}});
    editor->run(EditorCommand::Paste);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !objects().isEmpty(); }));
    ASSERT_EQ(objects().size(), 1);
    EXPECT_LE(objects().first().rect().width(), 240) << "at most 60 percent of the picture";
}

TEST_F(CanvasViewTest, ItsMenuOffersWhatCanBeDone)
{
    EXPECT_EQ(menuTitles(), (QStringList{"Paste (off)", "Pick Color from Image"}));
    EditorDocument &document = editor->document();
    document.add(document.makeAnnotation(ToolKind::Step, {50, 50}));
    stage.fakes.pasteboard.setFlavors({{ObjectClipboard::kMarker, {}}});
    EXPECT_EQ(menuTitles(),
              (QStringList{"Cut", "Copy", "Paste", "Duplicate", "Bring to Front", "Send to Back", "Delete"}));
    Annotation text = document.makeAnnotation(ToolKind::Text, {50, 100});
    text.text = "Hello";
    document.add(text);
    EXPECT_EQ(menuTitles().first(), "Edit Text");
}

TEST_F(CanvasViewTest, SpeaksOfWhatItShows)
{
    EXPECT_EQ(editor->canvas().accessibleLabel(),
              EditorTexts::tr("Capture, %1 by %2 pixels, %n object(s)", nullptr, 0).arg(400).arg(300));
    editor->document().add(editor->document().makeAnnotation(ToolKind::Step, {50, 50}));
    EXPECT_EQ(editor->canvas().accessibleLabel(),
              EditorTexts::tr("Capture, %1 by %2 pixels, %n object(s)", nullptr, 1).arg(400).arg(300) +
                  ". Tab moves between objects.");
}

TEST_F(CanvasViewTest, BareKeysOfTheTableBelongToTheCanvas)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor->window()));
    editor->document().add(editor->document().makeAnnotation(ToolKind::Step, {50, 50}));
    editor->document().add(editor->document().makeAnnotation(ToolKind::Step, {90, 50}));
    QTest::keyClick(&editor->canvas(), Qt::Key_Backspace);
    EXPECT_EQ(objects().size(), 1);
    QTest::keyClick(&editor->canvas(), Qt::Key_Tab);
    QTest::keyClick(&editor->canvas(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(objects().size(), 2);
    QTest::keyClick(&editor->canvas(), Qt::Key_Delete);
    EXPECT_EQ(objects().size(), 1);
}

TEST_F(CanvasViewTest, TheMosaicIsMadeOnAWorkerAndHidesUntilThen)
{
    EditorDocument &document = editor->document();
    Annotation blur = document.makeAnnotation(ToolKind::Blur, {100, 100});
    blur.end = {200, 200};
    document.add(blur);
    EXPECT_TRUE(document.readyPixelated().isNull()) << "not while the user waits";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !document.readyPixelated().isNull(); }));
    QImage other = filled({300, 200}, Qt::green);
    document.setBase(other);
    EXPECT_TRUE(QTest::qWaitFor([&] { return document.readyPixelated().size() == QSize(300, 200); }));
}

TEST_F(CanvasViewTest, ATallPictureStartsAtItsTopAsWideAsTheWindow)
{
    const auto tall = stage.open(filled({600, 9000}));
    tall->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&tall->window()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return tall->session().zoom().has_value(); }));
    const CanvasViewport view = tall->canvas().interaction().viewport();
    EXPECT_NEAR(view.toView(QPointF(0, 0)).y(), 28, 1);
    EXPECT_DOUBLE_EQ(view.displayZoom(), 1);
}
