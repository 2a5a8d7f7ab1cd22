#include "document/image_files.h"
#include "editor/canvas_view.h"
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
        std::unique_ptr<QMenu> menu(editor->canvas().makeContextMenu());
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
    EXPECT_TRUE(objects().isEmpty());
    QImage huge = filled({9000, 3000}, Qt::red);
    stage.fakes.pasteboard.setFlavors({{"image/png", ImageFiles::encode(huge, ImageFiles::Type::Png)}});
    editor->run(EditorCommand::Paste);
    ASSERT_EQ(objects().size(), 1);
    EXPECT_LE(objects().first().rect().width(), 240) << "at most 60 percent of the picture";
}

TEST_F(CanvasViewTest, ItsMenuOffersWhatCanBeDone)
{
    EXPECT_EQ(menuTitles(), (QStringList{"Paste (off)", "Pick Color from Image"}));
    EditorDocument &document = editor->document();
    document.add(document.makeAnnotation(ToolKind::Step, {50, 50}));
    stage.fakes.pasteboard.setFlavors({{EditorDocument::objectPasteboardType, {}}});
    EXPECT_EQ(menuTitles(),
              (QStringList{"Cut", "Copy", "Paste", "Duplicate", "Bring to Front", "Send to Back", "Delete"}));
    Annotation text = document.makeAnnotation(ToolKind::Text, {50, 100});
    text.text = "Hello";
    document.add(text);
    EXPECT_EQ(menuTitles().first(), "Edit Text");
}

TEST_F(CanvasViewTest, SpeaksOfWhatItShows)
{
    EXPECT_EQ(editor->canvas().accessibleLabel(), "Capture, 400 by 300 pixels, 0 objects");
    editor->document().add(editor->document().makeAnnotation(ToolKind::Step, {50, 50}));
    EXPECT_EQ(editor->canvas().accessibleLabel(),
              "Capture, 400 by 300 pixels, 1 object. Tab moves between objects.");
}
