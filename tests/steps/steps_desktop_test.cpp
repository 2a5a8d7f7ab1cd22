#include "base/notice.h"
#include "platform/accessible_elements.h"
#include "platform/face_engine.h"
#include "platform/permissions.h"
#include "platform/platform.h"
#include "platform/pointer_control.h"
#include "platform/press_pictures.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/session/make_platform.h"
#include "platform/sounds.h"
#include "platform/text_engine.h"
#include "platform/workspace.h"
#include "services/text_recognizer.h"
#include "steps/steps_recorder.h"
#include "support/printers.h"
#include "support/temporary_folder.h"
#include "support/xdotool.h"

#include <QProcess>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>
#include <iostream>

namespace {

// A whole recorder on the real machine, and a form of another program.
class StepsOnADesktop : public testing::Test {
protected:
    void SetUp() override
    {
        form.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        form.start(QStringLiteral(LUMENPOST_BINARY_DIR "/tests/steps_form_window"), QStringList());
        ASSERT_TRUE(QTest::qWaitFor([this] { return form.canReadLine(); }, 20000));
        for (const QByteArray &number : form.readLine().simplified().split(' '))
            places.append(number.toInt());
        ASSERT_EQ(places.size(), 8);
        ASSERT_TRUE(recorder.start([this](const QList<GuideStep> &steps) { delivered = steps; }));
    }
    void TearDown() override
    {
        form.kill();
        form.waitForFinished();
    }
    void click(int place)
    {
        xdotool({"mousemove", QString::number(places[2 * place]), QString::number(places[2 * place + 1]),
                 "click", "1"});
    }
    bool hasSteps(qsizetype count)
    {
        return QTest::qWaitFor([&] { return recorder.steps().size() >= count; }, 20000);
    }

    // A press there gives that caption, in the end: on a busy machine a program may answer too late.
    bool isNamed(int place, const QString &caption)
    {
        for (int attempt = 0; attempt < 10; ++attempt) {
            const qsizetype before = recorder.steps().size();
            QTest::qWait(StepsRecorder::kDoubleClick.count() + 1);
            click(place);
            if (hasSteps(before + 1) && recorder.steps().last().caption == caption)
                return true;
        }
        std::cerr << qPrintable("The last one was: " + recorder.steps().last().caption) << '\n';
        return false;
    }

    TemporaryFolder folder;
    Platform machine = makePlatform();
    NoticeBoard notices;
    TextRecognizer recognizer{*machine.text, *machine.faces, {}};
    StepsRecorder recorder{{*machine.presses, *machine.elements, *machine.screens, *machine.pictures,
                            *machine.pointer, *machine.permissions, *machine.workspace, *machine.sounds,
                            recognizer, notices, folder.path()}};
    QProcess form;
    QList<int> places; // of the field, the button, the check box and the menu
    std::optional<QList<GuideStep>> delivered;
};

TEST_F(StepsOnADesktop, TakesThePictureBeforeTheProgramReactsAndNamesWhatWasPressed)
{
    click(1);
    ASSERT_TRUE(hasSteps(1));
    EXPECT_TRUE(isNamed(0, "Click the “Full name” field"));
    EXPECT_TRUE(isNamed(1, "Click “Send order”"));
    EXPECT_TRUE(isNamed(2, "Toggle “Accept terms”"));
    EXPECT_TRUE(isNamed(3, "Open the “Account” menu"));
    const QList<GuideStep> &steps = recorder.steps();
    for (const GuideStep &step : steps)
        EXPECT_FALSE(step.caption.contains("typed-secret"));
    EXPECT_EQ(steps[0].app, "steps_form_window");
    const auto isRed = [](const GuideStep &step) {
        const QImage image = step.image.image();
        return image.pixelColor(image.width() / 2, image.height() - 20) == QColor(Qt::red);
    };
    EXPECT_FALSE(isRed(steps[0])) << "the picture is of the press, not of what followed";
    EXPECT_TRUE(isRed(steps[1]));
    recorder.done();
    ASSERT_TRUE(QTest::qWaitFor([this] { return delivered.has_value(); }));
    EXPECT_EQ(delivered->size(), recorder.steps().size());
}

TEST_F(StepsOnADesktop, MissesNoPressHoweverBusyItIs)
{
    for (int i = 0; i < 5; ++i) {
        click(2);
        QTest::qSleep(int(StepsRecorder::kDoubleClick.count()) + 30); // our event loop stands still
    }
    ASSERT_TRUE(hasSteps(5));
}

TEST_F(StepsOnADesktop, TakesNoStepOfItsOwnWindows)
{
    QWidget own;
    own.setGeometry(900, 600, 200, 100);
    own.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&own));
    xdotool({"mousemove", "1000", "650", "click", "1"});
    QTest::qWait(StepsRecorder::kDoubleClick.count());
    click(2);
    ASSERT_TRUE(hasSteps(1));
    EXPECT_EQ(recorder.steps().size(), 1);
    EXPECT_EQ(recorder.steps()[0].app, "steps_form_window");
}

TEST_F(StepsOnADesktop, GoesOnWhenTheProgramHangs)
{
    click(2);
    ASSERT_TRUE(hasSteps(1));
    kill(pid_t(form.processId()), SIGSTOP);
    QTest::qWait(StepsRecorder::kDoubleClick.count());
    click(1);
    const bool came = hasSteps(2);
    kill(pid_t(form.processId()), SIGCONT);
    ASSERT_TRUE(came);
    EXPECT_EQ(recorder.steps()[1].caption, "Click in steps_form_window");
}

} // namespace
