#include "document/pixelation.h"
#include "services/text_recognizer.h"

#include "base/async.h"
#include "fakes/fake_recognition.h"
#include "services/grab_text.h"
#include "services/redacted_areas.h"

#include <gtest/gtest.h>

namespace {

// A line of equally wide characters across the whole picture.
RecognizedLine line(const QString &text, double bottom)
{
    RecognizedLine line{text, QRectF(0, bottom, 1, 0.1), {}, 1};
    for (qsizetype i = 0; i < text.size(); ++i)
        line.characters.append(
            text[i] == ' ' ? QRectF()
                           : QRectF(double(i) / double(text.size()), bottom, 1.0 / double(text.size()), 0.1));
    return line;
}

} // namespace

class Recognizing : public testing::Test {
protected:
    FakeTextEngine text;
    FakeFaceEngine faces;
    TextRecognizer recognizer{text, faces, {"de_DE"}};
    QImage picture{1000, 500, QImage::Format_RGB32};

    void SetUp() override { picture.fill(Qt::white); }
};

TEST_F(Recognizing, JoinsLinesInTheirOrderAndAsksForTheUsersLanguage)
{
    text.answer = QList{line("second", 0.2), line("first", 0.8)};
    EXPECT_EQ(recognizer.text(picture).result().value(), "second\nfirst");
    EXPECT_EQ(text.asked, QStringList{"de_DE"});
    text.answer = QList<RecognizedLine>();
    EXPECT_EQ(recognizer.text(picture).result().value(), "");
}

TEST_F(Recognizing, ReadsWhatStandsOnNothingOnAGround)
{
    struct : TextEngine {
        QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image, const TextLanguages &) override
        {
            seen = image;
            return readyFuture(Result<QList<RecognizedLine>>());
        }
        QImage seen;
    } engine;
    TextRecognizer reading(engine, faces, {});
    for (const QColor &ink :
         {QColor(Qt::black), QColor(60, 60, 60), QColor(195, 195, 195), QColor(Qt::white)}) {
        QImage letters(40, 20, QImage::Format_ARGB32_Premultiplied);
        letters.fill(Qt::transparent);
        letters.setPixelColor(10, 10, ink);
        ASSERT_TRUE(reading.lines(letters).result());
        EXPECT_FALSE(engine.seen.hasAlphaChannel());
        EXPECT_EQ(engine.seen.pixelColor(10, 10), ink);
        EXPECT_GT(std::abs(engine.seen.pixelColor(1, 1).lightness() - ink.lightness()), 190);
    }
}

TEST_F(Recognizing, CoversThePrivateStretchAloneWithAMarginOfPixels)
{
    // The line under it is so near that the margin would reach into it.
    text.answer = QList{line("to a@bcd.ef ok", 0.5), line("nothing here", 0.395)};
    const auto boxes = recognizer.boxes(picture, TextRecognizer::Boxes::Sensitive).result().value();
    ASSERT_EQ(boxes.size(), 1);
    // The line is 50 pixels high; what hides it is a tenth higher on each side, and 4 pixels wider.
    EXPECT_NEAR(boxes[0].left(), 3.0 / 14 - 0.05 / 12, 1e-9);
    EXPECT_NEAR(boxes[0].right(), 11.0 / 14 + 0.05 / 12, 1e-9);
    EXPECT_NEAR(boxes[0].bottom(), 0.61, 1e-9);
    EXPECT_NEAR(boxes[0].top(), 0.495, 1e-9);
    EXPECT_EQ(recognizer.boxes(picture, TextRecognizer::Boxes::AllText).result().value().size(), 2);
    text.answer = QList{line("to a@bcd.ef ok", 0.5), line("nothing here", 0.605)};
    EXPECT_NEAR(recognizer.boxes(picture, TextRecognizer::Boxes::Sensitive).result().value()[0].bottom(),
                0.605, 1e-9)
        << "nor into the one above";
}

TEST_F(Recognizing, GrowsFacesByATenthAndLeavesThemUnclipped)
{
    faces.answer = QList{QRectF(0, 0.4, 0.2, 0.3)};
    const auto boxes = recognizer.faces(picture).result().value();
    EXPECT_NEAR(boxes[0].left(), -0.02, 1e-9);
    EXPECT_NEAR(boxes[0].width(), 0.24, 1e-9);
    EXPECT_NEAR(boxes[0].height(), 0.36, 1e-9);
}

TEST_F(Recognizing, PassesFailuresOn)
{
    text.answer = fail(Error::Kind::Unavailable, "no data");
    EXPECT_EQ(recognizer.text(picture).result().error().message, "no data");
    EXPECT_EQ(Redaction::find(recognizer, picture, Redaction::Mode::AllText).result().error().kind,
              Error::Kind::Unavailable);
}

TEST_F(Recognizing, FlipsAndGrowsRectanglesForHiding)
{
    faces.answer = QList{QRectF(0, 0.9, 0.1, 0.1)};
    const auto rects = Redaction::find(recognizer, picture, Redaction::Mode::Faces).result().value();
    ASSERT_EQ(rects.size(), 1);
    // A face in the top left corner: 100×50 pixels, grown by a tenth on each side and by 4 and 3 pixels.
    EXPECT_NEAR(rects[0].left(), -14, 1e-6);
    EXPECT_NEAR(rects[0].top(), -8, 1e-6);
    EXPECT_NEAR(rects[0].right(), 114, 1e-6);
    EXPECT_NEAR(rects[0].bottom(), 58, 1e-6);
    EXPECT_EQ(pixelatedPixels(rects[0], picture.size()), QRect(0, 0, 114, 58));
}

TEST_F(Recognizing, HidesWhatStandsInTheRectanglesAndNothingElse)
{
    // Single dark pixels in every tenth column: none may survive where it is hidden.
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); x += 10)
            picture.setPixel(x, y, 0xff000000);
    const QRect hidden(200, 100, 300, 40);
    const QImage result = Redaction::hidden(picture, {QRectF(hidden)});
    ASSERT_EQ(result.size(), picture.size());
    int darkest = 255;
    for (int y = hidden.top(); y <= hidden.bottom(); ++y)
        for (int x = hidden.left(); x <= hidden.right(); ++x)
            darkest = std::min(darkest, qGray(result.pixel(x, y)));
    EXPECT_GT(darkest, 100);
    EXPECT_EQ(qGray(result.pixel(100, 100)), 0);
    EXPECT_EQ(qGray(result.pixel(hidden.left() - 5, 110)), 255);
}

TEST(GrabbedText, CountsLinesThatHoldSomething)
{
    EXPECT_EQ(GrabbedText("one\n\ntwo").notice, (Notice{"Copied 2 lines of text", "text.viewfinder"}));
    EXPECT_EQ(GrabbedText("one").notice.text, "Copied 1 lines of text");
    EXPECT_EQ(GrabbedText("").notice, (Notice{"No text found", "text.magnifyingglass"}));
}
