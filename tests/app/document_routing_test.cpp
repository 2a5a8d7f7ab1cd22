#include "app/delivery.h"
#include "app/document_routing.h"
#include "document/image_files.h"
#include "document/project_save.h"
#include "editor/canvas_view.h"
#include "editor/draft_offer.h"
#include "editor/editor_stage.h"
#include "pins/pins.h"
#include "support/printers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QThreadPool>
#include <gmock/gmock.h>

namespace {

class DocumentRoutingTest : public testing::Test {
protected:
    DocumentRoutingTest()
    {
        routing.openVideoEditor = [this](const QString &path) { films.append(QFileInfo(path).fileName()); };
    }
    static void write(const QString &path, QSize size = {60, 40})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        ASSERT_TRUE(ImageFiles::write(image, path));
    }
    static void writeBytes(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    bool waitForEditors(size_t count)
    {
        return QTest::qWaitFor([&] { return routing.editors().size() == count; });
    }
    EditorDocument &last() { return routing.editors().back()->document(); }

    EditorStage stage;
    DocumentRouting routing{stage.ports()};
    QStringList films;
};

} // namespace

TEST_F(DocumentRoutingTest, OpensAFileOfTheLibraryInPlaceAndAForeignOneAsACopy)
{
    const QString inside = stage.inLibrary("shot.png"), outside = stage.home.path("other.png");
    write(inside);
    write(outside);
    routing.openFile(inside);
    ASSERT_TRUE(waitForEditors(1));
    EXPECT_EQ(last().fileURL().toLocalFile(), inside);
    // The same folder, told differently.
    routing.openFile(stage.home.path("Shots/../Shots/shot.png"));
    routing.openFile(inside);
    routing.openFile(outside);
    ASSERT_TRUE(waitForEditors(2)) << "an open file has one window";
    EXPECT_TRUE(last().fileURL().isEmpty());
}

TEST_F(DocumentRoutingTest, SendsFilmsToTheirEditorAndAnimationsByTheWayTheyCome)
{
    writeBytes(stage.inLibrary("film.MOV"), "x");
    routing.openFile(stage.inLibrary("film.MOV"));
    routing.openLibraryItem(stage.inLibrary("film.MOV"));
    writeBytes(stage.inLibrary("film.mp4"), "x");
    routing.openLibraryItem(stage.inLibrary("film.mp4"));
    EXPECT_EQ(films, (QStringList{"film.MOV", "film.MOV", "film.mp4"}));
    writeBytes(stage.inLibrary("loop.gif"), "x");
    routing.openLibraryItem(stage.inLibrary("loop.gif"));
    EXPECT_EQ(stage.fakes.workspace.opened, QList<QUrl>{QUrl::fromLocalFile(stage.inLibrary("loop.gif"))});
    write(stage.inLibrary("still.png"));
    QFile::remove(stage.inLibrary("loop.gif"));
    ASSERT_TRUE(QFile::copy(stage.inLibrary("still.png"), stage.inLibrary("loop.gif")));
    routing.openFile(stage.inLibrary("loop.gif"));
    EXPECT_TRUE(waitForEditors(1)) << "opened as a picture";
}

TEST_F(DocumentRoutingTest, SaysWhichForeignFileItCannotOpen)
{
    writeBytes(stage.home.path("letter.txt"), "Dear reader");
    routing.openFile(stage.home.path("letter.txt"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !stage.notices.isEmpty(); }));
    EXPECT_EQ(stage.notices.last(), (Notice{"Couldn't open letter.txt", "exclamationmark.triangle.fill"}));
    EXPECT_TRUE(routing.editors().empty());
}

TEST_F(DocumentRoutingTest, OpensNothingForAFileOfTheLibraryThatItCannotRead)
{
    writeBytes(stage.inLibrary("broken.png"), "no picture");
    routing.openFile(stage.inLibrary("broken.png"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !stage.notices.isEmpty(); }));
    EXPECT_EQ(stage.notices.last().text, "broken.png can’t be read as a picture");
    EXPECT_TRUE(routing.editors().empty());
    routing.openFile(stage.inLibrary("broken.png"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return stage.notices.size() == 2; })) << "and says so every time";
}

TEST_F(DocumentRoutingTest, OffersWhatAnEarlierSessionLeftUnsaved)
{
    const QString folder = stage.ports().draftFolder;
    QImage image(60, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(Draft::write(Draft::newDirectory(folder), {image, {}, {}}, {{}, "Untitled Capture"}));
    routing.offerDrafts();
    const auto button = [](const char *name) -> QAbstractButton * {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (qobject_cast<DraftOffer *>(window) && window->isVisible())
                return window->findChild<QAbstractButton *>(name);
        }
        return nullptr;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return button("openUnfinished") != nullptr; }));
    button("openUnfinished")->click();
    ASSERT_TRUE(waitForEditors(1));
    EXPECT_EQ(last().base().size(), QSize(60, 40));
    routing.offerDrafts();
    ASSERT_TRUE(QTest::qWaitFor([&] { return button("discardUnfinished") != nullptr; }));
    button("discardUnfinished")->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Draft::list(folder).isEmpty(); }));
}

TEST_F(DocumentRoutingTest, ADeliveredCaptureOpensWithItsBackdrop)
{
    QImage image(60, 40, QImage::Format_RGB32);
    routing.openEditor(DeliveredPicture{image, stage.inLibrary("shot.png"), true});
    EXPECT_TRUE(last().effects().backdrop);
    EXPECT_FALSE(last().hasUnsavedChanges()) << "nothing that the user made";
    EXPECT_EQ(last().fileURL().toLocalFile(), stage.inLibrary("shot.png"));
}

TEST_F(DocumentRoutingTest, KeepsEditorsUntilTheirWindowsClose)
{
    routing.openEditor(std::make_unique<EditorDocument>(QImage(60, 40, QImage::Format_RGB32)));
    routing.openEditor(std::make_unique<EditorDocument>(QImage(60, 40, QImage::Format_RGB32)));
    routing.editors().front()->window().close();
    EXPECT_TRUE(waitForEditors(1));
    routing.editors().front()->window().close();
    EXPECT_TRUE(waitForEditors(0));

    write(stage.inLibrary("shot.png"));
    for (int time = 0; time < 2; ++time) {
        routing.openFile(stage.inLibrary("shot.png"));
        ASSERT_TRUE(waitForEditors(1)) << "opened " << time << " times before";
        routing.editors().front()->window().close();
        ASSERT_TRUE(waitForEditors(0));
    }
}

TEST_F(DocumentRoutingTest, TellsWhenObjectsWereOfAnotherPicture)
{
    const QString path = stage.inLibrary("shot.png");
    write(path);
    write(stage.inLibrary("next.png"));
    QImage base(60, 40, QImage::Format_RGB32);
    base.fill(Qt::red);
    ASSERT_TRUE(ProjectSave::write(path, base, stage.library.projectDirectory(path), base,
                                   ProjectFile::describing({}, {})));
    write(path);
    routing.openFile(path);
    ASSERT_TRUE(waitForEditors(1));
    routing.openFile(path); // again, and before the first is there
    routing.openFile(stage.inLibrary("next.png"));
    routing.openFile(stage.inLibrary("next.png"));
    QThreadPool::globalInstance()->waitForDone();
    ASSERT_TRUE(waitForEditors(2));
    QCoreApplication::processEvents();
    EXPECT_EQ(routing.editors().size(), 2u);
    ASSERT_EQ(stage.notices.size(), 1);
    EXPECT_EQ(stage.notices.last().text,
              "shot.png was changed elsewhere, so its earlier objects were set aside");
}

TEST_F(DocumentRoutingTest, PinsTheNewestPictureAndSkipsFilms)
{
    routing.pinLastCapture();
    EXPECT_EQ(stage.notices.last(), (Notice{"No captures to pin yet", "pin.slash"}));
    writeBytes(stage.inLibrary("film.mov"), "x");
    routing.pinLastCapture();
    EXPECT_EQ(stage.notices.size(), 2);

    write(stage.inLibrary("shot.png"), {64, 32});
    QFile film(stage.inLibrary("film.mov"));
    ASSERT_TRUE(film.open(QIODevice::ReadWrite));
    film.setFileTime(QDateTime::currentDateTime().addSecs(60), QFile::FileModificationTime);
    routing.pinLastCapture();
    ASSERT_TRUE(QTest::qWaitFor([&] { return stage.pins.windows().size() == 1; }));
    EXPECT_EQ(stage.pins.windows().front()->image().size(), QSize(64, 32));

    stage.pins.openEditor(stage.pins.windows().front()->image());
    EXPECT_EQ(routing.editors().size(), 1u);
    EXPECT_TRUE(last().fileURL().isEmpty());
}
