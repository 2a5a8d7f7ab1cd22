#include "editor/object_clipboard.h"

#include "document/editor_document.h"
#include "document/image_files.h"
#include "fakes/fake_desktop.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QTest>
#include <QUrl>
#include <gmock/gmock.h>

namespace {

Annotation box(QPointF start, QPointF end)
{
    Annotation a;
    a.id = QUuid::createUuid();
    a.kind = ToolKind::Rectangle;
    a.start = start;
    a.end = end;
    a.style = 2;
    a.color = Qt::blue;
    a.lineWidth = 2;
    return a;
}

class ObjectClipboardTest : public testing::Test {
protected:
    // With the picture, which follows.
    void copy(const EditorDocument &document)
    {
        const auto ended = ObjectClipboard::copy(document, pasteboard, &owner);
        EXPECT_TRUE(QTest::qWaitFor([&] { return ended.isFinished(); }));
    }

    FakePasteboard pasteboard;
    QObject owner;
};

} // namespace

TEST_F(ObjectClipboardTest, PastesObjectsInACascadeUntilAnotherProgramCopies)
{
    EditorDocument document(filled({400, 300}));
    copy(document); // nothing selected, nothing copied
    EXPECT_FALSE(pasteboard.has(ObjectClipboard::kMarker));
    document.add(box({20, 20}, {60, 50}));
    copy(document);
    EXPECT_TRUE(pasteboard.has(ObjectClipboard::kMarker));
    EXPECT_TRUE(pasteboard.data(ObjectClipboard::kMarker).isEmpty());
    const QImage copied = pasteboard.image();
    ASSERT_EQ(copied.size(), QSize(42, 32));
    EXPECT_GT(qBlue(copied.pixel(21, 16)), 240);
    EXPECT_LT(qRed(copied.pixel(21, 16)), 20);

    ObjectClipboard::paste(document, pasteboard);
    ObjectClipboard::paste(document, pasteboard);
    ASSERT_EQ(document.annotations().size(), 3);
    EXPECT_EQ(document.annotations()[1].start, QPointF(44, 44));
    EXPECT_EQ(document.annotations()[2].start, QPointF(68, 68));
    EXPECT_EQ(document.selectedID(), document.annotations()[2].id);
    EXPECT_NE(document.annotations()[1].id, document.annotations()[0].id);
    EditorDocument other(filled({400, 300}));
    ObjectClipboard::paste(other, pasteboard, QPointF(200, 100));
    ASSERT_EQ(other.annotations().size(), 1);
    EXPECT_EQ(other.annotations()[0].bounds().center(), QPointF(200, 100));
    other.undo();
    EXPECT_TRUE(other.annotations().isEmpty());

    QByteArray png = ImageFiles::encode(filled({1000, 200}, Qt::red), ImageFiles::Type::Png);
    pasteboard.setFlavors({{"image/png", png}});
    other.setTool(ToolKind::Arrow);
    ObjectClipboard::paste(other, pasteboard);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !other.annotations().isEmpty(); }));
    ASSERT_EQ(other.annotations().size(), 1);
    EXPECT_EQ(other.annotations()[0].kind, ToolKind::Image);
    EXPECT_EQ(other.annotations()[0].rect(),
              QRectF(80, 126, 240, 48)); // at most 60% of the width, in the middle
    EXPECT_EQ(other.tool(), ToolKind::Select);
    pasteboard.setText("words");
    ObjectClipboard::paste(other, pasteboard);
    EXPECT_EQ(other.annotations().size(), 1);
}

TEST_F(ObjectClipboardTest, CanBePastedBeforeItsPictureIsThere)
{
    EditorDocument document(filled({400, 300}));
    document.add(box({20, 20}, {60, 50}));
    const auto ended = ObjectClipboard::copy(document, pasteboard, &owner);
    ObjectClipboard::paste(document, pasteboard);
    EXPECT_EQ(document.annotations().size(), 2);
    // A picture that comes late never takes the place of what was copied meanwhile.
    pasteboard.setText("newer");
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended.isFinished(); }));
    EXPECT_EQ(pasteboard.text(), "newer");
}

TEST_F(ObjectClipboardTest, PastesThePictureOfACopiedFile)
{
    const TemporaryFolder folder;
    EditorDocument document(filled({400, 300}));
    const QString picture = folder.path("copied.jpg"), letter = folder.path("letter.txt");
    ASSERT_TRUE(ImageFiles::write(filled({80, 40}, Qt::red), picture));
    pasteboard.setFile(QUrl::fromLocalFile(letter));
    EXPECT_FALSE(ObjectClipboard::canPaste(pasteboard));
    pasteboard.setFile(QUrl::fromLocalFile(picture));
    EXPECT_TRUE(ObjectClipboard::canPaste(pasteboard));
    ObjectClipboard::paste(document, pasteboard);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !document.annotations().isEmpty(); }));
    EXPECT_EQ(document.annotations().first().image.size(), QSize(80, 40));
}
