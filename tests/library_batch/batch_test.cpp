#include "library/batch/combiner.h"
#include "library/batch/exporter.h"
#include "library/batch/guide_renderer.h"
#include "library/batch/rename_pattern.h"

#include "document/image_files.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

class ExporterTest : public testing::Test {
protected:
    ExporterTest() { QDir().mkpath(to()); }

    QString to() const { return m_folder.path("to"); }
    QString picture(const QString &name, const QSize &size, const QColor &color = Qt::red)
    {
        const QString path = m_folder.path(name);
        EXPECT_TRUE(ImageFiles::write(filled(size, color), path));
        return path;
    }
    QString bytes(const QString &name, const QByteArray &content)
    {
        QFile file(m_folder.path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    QStringList exported() const
    {
        return QDir(to()).entryList(QDir::Files | QDir::Hidden | QDir::AllDirs | QDir::NoDotAndDotDot);
    }

    TemporaryFolder m_folder;
};

QString outputOf(const QString &program, const QStringList &words)
{
    QProcess process;
    process.start(program, words);
    EXPECT_TRUE(process.waitForFinished()) << "poppler-utils is needed";
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

TEST_F(ExporterTest, WritesCopiesInTheFormatAskedFor)
{
    const QStringList paths{picture("a.png", {1600, 900}), picture("b.jpg", {300, 200}),
                            bytes("film.mov", "a film")};
    const struct {
        ExportFormat format;
        std::optional<int> longest;
        QStringList names;
        QList<QSize> sizes;
    } cases[]{
        {ExportFormat::Original, {}, {"a.png", "b.jpg", "film.mov"}, {{1600, 900}, {300, 200}}},
        {ExportFormat::Original, 800, {"a.png", "b.jpg", "film.mov"}, {{800, 450}, {300, 200}}},
        {ExportFormat::Png, {}, {"a.png", "b.png", "film.mov"}, {{1600, 900}, {300, 200}}},
        {ExportFormat::Jpg, 800, {"a.jpg", "b.jpg", "film.mov"}, {{800, 450}, {300, 200}}},
    };
    for (const auto &wanted : cases) {
        QDir(to()).removeRecursively();
        QDir().mkpath(to());
        const auto outcome = Exporter::exportFiles(paths, to(), wanted.format, wanted.longest);
        EXPECT_TRUE(outcome.failures.isEmpty());
        EXPECT_EQ(exported(), wanted.names);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(outcome.paths[i], QDir(to()).filePath(wanted.names[i]));
            EXPECT_EQ(ImageFiles::pixelSize(outcome.paths[i]), wanted.sizes[i]);
            EXPECT_GT(ImageFiles::read(outcome.paths[i])->pixelColor(9, 9).red(), 250);
        }
    }
}

TEST_F(ExporterTest, TakesFreeNamesAndGoesOnAfterAFailure)
{
    const QStringList paths{picture("a.png", {30, 20}), bytes("broken.png", "nothing"),
                            m_folder.path("gone.png"), picture("b.png", {30, 20})};
    bytes("to/a.jpg", "another's");
    const auto outcome = Exporter::exportFiles(paths, to(), ExportFormat::Jpg, {});
    EXPECT_EQ(outcome.paths, (QStringList{to() + "/a 2.jpg", to() + "/b.jpg"}));
    ASSERT_EQ(outcome.failures.size(), 2);
    EXPECT_EQ(outcome.failures[1].kind, Error::Kind::NotFound);
    EXPECT_EQ(exported(), (QStringList{"a 2.jpg", "a.jpg", "b.jpg"}));
    EXPECT_EQ(QFile(to() + "/a.jpg").size(), 9);
    const auto nowhere = Exporter::exportFiles(paths, m_folder.path("nowhere"), ExportFormat::Original, {});
    EXPECT_TRUE(nowhere.paths.isEmpty());
    EXPECT_EQ(nowhere.failures.size(), 4);
}

TEST_F(ExporterTest, StopsBetweenFilesAndLeavesNoHalfOnes)
{
    QStringList paths;
    for (int i = 0; i < 40; ++i)
        paths.append(picture(QString("%1.png").arg(i), {200, 200}));
    int told = 0;
    const auto outcome = Exporter::exportFiles(paths, to(), ExportFormat::Jpg, {}, [&](int done, int total) {
        EXPECT_EQ(done, ++told);
        EXPECT_EQ(total, 40);
        return done < 5;
    });
    EXPECT_TRUE(outcome.wasCancelled);
    EXPECT_LT(outcome.paths.size(), 40);
    EXPECT_EQ(exported().size(), outcome.paths.size());
    for (const QString &path : outcome.paths)
        EXPECT_TRUE(ImageFiles::read(path)) << path.toStdString();

    const auto all = Exporter::exportFiles(paths, m_folder.path(), ExportFormat::Jpg, {},
                                           [](int done, int total) { return done < total; });
    EXPECT_FALSE(all.wasCancelled) << "all of them were done by then";
}

TEST(PdfLayout, FollowsThePictureOrThePaper)
{
    using Exporter::PageSize;
    const auto fit = Exporter::layout({2800, 1400}, false, false, PageSize::Fit);
    EXPECT_EQ(fit.page, QSizeF(1480, 780));
    EXPECT_EQ(fit.image, QRectF(40, 40, 1400, 700));
    const auto told = Exporter::layout({700, 350}, true, true, PageSize::Fit);
    EXPECT_EQ(told.page, QSizeF(780, 550));
    EXPECT_EQ(told.image, QRectF(40, 90, 700, 350));
    EXPECT_EQ(told.title, QRectF(40, 40, 700, 34));
    EXPECT_EQ(told.caption, QRectF(40, 450, 700, 60));
    // A tiny picture is enlarged to the paper's width, at its top.
    EXPECT_EQ(Exporter::layout({10, 5}, false, false, PageSize::A4).image, QRectF(40, 40, 515, 257.5));
    // A tall one is centred.
    EXPECT_EQ(Exporter::layout({100, 1000}, false, false, PageSize::Letter).image,
              QRectF(306 - 35.6, 40, 71.2, 712));
}

TEST_F(ExporterTest, MakesAPdfOfLosslessPicturesAndText)
{
    const QString path = m_folder.path("guide.pdf");
    const QList<Exporter::PdfPage> pages{
        Exporter::pageOfFile(picture("a.png", {2800, 1400}), "The first of the captions"),
        Exporter::pageOfFile(picture("b.png", {640, 480}, Qt::blue)),
    };
    QList<int> told;
    ASSERT_TRUE(Exporter::pdf(pages, "How-To Guide", Exporter::PageSize::Fit, path, [&](int done, int) {
        told.append(done);
        return true;
    }));
    EXPECT_EQ(told, (QList<int>{1, 2}));
    const QString facts = outputOf("pdfinfo", {"-f", "1", "-l", "2", path});
    EXPECT_TRUE(facts.contains(QRegularExpression("Title: +How-To Guide"))) << facts.toStdString();
    EXPECT_TRUE(facts.contains(QRegularExpression("Page +1 size: +1480 x 900 pts"))) << facts.toStdString();
    EXPECT_TRUE(facts.contains(QRegularExpression("Page +2 size: +720 x 560 pts"))) << facts.toStdString();
    EXPECT_EQ(outputOf("pdftotext", {"-layout", path, "-"}).simplified(),
              "How-To Guide The first of the captions");
    const QString images = outputOf("pdfimages", {"-list", path});
    EXPECT_TRUE(images.contains(QRegularExpression(" 2800 +1400 +rgb +3 +8 +image ")))
        << images.toStdString();
    EXPECT_TRUE(images.contains(QRegularExpression(" 640 +480 +rgb +3 +8 +image "))) << images.toStdString();
    EXPECT_FALSE(images.contains("jpeg"));
}

TEST_F(ExporterTest, LeavesNoHalfPdf)
{
    const QString path = bytes("old.pdf", "the old one");
    const QList<Exporter::PdfPage> pages{Exporter::pageOfFile(picture("a.png", {40, 40})),
                                         Exporter::pageOfFile(m_folder.path("gone.png"))};
    const auto failed = Exporter::pdf(pages, {}, Exporter::PageSize::A4, path);
    ASSERT_FALSE(failed);
    EXPECT_TRUE(failed.error().message.contains("gone.png"));
    const auto stopped =
        Exporter::pdf(pages, {}, Exporter::PageSize::A4, path, [](int, int) { return false; });
    ASSERT_FALSE(stopped);
    EXPECT_TRUE(stopped.error().isCancelled());
    EXPECT_FALSE(Exporter::pdf({}, {}, Exporter::PageSize::A4, path));
    EXPECT_EQ(QFile(path).size(), 11);
}

TEST(RenamePattern, FillsInNumberDateAndName)
{
    const QDate date(2026, 3, 14);
    const struct {
        const char *pattern;
        int index;
        const char *name;
    } cases[]{
        {"Bug", 3, "Bug 3"},
        {"Bug {n}", 3, "Bug 3"},
        {"{name} {date}", 2, "Shot 2026-03-14 2"},
        {"{n}-{n} {name}", 7, "7-7 Shot"},
        {"  {n}. ", 1, "1."},
        {"", 4, "4"},
    };
    for (const auto &wanted : cases)
        EXPECT_EQ(RenamePattern::name(wanted.pattern, wanted.index, date, "Shot"), wanted.name);
}

TEST(Combiner, ArrangesByLayout)
{
    using Combiner::Layout;
    const auto row = Combiner::arrange({{100, 100}, {200, 100}}, Layout::Horizontal, 10);
    EXPECT_EQ(row->canvas, QSize(330, 120));
    EXPECT_EQ(row->frames, (QList<QRectF>{{10, 10, 100, 100}, {120, 10, 200, 100}}));
    const auto column = Combiner::arrange({{100, 50}, {200, 100}}, Layout::Vertical, 10);
    EXPECT_EQ(column->canvas, QSize(220, 230));
    EXPECT_EQ(column->frames, (QList<QRectF>{{10, 10, 200, 100}, {10, 120, 200, 100}}));
    const QList<QSize> five(5, QSize(100, 50));
    EXPECT_EQ(Combiner::arrange(five, Layout::Grid, 0)->canvas, QSize(300, 100));
    EXPECT_EQ(Combiner::arrange(five.first(4), Layout::Grid, 0)->canvas, QSize(200, 100));
    // A smaller picture grows into the middle of its cell.
    EXPECT_EQ(Combiner::arrange({{200, 100}, {50, 50}}, Layout::Grid, 10)->frames[1],
              QRectF(270, 10, 100, 100));
    const auto limited = Combiner::arrange({{8000, 1000}, {8000, 1000}}, Layout::Horizontal, 0);
    EXPECT_EQ(limited->canvas, QSize(8000, 500));
    EXPECT_EQ(limited->frames[1], QRectF(4000, 0, 4000, 500));
    EXPECT_FALSE(Combiner::arrange({}, Layout::Grid, 10));
    EXPECT_FALSE(Combiner::arrange({{100000, 1}}, Layout::Horizontal, 0));
}

TEST(Combiner, DrawsPicturesWithShadowsOnTheGround)
{
    const QList<QImage> images{filled({100, 100}, Qt::red), filled({200, 100}, Qt::blue)};
    const auto onWhite = Combiner::combine(images, Combiner::Layout::Horizontal, 40, QColor(Qt::white));
    ASSERT_TRUE(onWhite);
    EXPECT_EQ(onWhite->pixelColor(90, 90), QColor(Qt::red));
    EXPECT_EQ(onWhite->pixelColor(300, 90), QColor(Qt::blue));
    EXPECT_EQ(onWhite->pixelColor(2, 2), QColor(Qt::white));
    EXPECT_LT(onWhite->pixelColor(90, 38).lightness(), 250);
    const auto clear = Combiner::combine(images, Combiner::Layout::Horizontal, 40, std::nullopt);
    EXPECT_EQ(clear->pixelColor(2, 2).alpha(), 0);
    EXPECT_NE(clear->pixelColor(90, 38).alpha(), 0);
    EXPECT_FALSE(Combiner::combine({}, Combiner::Layout::Grid, 0, std::nullopt));
}

TEST_F(ExporterTest, JoinsFilesOfWhichOneIsTurnedAndOneIsNoPicture)
{
    // Lies on its side in the file, and is told to be turned.
    QByteArray jpeg = ImageFiles::encode(filled({100, 50}, Qt::blue), ImageFiles::Type::Jpeg);
    jpeg.insert(2, QByteArray::fromHex("ffe10022457869660000"
                                       "4d4d002a00000008000101120003000000010006000000000000"));
    const QString turned = bytes("turned.jpg", jpeg), broken = bytes("broken.png", "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(ImageFiles::pixelSize(turned), QSize(50, 100));
    const auto joined =
        Combiner::combineFiles({broken, turned}, Combiner::Layout::Horizontal, 10, QColor(Qt::white));
    ASSERT_TRUE(joined);
    EXPECT_EQ(joined->image.size(), QSize(70, 120));
    EXPECT_EQ(joined->leftOut, 1);
    const auto guide = GuideRenderer::renderFiles({}, {{turned, {}}, {broken, {}}});
    ASSERT_TRUE(guide);
    EXPECT_EQ(guide->image.height(), 60 + 52 + 20 + 100 + 60);
}

TEST(GuideRenderer, StacksNumberedSteps)
{
    const QImage small = filled({300, 200}, Qt::red);
    const QImage wide = filled({2560, 1000}, Qt::blue);
    EXPECT_FALSE(GuideRenderer::render("How To", {}));
    const QColor ground = QColor::fromRgbF(0.97f, 0.97f, 0.97f);
    const QColor badge = QColor::fromRgbF(0.45f, 0.38f, 0.98f);

    const auto plain = GuideRenderer::render({}, {{small, {}}, {wide, {}}});
    ASSERT_TRUE(plain);
    // Top margin, row, gap, picture; gap; row, gap, picture at half its size; lower margin.
    EXPECT_EQ(plain->size(), QSize(1400, 60 + 52 + 20 + 200 + 56 + 52 + 20 + 500 + 60));
    EXPECT_EQ(plain->pixelColor(700, 232), QColor(Qt::red));
    EXPECT_EQ(plain->pixelColor(500, 232).hslHue(), -1); // not enlarged
    EXPECT_EQ(plain->pixelColor(700, 700), QColor(Qt::blue));
    EXPECT_EQ(plain->pixel(63, 86), badge.rgb());
    EXPECT_EQ(plain->pixel(3, 3), ground.rgb());

    const auto titled = GuideRenderer::render("How To", {{small, "Press the button"}});
    EXPECT_EQ(titled->height(), 150 + 60 + 52 + 20 + 200 + 60);
    EXPECT_GT(titled->pixelColor(3, 3).saturation(), 100);
    // A long caption makes its row taller than the badge, which stays in its middle.
    const auto longer = GuideRenderer::render({}, {{small, QString("word ").repeated(200)}});
    const int rowHeight = longer->height() - 60 - 20 - 200 - 60;
    EXPECT_GT(rowHeight, 100);
    EXPECT_EQ(longer->pixel(63, 60 + rowHeight / 2), badge.rgb());
}
