#include "call.h"

#include "document/image_files.h"

#include <QFont>
#include <QJsonArray>
#include <QJsonObject>
#include <QPainter>

namespace {

// Something to look at, so that two of them don't look alike by being plain.
QImage sketch(int left, const QColor &color)
{
    QImage image(320, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).fillRect(left, 30, 90, 120, color);
    return image;
}

class LibraryCalls : public CommandLine {
protected:
    LibraryCalls()
    {
        set("LUMENPOST_LIBRARY", path("library"));
        for (const auto &[name, image] :
             {std::pair("a.png", sketch(20, Qt::red)), std::pair("b.png", sketch(20, QColor(250, 10, 10))),
              std::pair("c.png", sketch(200, Qt::black))})
            EXPECT_TRUE(ImageFiles::write(image, inLibrary(name)));
    }
    QString inLibrary(const QString &name) const { return path("library/" + name); }
};

} // namespace

TEST_F(LibraryCalls, RefusesWrongWordsAndMissingFiles)
{
    const struct {
        QStringList words;
        int status;
        QString sentence;
    } wrong[]{
        {{"export", "a.png"}, 2, "--to"},
        {{"export", "a.png", "--to", "x", "--format", "bmp"}, 2, "\"bmp\" is not png, jpg, heic or original"},
        {{"export", "a.png", "--to", "x", "--max", "0"}, 2, "--max"},
        {{"combine", "a.png", "--output", "o.png"}, 2, "--layout"},
        {{"pdf", "a.png", "--output", "o.pdf", "--page", "a5"}, 2, "\"a5\" is not fit, letter or a4"},
        {{"library", "collection", "create", "  "}, 2, "needs a name"},
        {{"library", "autodelete", "0"}, 2, "DAYS"},
        {{"library", "favorite", "a.png", "maybe"}, 2, "\"maybe\" is not on or off"},
        {{"export", "none.png", "--to", "x"}, 1, "none.png"},
        {{"export", "a.png", "--to", "/dev/null/x"}, 1, "/dev/null/x"},
        {{"pdf", "none.png", "--output", "o.pdf"}, 1, "none.png"},
        {{"pdf", "a.png", "--output", "nowhere/o.pdf"}, 1, "o.pdf"},
        {{"combine", "none.png", "--layout", "grid", "--output", "o.png"}, 1, "none.png"},
        {{"guide-image", "a.png", "--captions", "none.txt", "--output", "o.png"}, 1, "none.txt"},
        {{"library", "restore", "a.png", "12"}, 1, "no version 12"},
        {{"library", "collection", "delete", "12"}, 1, "12"},
        {{"library", "favorite", "none.png", "on"}, 1, "none.png"},
    };
    for (const auto &call_ : wrong)
        EXPECT_TRUE(isRefused(call(call_.words), call_.status, call_.sentence))
            << call_.words.join(' ').toStdString();
    EXPECT_EQ(filesIn("."), QStringList());
}

TEST_F(LibraryCalls, ExportsAndJoinsFilesOfTheLibraryByName)
{
    const Outcome exported =
        call({"export", "a.png", inLibrary("c.png"), "--to", "out", "--format", "jpg", "--max", "160"});
    EXPECT_TRUE(isDone(exported));
    EXPECT_EQ(exported.lines(), (QStringList{path("out/a.jpg"), path("out/c.jpg")}));
    EXPECT_EQ(QImage(path("out/a.jpg")).size(), QSize(160, 100));
    EXPECT_EQ(call({"export", "a.png", "--to", "out", "--format", "jpg"}).output, path("out/a 2.jpg") + "\n");

    EXPECT_TRUE(isDone(
        call({"pdf", "a.png", "b.png", "--output", "o.pdf", "--title", "Both", "--captions", "names"})));
    EXPECT_GT(QFileInfo(path("o.pdf")).size(), 1000);
    EXPECT_TRUE(isDone(call({"combine", "a.png", "c.png", "--layout", "vertical", "--spacing", "10",
                             "--background", "transparent", "--output", "o.png"})));
    const QImage combined(path("o.png"));
    EXPECT_EQ(combined.size(), QSize(340, 430));
    EXPECT_EQ(combined.pixelColor(0, 0).alpha(), 0);
    for (const auto &[ground, isBright] : {std::pair("white", true), std::pair("dark", false)}) {
        EXPECT_TRUE(isDone(call({"combine", "a.png", "c.png", "--layout", "horizontal", "--background",
                                 ground, "--output", "o.png"})));
        EXPECT_EQ(QImage(path("o.png")).pixelColor(2, 2).lightness() > 200, isBright) << ground;
    }

    QFile captions(path("captions.txt"));
    ASSERT_TRUE(captions.open(QIODevice::WriteOnly));
    captions.write("  First\r\n");
    captions.close();
    QFile plain(path("plain.txt"));
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly) && plain.write("First") == 5);
    plain.close();
    EXPECT_TRUE(isDone(call({"guide-image", "a.png", "b.png", "--title", "How To", "--captions",
                             "captions.txt", "--output", "guide.png"})));
    const QImage guide(path("guide.png"));
    EXPECT_EQ(guide.size(), QSize(1400, 150 + 60 + 2 * (52 + 20 + 200) + 56 + 60));
    EXPECT_TRUE(isDone(call({"guide-image", "a.png", "b.png", "--title", "How To", "--captions", "plain.txt",
                             "--output", "plain.png"})));
    EXPECT_EQ(QImage(path("plain.png")), guide) << "blanks around a caption are none of it";
    EXPECT_TRUE(isDone(call({"guide-image", "a.png", "b.png", "--title", "How To", "--output", "mute.png"})));
    const QImage mute(path("mute.png"));
    ASSERT_EQ(mute.size(), guide.size());
    EXPECT_NE(mute.copy(0, 0, 1400, 400), guide.copy(0, 0, 1400, 400)) << "the first has a caption";
    EXPECT_EQ(mute.copy(0, 500, 1400, 200), guide.copy(0, 500, 1400, 200)) << "the second none";
}

TEST_F(LibraryCalls, ListsInTheOrderThatIsAskedForAndGoesOnPastAFailure)
{
    const std::pair<const char *, qint64> files[]{
        {"c.png", 1'700'000'300}, {"a.png", 1'700'000'200}, {"b.png", 1'700'000'100}};
    ASSERT_TRUE(ImageFiles::write(sketch(20, Qt::red).scaled(900, 900), inLibrary("b.png")));
    for (const auto &[name, seconds] : files) {
        QFile file(inLibrary(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFile::FileModificationTime));
    }
    const auto names = [this](const char *order) {
        QString names;
        for (const QString &line : call({"library", "list", "--sort", order}).lines())
            names += QFileInfo(line).baseName();
        return names;
    };
    EXPECT_EQ(names("newest"), "cab");
    EXPECT_EQ(names("oldest"), "bac");
    EXPECT_EQ(names("name"), "abc");
    EXPECT_EQ(names("size").front(), 'b');

    const Outcome trashed = call({"library", "trash", "none.png", "a.png"});
    EXPECT_EQ(trashed.status, 1);
    EXPECT_EQ(trashed.output, inLibrary("a.png") + "\n");
    EXPECT_FALSE(QFile::exists(inLibrary("a.png")));
}

TEST_F(LibraryCalls, LeavesNothingOnAFullDisk)
{
    QImage noise(400, 300, QImage::Format_RGB32);
    quint32 seed = 1;
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x)
            noise.setPixel(x, y, 0xff000000 | ((seed = seed * 1664525 + 1013904223) >> 8));
    }
    ASSERT_TRUE(ImageFiles::write(noise, inLibrary("noise.png")));
    QDir().mkpath(path("out"));
    for (const QString format : {"original", "jpg", "png"})
        EXPECT_TRUE(isRefused(callWithFullDisk({"export", "noise.png", "--to", "out", "--format", format}), 1,
                              "noise"));
    EXPECT_TRUE(isRefused(callWithFullDisk({"pdf", "noise.png", "--output", "out/o.pdf"}), 1, "o.pdf"));
    EXPECT_EQ(filesIn("out"), QStringList());
    EXPECT_EQ(QDir(path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
}

TEST_F(LibraryCalls, FindsLookAlikes)
{
    const Outcome found = call({"library", "duplicates"});
    EXPECT_TRUE(isDone(found));
    ASSERT_EQ(found.json().array().size(), 1) << found.output.toStdString();
    EXPECT_EQ(found.json()[0].toArray().size(), 2);
    EXPECT_EQ(call({"library", "duplicates"}).json(), found.json());
    EXPECT_TRUE(isDone(call({"library", "trash", "b.png"})));
    const Outcome none = call({"library", "duplicates"});
    EXPECT_EQ(none.status, 3);
    EXPECT_EQ(none.output, "[]\n");
}

TEST_F(LibraryCalls, KeepsCollectionsAndStars)
{
    const Outcome created = call({"library", "collection", "create", " Bugs "});
    EXPECT_TRUE(isDone(created));
    const QString id = created.output.trimmed();
    EXPECT_TRUE(isDone(call({"library", "collection", "add", id, "a.png", "c.png"})));
    EXPECT_TRUE(isDone(call({"library", "collection", "remove", id.toLower(), "a.png"})));
    EXPECT_TRUE(isDone(call({"library", "collection", "rename", id, "Faults"})));
    EXPECT_EQ(call({"library", "collection", "list"}).json(),
              QJsonDocument(
                  QJsonArray{QJsonObject{{"id", id}, {"name", "Faults"}, {"items", QJsonArray{"c.png"}}}}));
    EXPECT_TRUE(isDone(call({"library", "favorite", "a.png", "on"})));
    EXPECT_EQ(call({"library", "list", "--filter", "favorites"}).lines(), QStringList{inLibrary("a.png")});
    EXPECT_TRUE(isDone(call({"library", "favorite", "a.png", "off"})));
    EXPECT_EQ(call({"library", "list", "--filter", "favorites"}).output, QString());

    // What is starred or filed stays, however old.
    EXPECT_TRUE(isDone(call({"library", "favorite", "b.png", "on"})));
    for (const char *name : {"a.png", "b.png", "c.png"}) {
        QFile file(inLibrary(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-40), QFile::FileModificationTime));
    }
    EXPECT_EQ(call({"library", "autodelete", "41"}).output, "0\n");
    EXPECT_EQ(call({"library", "autodelete", "30"}).output, "1\n");
    EXPECT_EQ(filesIn("library"), (QStringList{"b.png", "c.png"}));

    EXPECT_TRUE(isDone(call({"library", "collection", "delete", id})));
    EXPECT_EQ(call({"library", "collection", "list"}).output, "[]\n");
}

TEST_F(LibraryCalls, GoesBackToAnEarlierState)
{
    EXPECT_EQ(call({"library", "versions", "a.png"}).status, 3);
    const QString version = path("library/.lumenpost/versions/a/1700000000000");
    ASSERT_TRUE(QDir().mkpath(version));
    ASSERT_TRUE(QFile::copy(inLibrary("c.png"), version + "/a.png"));
    const Outcome versions = call({"library", "versions", "a.png"});
    EXPECT_TRUE(isDone(versions));
    EXPECT_EQ(versions.json()[0].toObject(),
              (QJsonObject{{"stamp", "1700000000000"}, {"date", "2023-11-14T22:13:20.000Z"}}));
    EXPECT_TRUE(isDone(call({"library", "restore", "a.png", "1700000000000"})));
    EXPECT_EQ(QImage(inLibrary("a.png")), QImage(inLibrary("c.png")));
    EXPECT_EQ(call({"library", "versions", "a.png"}).json().array().size(), 2);
}

TEST_F(LibraryCalls, FindsWhatIsKnownAndCarriesItOver)
{
    QImage page(700, 160, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    QFont font("DejaVu Sans");
    font.setPixelSize(32);
    painter.setFont(font);
    painter.drawText(20, 90, "Harbour office invoice");
    painter.end();
    ASSERT_TRUE(ImageFiles::write(page, inLibrary("page.png")));
    QFile broken(inLibrary("broken.png"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("no picture");
    broken.close();

    EXPECT_EQ(call({"library", "search", "harbour"}).status, 3);
    const Outcome indexed = call({"library", "index"});
    EXPECT_EQ(indexed.status, 0);
    EXPECT_EQ(indexed.output, "indexed 4\n");
    EXPECT_TRUE(indexed.errors.contains("broken.png")) << indexed.errors.toStdString();
    EXPECT_EQ(call({"library", "index"}).output, "indexed 0\n");
    EXPECT_TRUE(isRefused(call({"library", "index", "--describe"}), 1, "key"));
    EXPECT_EQ(call({"library", "search", " office INV"}).lines(), QStringList{inLibrary("page.png")});
    EXPECT_EQ(call({"library", "search", "PAGE", "--json"}).json().array().size(), 1);

    EXPECT_TRUE(isDone(call({"library", "favorite", "a.png", "on"})));
    EXPECT_TRUE(isDone(call({"library", "backup", "export", "data.json"})));
    EXPECT_TRUE(isRefused(callThrough("ulimit -f 0; exec", {"library", "backup", "export", "small.json"}), 1,
                          "small.json"));
    const Outcome imported = call({"library", "backup", "import", "data.json", "--library", path("other")});
    EXPECT_TRUE(isDone(imported));
    EXPECT_EQ(imported.lines(),
              (QStringList{"favorites 1", "collections 0", "sources 0", "descriptions 0", "texts 4"}));
    EXPECT_TRUE(isRefused(call({"library", "backup", "import", "library/a.png"}), 1, "a.png"));
    EXPECT_TRUE(isRefused(call({"library", "backup", "import", "none.json"}), 1, "none.json"));
}
