#pragma once

#include "base/pending_work.h"
#include "library/library.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "settings/capture_settings.h"
#include "steps/steps_guide_model.h"
#include "support/pictures.h"
#include "support/stage.h"

#include <QTest>
#include <gtest/gtest.h>

// A Library and all that a guide is reviewed with.
struct GuideStage : Stage {
    GuideStage()
    {
        prefs.setSaveFolder(home.path("Shots"));
        library.ensureDirectory();
        capture.setOn(CaptureSettings::Switch::StepsAutoRedact, true);
        QObject::connect(&notices, &NoticeBoard::posted, &notices,
                         [this](const Notice &notice) { posted.append(notice); });
    }

    static GuideStep step(const QString &caption, std::optional<QPointF> click = QPointF(100, 100))
    {
        GuideStep step;
        step.id = QUuid::createUuid();
        step.image = StepPicture(filled(QSize(1200, 600), Qt::white));
        step.caption = caption;
        step.click = click;
        step.app = "Mail";
        return step;
    }
    // Not settled yet.
    void begin(const QList<GuideStep> &steps, const QString &title = "Guide")
    {
        model = std::make_unique<StepsGuideModel>(
            steps, title, capture, nullptr,
            StepsGuideModel::Parts{recognizer, claude, prefs, notices, exports});
    }
    void settle()
    {
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return !model->status() && model->previews().isIdle(); }, 20000));
    }
    QStringList captions() const
    {
        QStringList captions;
        for (const GuideStep &each : model->steps())
            captions.append(each.caption);
        return captions;
    }
    QUuid id(int index) const { return model->steps()[index].id; }

    QList<Notice> posted;
    CaptureSettings capture{defaults};
    Library library{prefs, machine.trash, clock};
    PendingWork pending;
    TextRecognizer recognizer{machine.text, machine.faces, {}};
    ClaudeClient claude{machine.http, prefs};
    GuideExports exports{{library, machine.workspace, notices, pending}};
    std::unique_ptr<StepsGuideModel> model;
};
