#include "app/activity.h"
#include "app/document_routing.h"
#include "app/steps_flow.h"
#include "document/image_files.h"
#include "editor/editor_stage.h"
#include "platform/session/make_platform.h"
#include "settings/capture_settings.h"
#include "steps/steps_guide_model.h"
#include "steps/ui/step_list.h"
#include "steps/ui/step_row.h"
#include "steps/ui/steps_review_window.h"
#include "support/printers.h"
#include "support/xdotool.h"
#include "ui/hud_panel.h"

#include <QApplication>
#include <QPushButton>
#include <QTextStream>
#include <iostream>

namespace {

// What stands in the programs that are recorded, and must not leave.
constexpr const char *kSecret = "ann.lee@example.org";
constexpr const char *kSecretInLetter = "tom.fox@example.net";

constexpr const char *kPage = R"(<!doctype html><title>Order page</title>
<style>body{margin:0;font:18px/26px "DejaVu Sans"}.c{position:absolute;left:20px}</style>
<div class=c style="top:30px"><label for=a>Full name</label> <input id=a style="width:200px;font:inherit"></div>
<div class=c style="top:90px"><label for=b>Mail address</label> <input id=b style="width:300px;font:inherit"
 value="ann.lee@example.org"></div>
<label class=c style="top:150px"><input type=checkbox> I agree</label>
<button class=c style="top:200px;font:inherit">Save changes</button>
<a class=c style="top:260px" href="#x">Terms of service</a>)";

QByteArray outputOf(const QString &program, const QStringList &words)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(program, words);
    const bool ended = QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 60000);
    EXPECT_TRUE(ended && process.exitCode() == 0) << qPrintable(program + ' ' + words.join(' '));
    return process.readAllStandardOutput();
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

// A guide of three programs of three toolkits on the real machine, from the first press to what leaves.
class StepsJourney : public testing::Test {
protected:
    StepsJourney()
    {
        QFile letter(stage.home.path("letter.txt"));
        EXPECT_TRUE(letter.open(QIODevice::WriteOnly));
        // A menu leaves its end uncovered.
        letter.write(QByteArray("Dear Tom,\n\nplease write to ") + kSecretInLetter + " again\n");
        QFile page(stage.home.path("page.html"));
        EXPECT_TRUE(page.open(QIODevice::WriteOnly));
        page.write(kPage);
        capture.setOn(CaptureSettings::Switch::StepsAutoRedact, true);
        flow.setActions({
            .openFile = [this](const QString &path) { opened.append(path); },
            .openEditor =
                [this](std::unique_ptr<EditorDocument> document) {
                    return &routing.openEditor(std::move(document));
                },
            .showLibrary = {},
            .showError = [](const Error &error) { ADD_FAILURE() << qPrintable(error.message); },
        });
    }
    ~StepsJourney() override
    {
        for (const auto &program : programs) {
            kill(-pid_t(program->processId()), SIGKILL);
            program->waitForFinished();
        }
    }

    void start(const QString &program, const QStringList &words)
    {
        auto &process = *programs.emplace_back(std::make_unique<QProcess>());
        process.setChildProcessModifier([] { setsid(); });
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, words);
    }
    // Brings a window to the corner and tells where its content begins.
    QPoint corner(const QString &title)
    {
        QByteArray window;
        for (int i = 0; i < 300 && window.isEmpty(); ++i) {
            QProcess search;
            search.start("xdotool", {"search", "--onlyvisible", "--name", title});
            EXPECT_TRUE(QTest::qWaitFor([&] { return search.state() == QProcess::NotRunning; }, 5000));
            window = search.readAllStandardOutput().trimmed().split('\n').last();
            if (window.isEmpty())
                QTest::qWait(100);
        }
        EXPECT_FALSE(window.isEmpty()) << qPrintable(title);
        xdotool({"windowsize", window, "900", "600", "windowmove", window, "100", "60", "windowactivate",
                 window});
        QTest::qWait(1500);
        QPoint at;
        for (const QByteArray &line : outputOf("xwininfo", {"-id", window}).split('\n')) {
            if (line.contains("Absolute upper-left X"))
                at.setX(line.split(':').last().trimmed().toInt());
            if (line.contains("Absolute upper-left Y"))
                at.setY(line.split(':').last().trimmed().toInt());
        }
        return at;
    }
    // A press that gives that caption, in the end: what a busy program answered too late is to be deleted.
    void press(QPoint at, const QString &caption, bool closesMenu = false,
               const std::function<void()> &prepare = {})
    {
        for (int attempt = 0; attempt < 6; ++attempt) {
            if (prepare)
                prepare();
            const qsizetype before = flow.recorder()->steps().size();
            QTest::qWait(StepsRecorder::kDoubleClick.count() + 50);
            xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "1"});
            ASSERT_TRUE(QTest::qWaitFor([&] { return flow.recorder()->steps().size() > before; }, 20000));
            if (closesMenu) {
                QTest::qWait(300);
                xdotool({"key", "Escape"});
            }
            const GuideStep &step = flow.recorder()->steps().last();
            if (QTest::qWaitFor([&] { return flow.recorder()->steps().last().caption == caption; }, 1000))
                return;
            std::cerr << "once more: " << qPrintable(step.caption) << '\n';
            surplus.append(step.id);
        }
        ADD_FAILURE() << "Never named: " << qPrintable(caption);
    }
    void recordTwelveSteps();
    void expectNoSecretIn(const QImage &image, const QString &what)
    {
        const auto reading = recognizer.text(image);
        ASSERT_TRUE(QTest::qWaitFor([&] { return reading.isFinished(); }, 60000));
        ASSERT_TRUE(reading.result()) << qPrintable(what);
        const QString text = reading.result()->simplified().remove(' ');
        EXPECT_FALSE(text.isEmpty()) << qPrintable(what);
        for (const QString &part : {"ann.lee", "tom.fox", "ample.org", "mple.net", "ple.net"})
            EXPECT_FALSE(text.contains(part)) << qPrintable(what + ": " + text);
    }
    StepsGuideModel &model() { return flow.windows().first()->model(); }
    void waitUntilIdle()
    {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !model().status() && pending.isIdle(); }, 120000));
    }

    EditorStage stage;
    Platform machine = makePlatform();
    CaptureSettings capture{stage.defaults};
    TextRecognizer recognizer{*machine.text, *machine.faces};
    Activity activity{stage.clock};
    PendingWork &pending = stage.pending;
    DocumentRouting routing{stage.ports()};
    StepsFlow flow{{activity, capture, stage.settings, stage.library, recognizer, stage.claude, stage.board,
                    pending, *machine.presses, *machine.elements, *machine.screens, *machine.pictures,
                    *machine.pointer, *machine.permissions, stage.fakes.workspace, *machine.sounds,
                    stage.home.path("steps")}};
    std::vector<std::unique_ptr<QProcess>> programs;
    QList<QUuid> surplus;
    QStringList opened;
};

void StepsJourney::recordTwelveSteps()
{
    start("chromium",
          {"--no-sandbox", "--test-type", "--no-first-run", "--disable-gpu",
           "--user-data-dir=" + stage.home.path("chromium"), "--app=file://" + stage.home.path("page.html")});
    start("mousepad", {stage.home.path("letter.txt")});
    start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/steps_form_window"), {});
    flow.toggle(0);
    ASSERT_TRUE(flow.hud());
    flow.hud()->move(1200, 900); // away from what is pressed

    const QPoint page = corner("Order page");
    QTest::qWait(4000); // it answers fully a while after the first question
    press(page + QPoint(220, 43), "Click the “Full name” field");
    press(page + QPoint(220, 103), "Click the “Mail address” field");
    press(page + QPoint(28, 163), "Toggle “I agree”");
    press(page + QPoint(80, 217), "Click “Save changes”");
    press(page + QPoint(60, 273), "Click the “Terms of service” link");

    const QPoint letter = corner("letter.txt");
    press(letter + QPoint(18, 13), "Open the “File” menu", true);
    press(letter + QPoint(300, 300), "Click the text field");
    press(letter + QPoint(60, 233), "Choose “Save All”", false, [&] {
        flow.recorder()->setPaused(true);
        xdotool(
            {"mousemove", QString::number(letter.x() + 18), QString::number(letter.y() + 13), "click", "1"});
        QTest::qWait(700);
        flow.recorder()->setPaused(false);
    });

    const QPoint form = corner("Order form");
    press(form + QPoint(300, 50), "Click the “Full name” field");
    press(form + QPoint(25, 10), "Open the “Account” menu", true);
    press(form + QPoint(40, 80), "Toggle “Accept terms”");
    press(form + QPoint(40, 110), "Click “Send order”");
}

TEST_F(StepsJourney, LeadsFromTwelvePressesToFiveFormsWithoutTheSecret)
{
    recordTwelveSteps();
    if (HasFatalFailure())
        return;
    flow.toggle(0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !flow.windows().isEmpty(); }, 20000));
    EXPECT_LE(surplus.size(), 6)
        << "presses that had to be done once more: half of them, and no program is that busy";
    model().remove(surplus);
    ASSERT_EQ(model().steps().size(), 12);
    waitUntilIdle();
    EXPECT_TRUE(model().unsearched().isEmpty());

    // One in the full editor, one elsewhere, one in other words.
    model().setTitle("Order <b>quickly</b>");
    model().setCaption(model().steps()[3].id, "Save </h2><script> document.title = 1 </script>");
    model().move(11, -1);
    const QUuid edited = model().steps()[0].id;
    model().edit(edited);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !routing.editors().empty(); }, 20000));
    EditorDocument &document = routing.editors().back()->document();
    Annotation arrow = document.makeAnnotation(ToolKind::Arrow, {300, 300});
    arrow.end = {400, 400};
    document.add(arrow);
    routing.editors().back()->window().close();
    ASSERT_TRUE(QTest::qWaitFor([this] { return routing.editors().empty(); }));
    ASSERT_TRUE(model().step(edited)->edited) << "closing brings it back";
    EXPECT_EQ(model().step(edited)->edited->annotations.last().kind, ToolKind::Arrow);

    const QString out = stage.home.path("out");
    model().exportWebFolder(out);
    waitUntilIdle();
    model().exportPDF(out + "/guide.pdf");
    waitUntilIdle();
    model().saveToLibrary();
    waitUntilIdle();
    model().exportGuideImage();
    waitUntilIdle();
    EXPECT_TRUE(model().wasExported());

    // The page and the text beside it.
    const QString folder = out + "/Order <b>quickly<b>";
    const QByteArray dom = outputOf("chromium", {"--headless", "--no-sandbox", "--disable-gpu", "--dump-dom",
                                                 "--user-data-dir=" + stage.home.path("viewer"),
                                                 "file://" + folder + "/index.html"});
    EXPECT_TRUE(dom.contains("<title>Order &lt;b&gt;quickly&lt;/b&gt;</title>")) << dom.left(600).constData();
    EXPECT_TRUE(dom.contains("&lt;script&gt; document.title = 1 &lt;/script&gt;"));
    for (const int width : {420, 1200}) {
        const QString shot = stage.home.path(QString("page-%1.png").arg(width));
        outputOf("chromium",
                 {"--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                  "--user-data-dir=" + stage.home.path("viewer"), "--screenshot=" + shot,
                  QString("--window-size=%1,2400").arg(width), "file://" + folder + "/index.html"});
        const QImage page = ImageFiles::read(shot).value_or(QImage());
        ASSERT_EQ(page.width(), width);
        // Nothing reaches out of the page: its margin is empty below the heading.
        for (int y = 300; y < page.height(); ++y)
            ASSERT_EQ(page.pixelColor(width - 3, y), QColor(0xf6, 0xf6, 0xfb)) << width << ", " << y;
    }
    // The pictures, and what they are called.
    for (const QByteArray &text :
         {dom, contentsOf(folder + "/README.md"), outputOf("pdftotext", {out + "/guide.pdf", "-"}),
          contentsOf(out + "/guide.pdf")}) {
        EXPECT_FALSE(text.contains(kSecret) || text.contains(kSecretInLetter));
    }
    const QByteArray words = outputOf("pdftotext", {out + "/guide.pdf", "-"});
    EXPECT_TRUE(words.contains("Step 5. Click the “Terms of service” link")) << words.constData();
    outputOf("pdftoppm", {"-r", "100", "-png", out + "/guide.pdf", stage.home.path("pdf")});
    const QStringList pages = QDir(stage.home.path()).entryList({"pdf-*.png"}, QDir::Files, QDir::Name);
    ASSERT_EQ(pages.size(), 12);
    for (const QString &name : pages)
        expectNoSecretIn(*ImageFiles::read(stage.home.path(name)), name);
    for (int number = 1; number <= 12; ++number) {
        const QString name = QString("step-%1.png").arg(number, 2, 10, QChar('0'));
        const QImage picture = *ImageFiles::read(folder + '/' + name);
        expectNoSecretIn(picture, name);
        const QImage kept =
            *ImageFiles::read(stage.inLibrary(QString("Order bquicklyb – Step %1.png").arg(number)));
        EXPECT_EQ(kept.convertToFormat(QImage::Format_RGB32), picture.convertToFormat(QImage::Format_RGB32));
    }
    ASSERT_EQ(opened.size(), 1);
    expectNoSecretIn(*ImageFiles::read(opened[0]), "the tall picture");
    EXPECT_EQ(stage.library.items().size(), 13);
}

} // namespace
