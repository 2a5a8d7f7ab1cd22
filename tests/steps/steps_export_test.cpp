#include "base/colors.h"
#include "document/image_files.h"
#include "steps/guide_export.h"
#include "steps/steps_export.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

GuideStep stepOf(const QSize &size, std::optional<QPointF> click)
{
    GuideStep step;
    step.id = QUuid::createUuid();
    step.image = StepPicture(filled(size));
    step.click = click;
    return step;
}

TEST(StepMarks, GrowWithThePictureAndStayInside)
{
    struct Case {
        QSize size;
        QPointF click;
        double R, ring, badge;
        QPointF badgeAt;
    };
    const Case cases[] = {{{400, 300}, {200, 150}, 30, 5, 5.4, {234.5, 115.5}},
                          {{3000, 2000}, {100, 1000}, 90, 14.4, 16.2, {203.5, 896.5}},
                          {{400, 300}, {400, 0}, 30, 5, 5.4, {370, 30}}};
    for (const Case &each : cases) {
        const auto marks = StepsExport::autoAnnotations(stepOf(each.size, each.click), 7, true, true);
        ASSERT_EQ(marks.annotations.size(), 2);
        const Annotation &ring = marks.annotations[0];
        const Annotation &badge = marks.annotations[1];
        EXPECT_EQ(ring.rect(), QRectF(each.click - QPointF(each.R, each.R), QSizeF(2, 2) * each.R));
        EXPECT_EQ(ring.style, 1);
        EXPECT_DOUBLE_EQ(ring.lineWidth, each.ring);
        EXPECT_DOUBLE_EQ(badge.lineWidth, each.badge);
        EXPECT_EQ(badge.start, each.badgeAt);
        EXPECT_EQ(badge.number, 7);
        EXPECT_EQ(badge.color, brandColor());
        EXPECT_EQ(marks.badgeID, badge.id);
    }
}

TEST(StepMarks, HideFirstAndMarkOnlyClicks)
{
    GuideStep step = stepOf({200, 100}, std::nullopt);
    step.redactions = {QRectF(0.1, 0.2, 0.3, 0.4)};
    const auto marks = StepsExport::autoAnnotations(step, 1, true, true);
    ASSERT_EQ(marks.annotations.size(), 1);
    EXPECT_EQ(marks.annotations[0].kind, ToolKind::Blur);
    EXPECT_EQ(marks.annotations[0].rect(), QRectF(20 - 4, 40 - 3, 60 + 8, 40 + 6));
    EXPECT_FALSE(marks.badgeID);
    step.click = QPointF(50, 50);
    EXPECT_EQ(StepsExport::autoAnnotations(step, 1, false, true).annotations.size(), 1);
    EXPECT_EQ(StepsExport::autoAnnotations(step, 1, true, true).annotations[0].kind, ToolKind::Blur);
    EXPECT_TRUE(StepsExport::autoAnnotations(step, 1, false, false).annotations.isEmpty());
}

TEST(StepMarks, RenumberOnlyTheBadgeOfAnEditedStep)
{
    GuideStep step = stepOf({400, 300}, QPointF(200, 150));
    const auto marks = StepsExport::autoAnnotations(step, 1, true, false);
    step.edited = EditedStep{StepPicture(filled({400, 300})), marks.annotations, marks.badgeID, {}};
    const QImage as1 = StepsExport::annotated(step, 1, false, true);
    EXPECT_EQ(as1, StepsExport::annotated(stepOf({400, 300}, QPointF(200, 150)), 1, true, false));
    EXPECT_NE(as1, StepsExport::annotated(step, 8, false, true));
    step.edited->badgeID.reset();
    EXPECT_EQ(as1, StepsExport::annotated(step, 8, false, true));
    step.edited->effects.border = true;
    EXPECT_NE(as1, StepsExport::annotated(step, 8, false, true));
}

TEST(GuideTexts, AreTextInThePage)
{
    const QString page =
        StepsExport::html("A <b> & c", {"<script>alert('x')</script> & \"more\"", ""}, {"a.png", "b.png"});
    EXPECT_FALSE(page.contains("<script"));
    EXPECT_TRUE(page.contains("<title>A &lt;b&gt; &amp; c</title>\n<style>"));
    EXPECT_TRUE(page.contains("<header><h1>A &lt;b&gt; &amp; c</h1></header>\n<main>\n<section>"));
    EXPECT_TRUE(page.contains("<section><h2><span>1</span>&lt;script&gt;alert('x')&lt;/script&gt; &amp; "
                              "\"more\"</h2><img src=\"a.png\" alt=\"Step 1\"></section>\n<section>"));
    EXPECT_TRUE(page.contains("<h2><span>2</span>Step 2</h2>"));
    EXPECT_TRUE(page.endsWith("</main>\n<footer>Made with Lumenpost</footer>\n</body></html>"));
    EXPECT_EQ(StepsExport::markdown("T", {"Click <b>", ""}, {"a.png", "b.png"}),
              "# T\n\n## Step 1\n\nClick \\<b>\n\n![Step 1](a.png)\n\n## Step 2\n\n![Step 2](b.png)\n\n");
}

TEST(GuideTexts, LoseWhatIsPrivate)
{
    EXPECT_EQ(StepsExport::withoutSecrets("Click “ann@example.org” twice"), "Click “•••” twice");
    EXPECT_EQ(StepsExport::withoutSecrets("Click “Save”"), "Click “Save”");
}

TEST(GuideNames, LeadNowhere)
{
    const std::pair<QString, QString> cases[] = {{"a/b:c", "abc"},
                                                 {"../x", "x"},
                                                 {"..", "How-To Guide"},
                                                 {"  ", "How-To Guide"},
                                                 {".hidden", "hidden"},
                                                 {QString("a\nb%1c").arg(QChar(0)), "abc"},
                                                 {"مرحبا 😀", "مرحبا 😀"},
                                                 {QString(400, 'a'), QString(200, 'a')},
                                                 {QString(90, QChar(0x4e2d)), QString(66, QChar(0x4e2d))}};
    for (const auto &[title, name] : cases)
        EXPECT_EQ(GuideExport::fileName(title), name);
}

class WebFolder : public testing::Test {
protected:
    GuideExport::Source source()
    {
        GuideExport::Source source{"Guide", {}, {}};
        for (int i = 0; i < 5; ++i) {
            source.guide.steps.append(stepOf({300, 200}, QPointF(100, 100)));
            source.captions.append("Click");
        }
        return source;
    }
    TemporaryFolder home;
};

TEST_F(WebFolder, HoldsPageTextAndNumberedPictures)
{
    const auto page = GuideExport::webFolder(source(), home.path(), [](int, int) { return true; });
    ASSERT_TRUE(page);
    EXPECT_EQ(*page, home.path("Guide/index.html"));
    EXPECT_EQ(QDir(home.path("Guide")).entryList(QDir::Files, QDir::Name),
              (QStringList{"README.md", "index.html", "step-01.png", "step-02.png", "step-03.png",
                           "step-04.png", "step-05.png"}));
    EXPECT_EQ(*ImageFiles::read(home.path("Guide/step-05.png")),
              StepsExport::annotated(source().guide.steps[4], 5, true, false)
                  .convertToFormat(ImageFiles::read(home.path("Guide/step-05.png"))->format()));
    EXPECT_EQ(*GuideExport::webFolder(source(), home.path(), [](int, int) { return true; }),
              home.path("Guide 2/index.html"));
}

TEST_F(WebFolder, LeavesNothingWhenItIsCancelledAndAReasonWhenItFails)
{
    const auto cancelledOne =
        GuideExport::webFolder(source(), home.path(), [](int done, int) { return done < 2; });
    ASSERT_FALSE(cancelledOne);
    EXPECT_TRUE(cancelledOne.error().isCancelled());
    EXPECT_TRUE(QDir(home.path()).isEmpty());

    QFile file(home.path("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto failed = GuideExport::webFolder(source(), file.fileName(), [](int, int) { return true; });
    ASSERT_FALSE(failed);
    EXPECT_TRUE(failed.error().message.contains(file.fileName()));

    auto lost = source();
    lost.guide.steps[1].image = StepPicture(home.path("gone.png"), QSize(300, 200));
    const auto unreadable = GuideExport::webFolder(lost, home.path(), [](int, int) { return true; });
    ASSERT_FALSE(unreadable);
    EXPECT_EQ(unreadable.error().message, "The picture of step 2 can't be read.");
}

} // namespace
