#include "app/delivery_stage.h"
#include "support/pictures.h"
#include "support/printers.h"

#include <QImageReader>
#include <QTest>
#include <gmock/gmock.h>

namespace {

class DeliveryTest : public testing::Test, protected DeliveryStage {
protected:
    DeliveryTest()
    {
        QObject::connect(&notices, &NoticeBoard::posted, &notices, [this](const Notice &notice) {
            shown.append(notice.text);
            told = notice;
            copiedWhenShown.append(machine.pasteboard.hasImage());
        });
        order.options.editor = false;
        order.options.clipboard = true;
    }
    bool waitUntilIdle()
    {
        return QTest::qWaitFor([this] { return pending.isIdle(); });
    }

    Delivery::Order order;
    // Presses the button of the last notice.
    void choose(const QString &text)
    {
        for (const NoticeAction &action : told.actions) {
            if (action.text == text)
                return action.call();
        }
        ADD_FAILURE() << "not offered: " << text.toStdString();
    }

    Notice told;
    QStringList shown;
    QList<bool> copiedWhenShown;
};

} // namespace

TEST_F(DeliveryTest, SaysThatItIsCopiedOnlyOnceItIs)
{
    delivery.deliverPicture(filled({400, 300}, Qt::red), order);
    EXPECT_FALSE(pending.isIdle());
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_EQ(shown, QStringList{"Captured & copied to clipboard"});
    EXPECT_EQ(copiedWhenShown, QList<bool>{true});
    EXPECT_EQ(library.items().size(), 1);
}

TEST_F(DeliveryTest, DropsACopyThatCameTooLateAndSaysOnlyThatItIsSaved)
{
    // Saved, but still being encoded for the clipboard, when the user copies something elsewhere.
    QObject::connect(&delivery, &Delivery::delivered, &delivery,
                     [this] { machine.pasteboard.setText("copied elsewhere"); });
    delivery.deliverPicture(filled({400, 300}, Qt::red), order);
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_EQ(machine.pasteboard.text(), "copied elsewhere");
    EXPECT_EQ(shown, QStringList{"Saved to Library"});
}

TEST_F(DeliveryTest, IsPendingUntilTheClipboardHasThePictureAlsoWhenTheEditorIsOpen)
{
    order.options.editor = true;
    bool wasPending = false;
    delivery.openEditor = [&](const DeliveredPicture &) { wasPending = !pending.isIdle(); };
    delivery.deliverPicture(filled({400, 300}, Qt::red), order);
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_TRUE(wasPending);
    EXPECT_TRUE(machine.pasteboard.hasImage());
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(DeliveryTest, OffersWhatCanFollowForTheFileAsItIsCalledByThen)
{
    DeliveredPicture opened;
    QSize pinned;
    delivery.openEditor = [&](const DeliveredPicture &picture) { opened = picture; };
    delivery.pin = [&](const QImage &image) { pinned = image.size(); };
    order.options.clipboard = false;
    delivery.deliverPicture(filled({400, 300}, Qt::red), order);
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_EQ(told.picture.size(), QSize(400, 300));
    EXPECT_TRUE(QFile::exists(told.file));

    const auto renamed = library.rename(told.file, "Invoice");
    ASSERT_TRUE(renamed);
    choose("Edit");
    EXPECT_EQ(opened.path, *renamed);
    choose("Pin");
    EXPECT_EQ(pinned, QSize(400, 300));
    const Notice offer = told;
    choose("Copy");
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_TRUE(machine.pasteboard.hasImage());
    EXPECT_EQ(shown.last(), "Image copied to clipboard");
    machine.trash.refuses = true;
    told = offer;
    choose("Trash");
    EXPECT_TRUE(QTest::qWaitFor([this] { return shown.last().contains("refuses"); }))
        << shown.last().toStdString();
    EXPECT_TRUE(QFile::exists(*renamed));
    machine.trash.refuses = false;
    told = offer;
    choose("Trash");
    EXPECT_TRUE(QTest::qWaitFor([this] { return shown.last() == "Moved to the Trash"; }));
    EXPECT_FALSE(QFile::exists(*renamed));
}

TEST_F(DeliveryTest, TellsOfAPictureThatItsFormatCannotHold)
{
    prefs.setImageFormat(ImageFormat::Jpg);
    order.options.clipboard = false;
    delivery.deliverPicture(filled({2, 70'000}, Qt::red), order);
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_EQ(shown,
              QStringList{"Saved to Library. Saved as PNG: JPG can’t hold a picture of 2 × 70000 pixels"});
    ASSERT_EQ(library.items().size(), 1);
    EXPECT_TRUE(library.items().first().endsWith(".png"));
    EXPECT_EQ(QImageReader(library.items().first()).size(), QSize(2, 70000));
}

TEST_F(DeliveryTest, DropsTextThatCameTooLate)
{
    QPromise<Result<QList<RecognizedLine>>> reading;
    reading.start();
    machine.text.pending = reading.future();
    delivery.deliverText(filled({200, 100}, Qt::white));
    machine.pasteboard.setText("newer");
    reading.addResult(QList<RecognizedLine>{{"read", QRectF(0, 0, 1, 1), {}, 1}});
    reading.finish();
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_EQ(machine.pasteboard.text(), "newer");
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(DeliveryTest, OpensAFilmOrTellsOfIt)
{
    library.ensureDirectory();
    const QString film = home.path("Shots/Recording.mov");
    ASSERT_TRUE(QFile(film).open(QIODevice::WriteOnly));
    order.source = "Terminal";
    delivery.deliverFilm(film, order);
    EXPECT_EQ(shown, QStringList{"Recording saved to Library"});
    EXPECT_EQ(library.catalog().meta().sources.value("Recording.mov"), "Terminal");
    QStringList opened;
    delivery.openVideoEditor = [&](const QString &path) { opened.append(path); };
    order.options.editor = true;
    delivery.deliverFilm(film, order);
    EXPECT_EQ(opened, QStringList{film});
    EXPECT_EQ(shown.size(), 1);
    delivery.deliverFilm(film, order, "There is no sound.");
    EXPECT_EQ(shown.last(), "There is no sound.");
}
