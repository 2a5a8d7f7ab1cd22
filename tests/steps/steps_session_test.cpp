#include "steps/steps_session.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

Guide sample()
{
    Guide guide;
    guide.title = "How to … in Mail";
    guide.redact = true;
    for (int i = 0; i < 3; ++i) {
        GuideStep step;
        step.id = QUuid::createUuid();
        step.image = StepPicture(filled(QSize(200, 100), QColor(40 * i, 10, 10)));
        step.caption = QString("Step 😀 %1").arg(i);
        step.click = QPointF(10.5, 20);
        step.app = "Mail";
        step.redactions = {QRectF(0.1, 0.2, 0.3, 0.4)};
        guide.originalClicks.insert(step.id, QPointF(1, 2));
        guide.steps.append(step);
    }
    guide.steps[1].click.reset();
    Annotation badge;
    badge.id = QUuid::createUuid();
    badge.kind = ToolKind::Step;
    badge.number = 9;
    badge.color = Qt::red;
    guide.steps[2].edited = EditedStep{StepPicture(filled(QSize(50, 40), Qt::blue)), {badge}, badge.id, {}};
    guide.steps[2].editVersion = 1;
    return guide;
}

TEST(StepsSession, GivesAGuideBackWhole)
{
    const TemporaryFolder root;
    const Guide guide = sample();
    QString folder;
    {
        const auto session = StepsSession::create(root.path());
        ASSERT_TRUE(session);
        folder = (*session)->folder();
        (*session)->save(guide);
        EXPECT_TRUE(StepsSession::unfinished(root.path()).isEmpty()) << "it is being worked on";
        EXPECT_FALSE(StepsSession::resume(folder));
    }
    const auto left = StepsSession::unfinished(root.path());
    ASSERT_EQ(left.size(), 1);
    EXPECT_EQ(left[0].title, guide.title);
    EXPECT_EQ(left[0].count, 3);
    const auto session = StepsSession::resume(folder);
    ASSERT_TRUE(session);
    const auto read = (*session)->read();
    ASSERT_TRUE(read);
    ASSERT_EQ(read->steps.size(), 3);
    for (int i = 0; i < 3; ++i) {
        GuideStep step = read->steps[i];
        EXPECT_EQ(step.image.image(), guide.steps[i].image.image());
        step.image = guide.steps[i].image;
        step.edited = guide.steps[i].edited;
        EXPECT_EQ(step, guide.steps[i]);
    }
    EXPECT_EQ(read->originalClicks, guide.originalClicks);
    const auto &edited = read->steps[2].edited;
    ASSERT_TRUE(edited && edited->annotations.size() == 1);
    EXPECT_EQ(edited->badgeID, edited->annotations[0].id);
    EXPECT_EQ(edited->annotations[0].number, 9);
    EXPECT_EQ(edited->base.image(), guide.steps[2].edited->base.image());
    EXPECT_EQ(QFile::permissions(folder) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST(StepsSession, SurvivesAKilledProgram)
{
    const TemporaryFolder root;
    const pid_t child = fork();
    if (child == 0) {
        const auto session = StepsSession::create(root.path());
        (*session)->save(sample());
        const QString description = (*session)->folder() + "/guide.json";
        while (!QFile::exists(description))
            usleep(1000);
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    const auto left = StepsSession::unfinished(root.path());
    ASSERT_EQ(left.size(), 1);
    EXPECT_EQ(left[0].count, 3);
}

TEST(StepsSession, KeepsInMemoryWhatAFullDiskRefuses)
{
    const TemporaryFolder root;
    const auto session = StepsSession::create(root.path());
    ASSERT_TRUE(session);
    Guide guide = sample();
    const QImage before = guide.steps[0].image.image();
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    (*session)->save(guide);
    std::optional<Error> failure;
    EXPECT_TRUE(QTest::qWaitFor([&] { return (failure = (*session)->takeFailure()).has_value(); }));
    setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_EQ(guide.steps[0].image.image(), before);
    EXPECT_TRUE(guide.steps[0].image.path().isEmpty());
    (*session)->save(guide);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !guide.steps[2].image.path().isEmpty(); }));
    EXPECT_EQ(guide.steps[0].image.image(), before);
}

TEST(StepsSession, ReadsNothingOutsideItsFolderAndDropsEmptyOnes)
{
    const TemporaryFolder root;
    ASSERT_TRUE(filled(QSize(9, 9)).save(root.path("secret.png")));
    const auto plant = [&](const QString &name, const QByteArray &json) {
        QDir().mkpath(root.path(name));
        QFile file(root.path(name + "/guide.json"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
    };
    plant("planted",
          R"({"steps":[{"id":"{6b29fc40-ca47-1067-b31d-00dd010662da}","picture":"../secret.png"}]})");
    plant("broken", "{");
    QDir().mkpath(root.path("empty"));
    const TemporaryFolder elsewhere;
    ASSERT_TRUE(filled(QSize(9, 9)).save(elsewhere.path("kept.png")));
    ASSERT_TRUE(QFile::link(elsewhere.path(), root.path("linked")));
    EXPECT_TRUE(StepsSession::unfinished(root.path()).isEmpty());
    for (const char *name : {"planted", "broken", "empty"})
        EXPECT_FALSE(QFile::exists(root.path(name))) << name;
    EXPECT_TRUE(QFile::exists(root.path("secret.png")));
    EXPECT_TRUE(QFile::exists(elsewhere.path("kept.png")));
}

} // namespace
