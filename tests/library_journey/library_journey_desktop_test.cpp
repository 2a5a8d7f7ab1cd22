#include "base/pending_work.h"
#include "capture/screen_capturer.h"
#include "document/image_files.h"
#include "library/library.h"
#include "library/library_versions.h"
#include "library/model/text_indexing.h"
#include "library/ui/clean_up_sheet.h"
#include "library/ui/library_grid.h"
#include "library/ui/library_window.h"
#include "library/ui/library_work.h"
#include "library/ui/versions_row.h"
#include "pins/pins.h"
#include "platform/session/make_platform.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/stage.h"
#include "support/xdotool.h"
#include "ui/appearance.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>

namespace {

// The window of the Library on the real machine, driven by keys and pointer alone.
class LibraryJourney : public testing::Test, protected Stage {
protected:
    LibraryJourney()
    {
        clock.time = QDateTime::currentDateTime();
        prefs.setSaveFolder(home.path("Shots"));
        library.watch();
    }

    static bool wait(const std::function<bool()> &isDone) { return QTest::qWaitFor(isDone, 15000); }
    static void click(const QWidget *on, QPoint at)
    {
        const QPoint global = on->mapToGlobal(at);
        xdotool({"mousemove", QString::number(global.x()), QString::number(global.y()), "click", "1"});
    }
    static void key(const QString &name) { xdotool({"key", name}); }
    static void type(const QString &words) { xdotool({"type", "--delay", "5", words}); }
    // What is written on it, or told of it.
    void press(const QString &words)
    {
        QAbstractButton *found = nullptr;
        ASSERT_TRUE(wait([&] {
            for (auto *button : window->findChildren<QAbstractButton *>()) {
                if (button->isVisible() && button->isEnabled() &&
                    (button->text() == words || button->accessibleName() == words))
                    found = button;
            }
            return found != nullptr;
        })) << qPrintable(words);
        click(found, found->rect().center());
    }
    static void choose(const QString &words)
    {
        QMenu *menu = nullptr;
        QAction *action = nullptr;
        ASSERT_TRUE(wait([&] {
            menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            for (QAction *each : menu ? menu->actions() : QList<QAction *>()) {
                if (each->text().remove('&') == words || words.isEmpty())
                    action = each;
            }
            return action && menu->isVisible();
        })) << qPrintable(words);
        click(menu, menu->actionGeometry(action).center());
    }
    // Gives the dialog that is open a path.
    static void answer(const QString &path)
    {
        QLineEdit *field = nullptr;
        ASSERT_TRUE(wait([&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            field = dialog ? dialog->findChild<QLineEdit *>("fileNameEdit") : nullptr;
            return field && field->isVisible() && dialog->isActiveWindow();
        }));
        click(field, field->rect().center());
        key("ctrl+a");
        type(path);
        ASSERT_TRUE(wait([&] { return field->text() == path; }));
        key("Return");
    }
    // A capture of another program's window; none sees this program's own.
    QString capture(const QString &name, const QStringList &words)
    {
        QProcess program;
        program.setStandardErrorFile(QProcess::nullDevice());
        program.start(name, words);
        const auto front = [&] {
            const QList<WindowInfo> windows = capturer.onScreenWindows();
            return windows.isEmpty() ? std::nullopt : std::optional(windows.first());
        };
        EXPECT_TRUE(wait([&] { return front().has_value(); }));
        QTest::qWait(1000);
        const auto picture = capturer.captureWindow(front()->id, Pointer::Hidden);
        EXPECT_TRUE(wait([&] { return picture.isFinished(); }));
        program.kill();
        program.waitForFinished();
        const auto saved = library.saveInBackground(picture.result().value());
        EXPECT_TRUE(wait([&] { return saved.isFinished(); }));
        return saved.result().value();
    }
    void openWindow()
    {
        model.load();
        window = std::make_unique<LibraryWindow>(LibraryPorts{
            .model = model,
            .pasteboard = machine.pasteboard,
            .workspace = machine.workspace,
            .notices = notices,
            .pins = pins,
            .movies = machine.movies,
            .settings = prefs,
            .work = work,
            .hashFile = home.path("hashes"),
            .openItem = [this](const QString &path) { opened.append(path); },
        });
        window->setGeometry(60, 60, 1400, 860);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        ASSERT_TRUE(wait([this] { return model.reading() == LibraryModel::Reading::Done; }));
    }
    QString only() { return model.selectedPaths().value(0); }
    static QByteArray outputOf(const QString &program, const QStringList &words)
    {
        QProcess process;
        process.start(program, words);
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << qPrintable(program);
        return process.readAllStandardOutput();
    }

    Appearance appearance{*qApp};
    Platform real = makePlatform();
    ScreenCapturer capturer{*real.screens, *real.pictures};
    Library library{prefs, *real.trash, clock};
    LibraryModel model{library, defaults, clock};
    PendingWork pending;
    Pins pins{machine.pasteboard, notices};
    TextRecognizer recognizer{*real.text, *real.faces};
    TextIndexing indexing{library, recognizer};
    ClaudeClient claude{machine.http, prefs};
    LibraryWork work{{library, machine.workspace, notices, claude, prefs, pending, clock, indexing,
                      [this](const QString &path) { opened.append(path); }}};
    std::unique_ptr<LibraryWindow> window;
    QStringList opened;
};

TEST_F(LibraryJourney, LeadsFromACaptureToWhatLeavesTheProgram)
{
    QFile letter(home.path("letter.txt"));
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray("harbour ").repeated(12));
    letter.close();
    const QString harbour = capture("mousepad", {"--disable-server", letter.fileName()});
    ASSERT_NE(capture("xmessage", {"-bg", "black", "-fg", "white", "A meadow\nand a lark\nin the wind"}),
              harbour);
    indexing.indexMissingText();
    ASSERT_TRUE(wait([this] { return !indexing.isIndexing(); }));
    openWindow();
    if (HasFatalFailure())
        return;

    // Found by the word in its picture, starred, filed and named.
    type("harbour");
    ASSERT_TRUE(wait([this] { return model.visibleCount() == 1; })) << qPrintable(model.query());
    key("Return");
    ASSERT_TRUE(wait([&] { return only() == harbour; }));
    key("Menu");
    choose("Add to Favorites");
    EXPECT_TRUE(wait([&] { return library.catalog().isFavorite(harbour); }));
    key("Menu");
    choose("Add to Collection");
    choose("New Collection…");
    ASSERT_TRUE(wait([this] { return window->findChild<QLineEdit *>({}, Qt::FindChildrenRecursively); }));
    QTest::qWait(300);
    type("Ports");
    key("Return");
    EXPECT_TRUE(wait([&] { return library.catalog().isInAnyCollection(harbour); }));
    EXPECT_EQ(model.collections().value(0).name, "Ports");
    QTest::qWait(300);
    key("F2");
    QTest::qWait(300);
    type("Jetty");
    key("Return");
    const QString jetty = home.path("Shots/Jetty.png");
    ASSERT_TRUE(wait([&] { return QFile::exists(jetty) && only() == jetty; }));

    // Back to what it was before it was edited.
    const QSize size = *ImageFiles::pixelSize(jetty);
    LibraryVersions(library, clock).saveVersion(jetty);
    ASSERT_TRUE(ImageFiles::write(filled({50, 40}, Qt::red), jetty));
    library.postChanged(jetty);
    press("Inspector");
    press("Restore");
    choose({});
    EXPECT_TRUE(wait([&] { return ImageFiles::pixelSize(jetty) == size; }));

    // Both leave as pictures, as a document and as one picture.
    click(window->grid()->viewport(), {3, window->grid()->viewport()->height() - 3});
    key("ctrl+f");
    key("Escape");
    ASSERT_TRUE(wait([this] { return model.visibleCount() == 2; }));
    click(window->grid()->viewport(), {3, window->grid()->viewport()->height() - 3});
    key("ctrl+a");
    press("Export");
    press("Choose Folder…");
    ASSERT_TRUE(QDir().mkpath(home.path("out")));
    answer(home.path("out"));
    EXPECT_TRUE(wait([this] { return QDir(home.path("out")).entryList({"*.png"}).size() == 2; }));
    ASSERT_TRUE(wait([this] { return !model.sheet(); }));
    press("PDF");
    press("Create PDF…");
    const QString pdf = home.path("out/both.pdf");
    answer(pdf);
    ASSERT_TRUE(wait([&] { return QFile::exists(pdf) && !model.sheet(); }));
    EXPECT_TRUE(outputOf("pdfinfo", {pdf}).contains("Pages:           2"));
    EXPECT_TRUE(outputOf("pdftotext", {pdf, "-"}).contains("Jetty"));
    press("Combine");
    press("Create && Open");
    ASSERT_TRUE(wait([this] { return opened.size() == 1 && !model.sheet(); }));
    EXPECT_GT(ImageFiles::pixelSize(opened[0])->width(), size.width() + 120) << "side by side";

    // A duplicate goes, and something that was removed comes back.
    const QString copy = home.path("Shots/Copy.png");
    ASSERT_TRUE(QFile::copy(jetty, copy));
    QFile older(copy);
    ASSERT_TRUE(older.open(QIODevice::ReadWrite) &&
                older.setFileTime(QDateTime::currentDateTime().addDays(-1), QFile::FileModificationTime));
    older.close();
    ASSERT_TRUE(wait([this] { return model.visibleCount() == 4; }));
    press("More");
    choose("Clean Up");
    CleanUpSheet *sheet = nullptr;
    ASSERT_TRUE(wait([&] {
        sheet = window->findChild<CleanUpSheet *>();
        return sheet && sheet->groups().has_value();
    }));
    ASSERT_EQ(sheet->groups()->size(), 1);
    ASSERT_EQ(sheet->groups()->first(), (QStringList{jetty, copy}));
    press("Trash All Extras");
    ASSERT_TRUE(wait([&] { return !QFile::exists(copy); }));
    press("Done");
    ASSERT_TRUE(wait([this] { return !model.sheet() && model.visibleCount() == 3; }))
        << qPrintable(library.items().join(", "));
    const QStringList before = library.items();
    click(window->grid()->viewport(), window->grid()->cardRect(0).center().toPoint());
    ASSERT_TRUE(wait([this] { return model.selectedPaths().size() == 1; }));
    key("Delete");
    ASSERT_TRUE(wait([this] { return library.items().size() == 2; }));
    key("ctrl+z");
    EXPECT_TRUE(wait([&] { return library.items() == before; }));
    EXPECT_TRUE(library.catalog().isFavorite(jetty));
}

} // namespace
