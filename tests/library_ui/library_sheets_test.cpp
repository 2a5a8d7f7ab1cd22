#include "library_window_stage.h"

#include "document/image_files.h"
#include "library/library_versions.h"
#include "library/ui/clean_up_sheet.h"
#include "library/ui/export_sheet.h"
#include "library/ui/item_detail.h"
#include "library/ui/pdf_sheet.h"
#include "library/ui/preview_overlay.h"
#include "library/ui/versions_row.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QThreadPool>
#include <algorithm>

namespace {

class LibrarySheetsTest : public LibraryWindowTest {
protected:
    void select(const QString &names)
    {
        QSet<QString> paths;
        for (const QChar name : names)
            paths.insert(inFolder(name));
        m_model->setSelection(paths);
    }
    template <typename SheetType = Sheet>
    SheetType *open(LibrarySheet::Kind kind)
    {
        m_model->setSheet(LibrarySheet{kind, m_model->selectedPaths(), {}});
        return m_window->findChild<SheetType *>();
    }
    static void press(QWidget *sheet, const QString &title)
    {
        const auto buttons = sheet->findChildren<QPushButton *>();
        const auto found = std::find_if(buttons.begin(), buttons.end(),
                                        [&](const QPushButton *button) { return button->text() == title; });
        ASSERT_NE(found, buttons.end()) << "no button " << title.toStdString();
        (*found)->click();
    }
    bool closes() const
    {
        return QTest::qWaitFor([&] { return !m_model->sheet(); }, 10'000);
    }
};

} // namespace

TEST_F(LibrarySheetsTest, ExportsTellsAndShowsWhatItDid)
{
    select("AB");
    auto *sheet = open<ExportSheet>(LibrarySheet::Kind::Export);
    ASSERT_TRUE(sheet);
    sheet->findChildren<QComboBox *>()[0]->setCurrentIndex(2); // JPG
    sheet->exportTo(home.path());
    ASSERT_TRUE(closes());
    EXPECT_TRUE(ImageFiles::read(home.path("A.jpg")));
    EXPECT_TRUE(ImageFiles::read(home.path("B.jpg")));
    EXPECT_EQ(m_told.size(), 1);
    EXPECT_EQ(machine.workspace.revealed, QStringList{home.path("A.jpg")});
}

TEST_F(LibrarySheetsTest, AFailureIsToldInTheSheetOrWithoutItByANotice)
{
    select("A");
    auto *sheet = open<ExportSheet>(LibrarySheet::Kind::Export);
    sheet->exportTo(home.path("nowhere"));
    auto *status = sheet->findChild<QLabel *>("status");
    ASSERT_TRUE(QTest::qWaitFor([&] { return status->text().contains("A.png"); }));
    EXPECT_TRUE(m_model->sheet()) << "the sheet stays for another try";
    EXPECT_TRUE(m_told.isEmpty());

    sheet->exportTo(home.path("nowhere"));
    m_window.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_told.isEmpty(); }));
    EXPECT_TRUE(m_told.first().contains("A.png")) << m_told.first().toStdString();
}

TEST_F(LibrarySheetsTest, WorkGoesOnWhenTheWindowClosesAndEndsWithCancel)
{
    m_model->selectAll();
    open<PdfSheet>(LibrarySheet::Kind::Pdf)->writeTo(home.path("all.pdf"));
    m_window.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(home.path("all.pdf")); }));

    LibraryWork::PdfOrder order{m_model->selectedPaths(), "Title", LibraryWork::Captions::None,
                                Exporter::PageSize::Fit, home.path("none.pdf")};
    for (const QString &path : m_library->items())
        order.paths.append(path);
    BatchJob *job = m_work->makePdf(order);
    job->cancel();
    bool isCancelled = false;
    QObject::connect(job, &BatchJob::ended, &notices, [&](const Result<void> &result) {
        isCancelled = !result && result.error().isCancelled();
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return isCancelled; }));
    EXPECT_FALSE(QFile::exists(home.path("none.pdf")));
}

TEST_F(LibrarySheetsTest, TellsWhyNothingWasDone)
{
    LibraryWork::PdfOrder order{
        {inFolder("A")}, {}, LibraryWork::Captions::Written, Exporter::PageSize::Fit, home.path("none.pdf")};
    std::optional<Error> failure;
    QObject::connect(m_work->makePdf(order), &BatchJob::ended, &notices,
                     [&](const Result<void> &result) { failure = result ? Error() : result.error(); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return failure.has_value(); }));
    EXPECT_EQ(failure->kind, Error::Kind::Denied) << "there is no key";
    EXPECT_FALSE(QFile::exists(home.path("none.pdf")));

    prefs.setApiKey("key");
    m_work->describe(*m_model);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_told.isEmpty(); }));
    EXPECT_EQ(m_told, QStringList{"server.example refuses the connection."});

    m_told.clear();
    machine.trash.refuses = true;
    clock.time = clock.time.addDays(100);
    prefs.setAutoDeleteDays(30);
    m_work->runAutoDelete(LibraryWork::WhenNothing::Tell);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_told.isEmpty(); }));
    EXPECT_EQ(m_told, QStringList{"The Trash refuses."});
    EXPECT_EQ(m_library->items().size(), 10);
}

TEST_F(LibrarySheetsTest, WorkEndsWithItsOwnerAndLeavesNothingWhenCancelled)
{
    LibraryWork::CombineOrder order;
    order.paths = m_library->items();
    BatchJob *job = m_work->combine(order);
    bool isCancelled = false;
    QObject::connect(job, &BatchJob::ended, &notices, [&](const Result<void> &result) {
        isCancelled = !result && result.error().isCancelled();
    });
    job->cancel();
    ASSERT_TRUE(QTest::qWaitFor([&] { return isCancelled; }));
    EXPECT_EQ(m_library->items().size(), 10);
    m_work->combine(order);
    QTest::qWait(0);
    m_window.reset();
    m_work.reset();
    ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(10'000));
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_opened.isEmpty() && m_told.isEmpty());
}

TEST_F(LibrarySheetsTest, CombinesAndMakesGuidesAsNewCapturesThatOpen)
{
    select("ABC");
    press(open(LibrarySheet::Kind::Combine), "Create && Open");
    ASSERT_TRUE(closes());
    ASSERT_EQ(m_opened.size(), 1);
    EXPECT_TRUE(m_opened[0].startsWith("Combined 3 Capture")) << m_opened[0].toStdString();
    EXPECT_EQ(ImageFiles::pixelSize(inFolder(m_opened[0])), QSize(3 * 160 + 4 * 40, 100 + 2 * 40));

    select("AB");
    press(open(LibrarySheet::Kind::Guide), "Create && Open");
    ASSERT_TRUE(closes());
    ASSERT_EQ(m_opened.size(), 2);
    EXPECT_EQ(m_opened[1], "How To");
    EXPECT_EQ(ImageFiles::pixelSize(inFolder("How To"))->width(), 1400);
}

TEST_F(LibrarySheetsTest, RenamesByAPatternInTheOrderShown)
{
    select("ABC");
    auto *sheet = open(LibrarySheet::Kind::Rename);
    sheet->findChild<QLineEdit *>()->setText("{name} of {date} {n}");
    press(sheet, "Rename");
    ASSERT_TRUE(closes());
    EXPECT_TRUE(QFile::exists(inFolder("A of 2026-03-14 1")));
    EXPECT_TRUE(QFile::exists(inFolder("C of 2026-03-14 3")));
    EXPECT_EQ(m_told.size(), 1);
}

TEST_F(LibrarySheetsTest, CleaningUpKeepsTheNewestOfLookAlikes)
{
    // The stage's captures are all of one colour each, and so all alike.
    auto *sheet = open<CleanUpSheet>(LibrarySheet::Kind::CleanUp);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->groups().has_value(); }));
    ASSERT_EQ(sheet->groups()->size(), 1);
    EXPECT_EQ(sheet->groups()->first().first(), inFolder("A"));
    press(sheet, "Trash All Extras");
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->groups()->isEmpty(); }));
    EXPECT_EQ(m_library->items(), QStringList{inFolder("A")});
    const auto buttons = sheet->findChildren<QPushButton *>();
    const auto run = std::ranges::find(buttons, QString("Run Now"), &QPushButton::text);
    ASSERT_NE(run, buttons.end());
    for (const auto &[index, days] : {std::pair(1, 30), std::pair(0, 0)}) {
        Q_EMIT sheet->findChild<QComboBox *>()->activated(index);
        EXPECT_EQ(prefs.autoDeleteDays(), days);
        EXPECT_EQ((*run)->isEnabled(), days > 0);
    }
}

TEST_F(LibrarySheetsTest, GoesOnWithoutACaptionHereAndThereAndShowsWhatNothingOpens)
{
    struct : FakeWorkspace {
        Result<void> open(const QUrl &) override { return fail("Nothing opens it."); }
    } workspace;
    LibraryWork work({*m_library, workspace, notices, m_claude, prefs, m_pending, clock, *m_indexing, {}});
    prefs.setApiKey("key");
    const HttpResponse caption{200, R"({"content":[{"type":"text","text":"A page"}]})"};
    const HttpResponse trouble{500, "no"};
    machine.http.answers = {trouble, trouble, caption, trouble, trouble, caption};
    work.makePdf({m_library->items().first(6),
                  {},
                  LibraryWork::Captions::Written,
                  Exporter::PageSize::Fit,
                  home.path("some.pdf")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !workspace.revealed.isEmpty(); }, 10'000));
    EXPECT_EQ(workspace.revealed, QStringList{home.path("some.pdf")});
    EXPECT_EQ(machine.http.requests.size(), 6);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(LibrarySheetsTest, TheInspectorRenamesAndGoesBackToAVersion)
{
    m_model->setShowsInspector(true);
    select("A");
    auto *detail = m_window->findChild<ItemDetail *>();
    ASSERT_EQ(detail->path(), inFolder("A"));
    LibraryVersions(*m_library, clock).saveVersion(inFolder("A"));
    ASSERT_TRUE(filled({20, 20}, Qt::black).save(inFolder("A")));
    m_library->postChanged(inFolder("A"));
    auto *versions = detail->findChild<VersionsRow *>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return versions->isVisible(); }))
        << "versions are shown when there are some";
    const QList<LibraryVersion> present = LibraryVersions(*m_library, clock).versions(inFolder("A"));
    clock.time = clock.time.addSecs(5);
    Q_EMIT versions->restoreWanted(present.first());
    EXPECT_TRUE(QTest::qWaitFor([&] { return ImageFiles::pixelSize(inFolder("A")) == QSize(160, 100); }));

    auto *name = detail->findChild<QLineEdit *>();
    name->setText("Invoice");
    Q_EMIT name->editingFinished();
    EXPECT_TRUE(QFile::exists(inFolder("Invoice")));
    EXPECT_EQ(selected(), "Invoice");
    EXPECT_EQ(detail->path(), inFolder("Invoice"));
}

TEST_F(LibrarySheetsTest, SpacePreviewsAndTheArrowsBrowse)
{
    select("B");
    QTest::keyClick(&grid(), Qt::Key_Space);
    auto *preview = m_window->findChild<PreviewOverlay *>();
    ASSERT_TRUE(preview->isVisible());
    const QRgb wanted = QColor::fromHsv(30, 200, 200).rgb();
    const auto shown = [&] { return preview->grab().toImage().pixel(preview->rect().center()); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown() == wanted; }, 5000));
    QTest::keyClick(preview, Qt::Key_Right);
    EXPECT_EQ(m_model->previewing(), inFolder("C"));
    QTest::keyClick(preview, Qt::Key_Escape);
    EXPECT_FALSE(preview->isVisible());
    EXPECT_TRUE(grid().hasFocus());
    QTest::keyClick(&grid(), Qt::Key_Right);
    EXPECT_EQ(selected(), "D") << "the keyboard goes on where the preview ended";
    QTest::keyClicks(&grid(), "h");
    EXPECT_EQ(m_model->query(), "h") << "typing searches";
}
