#include "fakes/fake_recognition.h"
#include "platform/session/recognition_loader.h"

#include <QBuffer>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

// A photograph of one person, from a package that the tests need: 512×600, brows to chin as told.
const QString Photo = "/usr/share/matplotlib/mpl-data/sample_data/grace_hopper.jpg";
constexpr QRectF FaceInPhoto(165, 160, 185, 185);

// A window with text, and the photograph in it as often as places are given.
struct Page {
    QImage image;
    QList<QRectF> faces; // pixels
};

QImage textPage(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(246, 247, 249));
    QPainter painter(&image);
    painter.setPen(QColor(40, 44, 52));
    for (int y = 30; y < size.height(); y += 22)
        painter.drawText(QPoint(20, y), "The quiet harbour lay under a thin mist while boats came in, " +
                                            QString::number(y));
    return image;
}

Page pageWith(const QImage &photo, const QList<QRect> &places, QSize size = QSize(1280, 800))
{
    Page page{textPage(size), {}};
    QPainter painter(&page.image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const QRect &place : places) {
        painter.drawImage(place, photo.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        const double scale = double(place.width()) / photo.width();
        page.faces.append(
            QRectF(place.topLeft() + FaceInPhoto.topLeft() * scale, FaceInPhoto.size() * scale));
    }
    return page;
}

QRectF normalized(const QRectF &pixels, QSize size)
{
    return {pixels.x() / size.width(), 1 - pixels.bottom() / size.height(), pixels.width() / size.width(),
            pixels.height() / size.height()};
}

double shared(const QRectF &a, const QRectF &b)
{
    const QRectF both = a & b;
    const double area = both.width() * both.height();
    return area / (a.width() * a.height() + b.width() * b.height() - area);
}

void expectTheseFaces(FaceEngine &engine, const Page &page, const char *what)
{
    SCOPED_TRACE(what);
    const auto found = engine.detect(page.image).result();
    ASSERT_TRUE(found) << found.error().message.toStdString();
    EXPECT_EQ(found->size(), page.faces.size());
    for (const QRectF &face : page.faces)
        EXPECT_TRUE(std::ranges::any_of(
            *found,
            [&](const QRectF &box) { return shared(box, normalized(face, page.image.size())) > 0.4; }))
            << face.x() << ", " << face.y() << ", " << face.width() << " pixels";
}

} // namespace

// What every face engine keeps to, the stand-in as well as the machine's.
class FaceEngineContract : public testing::TestWithParam<bool> {
protected:
    std::unique_ptr<FaceEngine> engine(const QList<QRectF> &scripted = {})
    {
        if (GetParam())
            return makeFaceEngine();
        auto fake = std::make_unique<FakeFaceEngine>();
        fake->answer = scripted;
        return fake;
    }
};

INSTANTIATE_TEST_SUITE_P(FakeAndReal, FaceEngineContract, testing::Bool());

TEST_P(FaceEngineContract, GivesFractionsOfThePictureFromItsLowerLeft)
{
    const Page page = pageWith(QImage(Photo), {QRect(900, 40, 256, 300)});
    expectTheseFaces(*engine({normalized(page.faces[0], page.image.size())}), page, "upper right");
}

TEST_P(FaceEngineContract, FindsNothingInPicturesThatHoldNothing)
{
    QImage dot(1, 1, QImage::Format_RGB32);
    dot.fill(Qt::red);
    QImage line(3000, 1, QImage::Format_Grayscale8);
    line.fill(40);
    for (const QImage &image : {QImage(), dot, line, textPage(QSize(400, 300))}) {
        const auto faces = engine()->detect(image).result();
        ASSERT_TRUE(faces) << faces.error().message.toStdString();
        EXPECT_TRUE(faces->isEmpty());
    }
}

TEST_P(FaceEngineContract, TakesSeveralPicturesAtOnce)
{
    const Page page = pageWith(QImage(Photo), {QRect(40, 400, 256, 300)});
    const auto several = engine({normalized(page.faces[0], page.image.size())});
    QList<QFuture<Result<QList<QRectF>>>> futures;
    for (int i = 0; i < 4; ++i)
        futures.append(several->detect(page.image));
    for (auto &future : futures) {
        ASSERT_TRUE(future.result());
        EXPECT_EQ(future.result()->size(), 1);
        EXPECT_EQ(*future.result(), *futures.first().result());
    }
}

TEST(BlazeFace, FindsFacesFromAvatarsToPicturesThatTheyFill)
{
    const auto engine = makeFaceEngine();
    const QImage photo(Photo);
    ASSERT_FALSE(photo.isNull());
    expectTheseFaces(*engine,
                     pageWith(photo, {QRect(20, 20, 110, 129), QRect(700, 30, 160, 187),
                                      QRect(300, 250, 300, 351), QRect(1000, 500, 220, 258)}),
                     "a page with four");
    expectTheseFaces(*engine, {photo, {FaceInPhoto}}, "the photograph alone");
    const QImage close = photo.copy(FaceInPhoto.toRect().adjusted(-20, -30, 20, 20));
    expectTheseFaces(*engine, {close, {QRectF(20, 30, FaceInPhoto.width(), FaceInPhoto.height())}},
                     "a face that fills the picture");
    expectTheseFaces(*engine, pageWith(photo, {QRect(1500, 200, 1280, 1500)}, QSize(3840, 2160)), "4K");
}

TEST(BlazeFace, FindsFacesInDimGreyTiltedAndCompressedPhotographs)
{
    const auto engine = makeFaceEngine();
    const QImage photo = QImage(Photo).convertToFormat(QImage::Format_RGB32);
    const auto painted = [&photo](const std::function<void(QPainter &)> &paint) {
        QImage image = photo;
        QPainter painter(&image);
        paint(painter);
        return image;
    };
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    ASSERT_TRUE(photo.scaledToWidth(256, Qt::SmoothTransformation).save(&buffer, "JPG", 30));
    const std::pair<const char *, QImage> photos[] = {
        {"dim", painted([&](QPainter &p) { p.fillRect(photo.rect(), QColor(0, 0, 0, 160)); })},
        {"grey", photo.convertToFormat(QImage::Format_Grayscale8)},
        {"256 colours", photo.convertToFormat(QImage::Format_Indexed8)},
        {"deep", photo.convertToFormat(QImage::Format_RGBA64)},
        {"compressed",
         QImage::fromData(jpeg).scaled(photo.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)},
        {"tilted", painted([&](QPainter &p) {
             p.fillRect(photo.rect(), Qt::darkGreen);
             p.translate(FaceInPhoto.center());
             p.rotate(12);
             p.translate(-FaceInPhoto.center());
             p.drawImage(0, 0, photo);
         })}};
    for (const auto &[what, image] : photos) {
        expectTheseFaces(*engine, {image, {FaceInPhoto}}, what);
        Page page = pageWith(image, {QRect(600, 200, 256, 300)});
        page.image = page.image.convertToFormat(image.format());
        expectTheseFaces(*engine, page, what);
    }
}

TEST(BlazeFace, TakesNoDrawnFaceForAPerson)
{
    QImage image = textPage(QSize(1280, 800));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont emoji("Noto Color Emoji");
    emoji.setPixelSize(64);
    painter.setFont(emoji);
    painter.drawText(QRectF(20, 20, 1240, 400), Qt::TextWordWrap, "😀😃😄😁😆😅😂🙂😉😊😇👦👧👨👩👴👵👶🧑");
    // Portraits as programs draw them for those who have given none.
    for (int i = 0; i < 9; ++i) {
        const QRectF round(20 + i * 136, 450, 120, 120);
        const QPointF c = round.center();
        painter.setPen(Qt::NoPen);
        QLinearGradient ground(round.topLeft(), round.bottomRight());
        ground.setColorAt(0, QColor::fromHsv(i * 40, 120, 240));
        ground.setColorAt(1, Qt::white);
        painter.setBrush(ground);
        painter.drawEllipse(round);
        painter.setBrush(QColor::fromHsv(22, 60 + i * 12, 250 - i * 14));
        painter.drawEllipse(c, 26, 33);
        painter.setBrush(QColor(60, 40, 30));
        painter.drawChord(QRectF(c.x() - 27, c.y() - 40, 54, 50), 0, 180 * 16);
        painter.drawEllipse(c + QPointF(-10, 2), 3, 3);
        painter.drawEllipse(c + QPointF(10, 2), 3, 3);
        painter.setPen(QPen(QColor(120, 30, 30), 2));
        painter.drawArc(QRectF(c.x() - 10, c.y() + 8, 20, 12), 190 * 16, 160 * 16);
    }
    painter.end();
    expectTheseFaces(*makeFaceEngine(), {image, {}}, "emoji and drawn portraits");
}
