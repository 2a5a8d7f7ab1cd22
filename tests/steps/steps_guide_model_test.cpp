#include "guide_stage.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class GuideModel : public testing::Test, protected GuideStage {
protected:
    void open(const QList<GuideStep> &steps, const QString &title = "Guide")
    {
        begin(steps, title);
        QObject::connect(&model->previews(), &GuidePreviews::changed, model.get(),
                         [this](const QUuid &id) { rendered.append(id); });
        settle();
    }

    QList<QUuid> rendered;
};

TEST_F(GuideModel, RendersAnewOnlyWhatLooksDifferent)
{
    open({step("a"), step("b"), step("c")});
    EXPECT_EQ(model->previews().preview(id(0)).size(), QSize(900, 450));
    const QUuid first = id(0);
    const QUuid second = id(1);
    const QUuid third = id(2);
    const auto expectRendered = [&](const QList<QUuid> &ids, const char *what) {
        settle();
        EXPECT_EQ(QSet<QUuid>(rendered.begin(), rendered.end()), QSet<QUuid>(ids.begin(), ids.end())) << what;
        rendered.clear();
    };
    rendered.clear();
    model->setCaption(first, "x");
    expectRendered({}, "a caption isn't seen in the picture");
    model->move(0, 1);
    expectRendered({first, second}, "their numbers changed");
    model->move(2, 1);
    model->move(0, -1);
    expectRendered({}, "there is no such place");
    model->remove({first}); // now in the middle
    expectRendered({third}, "its number changed");
    EXPECT_TRUE(model->previews().preview(first).isNull());
    model->undo();
    expectRendered({first, third}, "undone");
    EXPECT_EQ(captions(), (QStringList{"b", "x", "c"}));
    model->reorder(0, 2);
    EXPECT_EQ(captions(), (QStringList{"x", "c", "b"}));
}

TEST_F(GuideModel, BringsSeveralRemovedStepsBackToTheirPlaces)
{
    open({step("a"), step("b"), step("c"), step("d")});
    model->remove({id(0), id(2), QUuid::createUuid()});
    model->remove({id(1)});
    EXPECT_EQ(captions(), (QStringList{"b"}));
    model->undo();
    EXPECT_EQ(captions(), (QStringList{"b", "d"}));
    model->undo();
    EXPECT_EQ(captions(), (QStringList{"a", "b", "c", "d"}));
    EXPECT_FALSE(model->canUndo());
}

TEST_F(GuideModel, KeepsMarkersInThePictureAndKnowsWhereTheyWere)
{
    capture.setOn(CaptureSettings::Switch::StepsMarkClicks, false);
    open({step("a"), step("b", std::nullopt)});
    model->moveMarker(id(0), {-5, 900});
    EXPECT_EQ(model->steps()[0].click, QPointF(0, 600));
    EXPECT_TRUE(model->markClicks());
    EXPECT_TRUE(model->markerMoved(id(0)));
    EXPECT_FALSE(model->markerMoved(id(1)));
    model->moveMarker(id(1), {3, 4});
    EXPECT_TRUE(model->markerMoved(id(1)));
    model->resetMarker(id(1));
    model->resetMarker(id(0));
    EXPECT_FALSE(model->steps()[1].click);
    EXPECT_EQ(model->steps()[0].click, QPointF(100, 100));
}

TEST_F(GuideModel, TakesBackWhatTheEditorGaveIncludingADeletedNumber)
{
    open({step("a"), step("b")});
    std::optional<StepsGuideModel::StepEdit> edit;
    model->openStepEditor = [&](const StepsGuideModel::StepEdit &wanted) { edit = wanted; };
    model->edit(id(1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return edit.has_value(); }));
    EXPECT_EQ(edit->displayName, "Step 2 · Guide");
    ASSERT_EQ(edit->annotations.size(), 2);
    edit->save(filled(QSize(500, 300)), edit->annotations, {});
    ASSERT_TRUE(model->steps()[1].edited && model->steps()[1].edited->badgeID);
    EXPECT_EQ(model->steps()[1].editVersion, 1);

    model->move(1, -1);
    edit.reset();
    model->edit(id(0));
    ASSERT_TRUE(QTest::qWaitFor([&] { return edit.has_value(); }));
    EXPECT_EQ(edit->base.size(), QSize(500, 300));
    EXPECT_EQ(edit->annotations[1].number, 1);
    edit->save(edit->base, {edit->annotations[0]}, {});
    EXPECT_FALSE(model->steps()[0].edited->badgeID);
    model->revertEdits(id(0));
    EXPECT_FALSE(model->steps()[0].edited);
    EXPECT_EQ(model->steps()[0].editVersion, 3);
    model.reset();
    edit->save(edit->base, {}, {}); // the guide has gone
}

TEST_F(GuideModel, RewritesCaptionsWithoutTellingWhatIsHidden)
{
    open({step("Click “ann@example.org”"), step("b"), step("c", std::nullopt)});
    model->improveCaptions();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !posted.isEmpty(); }));
    EXPECT_EQ(posted.value(0).text, "Add an Anthropic API key in Settings › AI & Sharing first");
    prefs.setApiKey("key");
    const auto reply = [](const QByteArray &text) {
        return HttpResponse{200, R"({"content":[{"type":"text","text":")" + text + R"("}]})"};
    };
    machine.http.answers = {reply("“Press Send” "), HttpResponse{500, "no"}, reply("")};
    model->improveCaptions();
    EXPECT_TRUE(QTest::qWaitFor([this] { return model->status().has_value(); }));
    EXPECT_EQ(model->status(), "Claude is writing step 1 of 3…");
    model->move(0, 1); // the reply goes to its step, wherever that is by then
    settle();
    EXPECT_EQ(captions(), (QStringList{"b", "Press Send", "c"}));
    ASSERT_EQ(machine.http.requests.size(), 3);
    EXPECT_TRUE(machine.http.requests[0].body.contains("A purple circle marks where the user clicked."));
    EXPECT_FALSE(machine.http.requests[0].body.contains("ann@example.org"));
    EXPECT_FALSE(machine.http.requests[2].body.contains("purple"));
    EXPECT_EQ(posted.size(), 2);
    EXPECT_EQ(posted.value(1).text, "Some captions stayed as they were. Claude API error (HTTP 500).");
}

TEST_F(GuideModel, StopsRewritingCaptionsWhereTheReasonConcernsAllOfThem)
{
    QList<GuideStep> many;
    for (int i = 0; i < 6; ++i)
        many.append(step("old"));
    open(many);
    prefs.setApiKey("key");
    machine.http.answers = QList<Result<HttpResponse>>(6, HttpResponse{401, "no"});
    model->improveCaptions();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !posted.isEmpty(); }));
    settle();
    EXPECT_EQ(machine.http.requests.size(), 3);
    EXPECT_EQ(posted.size(), 1);
    EXPECT_FALSE(model->isImproving());
}

TEST_F(GuideModel, HidesPrivateTextInWhateverLeaves)
{
    RecognizedLine line;
    line.text = "ann@example.org";
    line.box = QRectF(0.1, 0.5, 0.3, 0.05);
    line.characters = QList<QRectF>(line.text.size(), line.box);
    machine.text.answer = QList<RecognizedLine>{line};
    open({step("Click “ann@example.org”")}, "How to … with ann@example.org");
    ASSERT_EQ(model->steps()[0].redactions.size(), 1);
    EXPECT_EQ(model->safeTitle(), "How to … with •••");
    EXPECT_EQ(model->captions(), (QStringList{"Click “•••”"}));
    QDir().mkpath(home.path("out"));
    model->exportWebFolder(home.path("out"));
    settle();
    ASSERT_EQ(machine.workspace.revealed.size(), 1);
    QFile page(machine.workspace.revealed[0]);
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    EXPECT_FALSE(page.readAll().contains("ann@"));
    EXPECT_TRUE(model->wasExported());
    model->setRedact(false);
    EXPECT_EQ(model->captions(), (QStringList{"Click “ann@example.org”"}));
    EXPECT_EQ(model->safeTitle(), "How to … with ann@example.org");
    model->setTitle(" ");
    EXPECT_EQ(model->safeTitle(), "How-To Guide");
}

TEST_F(GuideModel, LetsNothingOutThatCouldNotBeSearchedForPrivateText)
{
    machine.text.answer = fail("The recogniser is missing.");
    open({step("a"), step("b")});
    QDir().mkpath(home.path("out"));
    QList<int> refusals;
    QObject::connect(model.get(), &StepsGuideModel::refused, model.get(),
                     [&](int steps) { refusals.append(steps); });
    prefs.setApiKey("key");
    const std::function<void()> waysOut[] = {
        [this] { model->exportWebFolder(home.path("out")); },
        [this] { model->exportPDF(home.path("out/a.pdf")); }, [this] { model->exportGuideImage(); },
        [this] { model->saveToLibrary(); }, [this] { model->improveCaptions(); }};
    for (const auto &leave : waysOut) {
        const qsizetype before = refusals.size();
        leave();
        EXPECT_TRUE(QTest::qWaitFor([&] { return refusals.size() > before; }));
        settle();
    }
    EXPECT_EQ(refusals, (QList<int>{2, 2, 2, 2, 2}));
    EXPECT_TRUE(QDir(home.path("out")).isEmpty());
    EXPECT_TRUE(library.items().isEmpty());
    EXPECT_TRUE(machine.http.requests.isEmpty());

    // The ways on: looking again, the editor, and not hiding anything.
    model->applyEdit(id(0), filled(QSize(9, 9)), {}, {}, {});
    EXPECT_EQ(model->unsearched(), (QList<QUuid>{id(1)}));
    model->setRedact(false);
    model->exportPDF(home.path("out/a.pdf"));
    settle();
    EXPECT_TRUE(QFile::exists(home.path("out/a.pdf")));
    EXPECT_TRUE(model->wasExported());
    model->setRedact(true);
    EXPECT_FALSE(model->wasExported()) << "it is another guide now";
    machine.text.answer = QList<RecognizedLine>();
    model->searchAgain();
    model->saveToLibrary(); // waits for the search
    settle();
    EXPECT_EQ(library.items().size(), 2);
    EXPECT_EQ(refusals.size(), 5);
}

TEST_F(GuideModel, WaitsWithWhatShowsAStepUntilAllPicturesAreSearched)
{
    QPromise<Result<QList<RecognizedLine>>> reading;
    reading.start();
    machine.text.pending = reading.future();
    begin({step("a"), step("b"), step("c")});
    QList<QString> opened;
    model->openStepEditor = [&](const StepsGuideModel::StepEdit &edit) {
        EXPECT_FALSE(model->isLookingForSecrets()) << "another picture may tell of more";
        opened.append(edit.displayName);
        EXPECT_EQ(edit.annotations.size(), 3) << "what is hidden, the ring and the number";
    };
    ASSERT_TRUE(QTest::qWaitFor([this] { return !machine.text.sizes.isEmpty(); }));
    model->edit(id(2));
    model->remove({id(1)});
    model->undo(); // it is looked through all the same
    model->exportPDF(home.path("given-up.pdf"));
    model->cancelExport();
    EXPECT_FALSE(model->canCancel());
    model->exportPDF(home.path("wanted.pdf"));
    model->saveToLibrary(); // one way out at a time
    EXPECT_TRUE(model->canCancel());
    QTest::qWait(50);
    EXPECT_TRUE(opened.isEmpty());
    RecognizedLine line;
    line.text = "ann@example.org";
    line.box = QRectF(0.1, 0.5, 0.3, 0.05);
    line.characters = QList<QRectF>(line.text.size(), line.box);
    machine.text.pending.reset();
    machine.text.answer = QList<RecognizedLine>{line};
    reading.addResult(machine.text.answer);
    reading.finish();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !opened.isEmpty(); }));
    EXPECT_EQ(opened, (QList<QString>{"Step 3 · Guide"}));
    settle();
    EXPECT_EQ(machine.text.sizes.size(), 3);
    EXPECT_TRUE(QFile::exists(home.path("wanted.pdf")));
    EXPECT_FALSE(QFile::exists(home.path("given-up.pdf")));
    EXPECT_TRUE(library.items().isEmpty());
}

TEST_F(GuideModel, KeepsFewPreviewsUnpackedAndBringsBackThoseThatAreLookedAt)
{
    QList<GuideStep> many;
    for (int i = 0; i < 40; ++i)
        many.append(step("a"));
    open(many); // 900 × 450 points of 4 bytes each
    GuidePreviews &previews = model->previews();
    EXPECT_LE(previews.unpackedBytes(), GuidePreviews::kMostBytes);
    QList<QUuid> packed;
    for (const GuideStep &each : model->steps()) {
        if (previews.preview(each.id).isNull())
            packed.append(each.id);
    }
    ASSERT_FALSE(packed.isEmpty());
    const qsizetype before = rendered.size();
    previews.wantFirst(packed);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !previews.preview(packed.last()).isNull(); }));
    EXPECT_EQ(previews.preview(packed.last()).size(), QSize(900, 450));
    EXPECT_LE(previews.unpackedBytes(), GuidePreviews::kMostBytes);
    EXPECT_GT(rendered.size(), before) << "whoever shows them is told";
}

TEST_F(GuideModel, SavesEachStepAsACaptureInOneCollection)
{
    GuideStep nobodys = step("b");
    nobodys.app.reset();
    GuideStep lost = step("c");
    lost.image = StepPicture(home.path("gone.png"), QSize(9, 9));
    capture.setOn(CaptureSettings::Switch::StepsAutoRedact, false);
    open({step("a"), nobodys, lost});
    model->saveToLibrary();
    settle();
    EXPECT_TRUE(posted.value(0).text.startsWith("Only 2 of 3 steps were saved to the “Guide” collection."));
    EXPECT_FALSE(model->wasExported()) << "closing it now would lose the third";
    const QString first = library.folder() + "/Guide – Step 1.png";
    EXPECT_TRUE(QFile::exists(first));
    EXPECT_EQ(library.catalog().meta().sources, (QHash<QString, QString>{{"Guide – Step 1.png", "Mail"}}));
    ASSERT_EQ(library.catalog().meta().collections.size(), 1);
    EXPECT_EQ(library.catalog().meta().collections[0].items,
              (QStringList{"Guide – Step 1.png", "Guide – Step 2.png"}));
}

} // namespace
