#include "running_program.h"
#include "support/printers.h"

namespace {

// What another program gets when it pastes.
QString pasted()
{
    QProcess reader;
    reader.start("xclip", {"-o", "-selection", "clipboard"});
    reader.waitForFinished(5000);
    return QString::fromUtf8(reader.readAllStandardOutput());
}

} // namespace

class GrabText : public RunningProgram {
protected:
    // All that stands on the screen, as the program itself reads it.
    QString readOnScreen() const
    {
        const QString picture = home.path("screen.png");
        photograph().save(picture);
        QProcess reader;
        reader.setProcessEnvironment(environment());
        reader.start(binary(), {"text", picture});
        reader.waitForFinished(10000);
        return QString::fromUtf8(reader.readAllStandardOutput());
    }
};

TEST_F(GrabText, PutsTheTextOfAnAreaOrAWindowOnTheClipboardAndTellsHowMuch)
{
    QProcess terminal;
    terminal.start("xterm", {"-geometry", "50x6+200+200", "-T", "Quay", "-fa", "DejaVu Sans Mono", "-fs",
                             "14", "-e", "printf 'Harbour office\\nOpen until noon\\n'; read line"});
    ASSERT_TRUE(QTest::qWaitFor([] { return photograph().pixelColor(500, 330).lightness() > 240; }, 10000));
    start();
    const std::pair<QStringList, const char *> gestures[]{
        // A drag around the text, from the desktop over the border of the window; the title stays out.
        {{"mousemove", "190", "224", "mousedown", "1", "mousemove", "400", "280", "mousemove", "560", "330",
          "mouseup", "1"},
         "Copied 2 lines of text"},
        // A click into the window takes all of it, and nothing around it.
        {{"mousemove", "500", "330", "mousemove", "505", "332", "click", "1"}, "lines of text"},
    };
    for (const auto &[gesture, told] : gestures) {
        QProcess::execute("sh", {"-c", "printf none | xclip -selection clipboard"});
        ASSERT_EQ(pasted(), "none");
        const QImage before = photograph();
        key("super+shift+t");
        ASSERT_TRUE(QTest::qWaitFor([&] { return photograph().pixel(5, 5) != before.pixel(5, 5); }, 10000));
        xdotool(gesture);
        EXPECT_TRUE(
            QTest::qWaitFor([] { return pasted().contains("Harbour office\nOpen until noon"); }, 15000))
            << pasted().toStdString();
        EXPECT_LE(pasted().count('\n'), 2) << pasted().toStdString();
        EXPECT_TRUE(QTest::qWaitFor([&] { return readOnScreen().contains(told); }, 10000))
            << readOnScreen().toStdString();
        // Until the notice is gone again.
        EXPECT_TRUE(QTest::qWaitFor([&] { return !readOnScreen().contains(told); }, 15000));
    }
    terminal.kill();
    terminal.waitForFinished();
}
