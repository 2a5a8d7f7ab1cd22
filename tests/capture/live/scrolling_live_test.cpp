// Scrolling captures of real programs on a desktop that is tall enough to show them whole: the joined picture
// must be what the same program shows in a window that needs no scrolling.
#include "base/async.h"
#include "capture/scrolling_session.h"
#include "platform/platform.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/session/make_platform.h"
#include "support/temporary_folder.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// Where something may move by itself: scroll bars fade.
constexpr int kScrollBarColumns = 48;

template <typename T>
Result<T> awaited(const QFuture<Result<T>> &future)
{
    QEventLoop loop;
    Result<T> value = cancelled();
    whenDone(future, &loop, [&](const Result<T> &result) {
        value = result;
        loop.quit();
    });
    loop.exec();
    return value;
}

class LiveScrolling : public testing::Test {
protected:
    void TearDown() override { close(); }

    // Starts the program and waits until its window stands still.
    void open(const QString &program, const QStringList &arguments, QSize size = {})
    {
        close();
        m_process = std::make_unique<QProcess>();
        m_process->setStandardErrorFile(QProcess::nullDevice());
        m_process->setStandardOutputFile(QProcess::nullDevice());
        m_process->start(program, arguments);
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return !platform.screens->windows().isEmpty() && !windowId().isEmpty(); }, 30000));
        if (size.isValid())
            resize(size);
        waitUntilStill();
    }
    void close()
    {
        if (!m_process)
            return;
        m_process->terminate();
        if (!m_process->waitForFinished(5000))
            m_process->kill();
        m_process->waitForFinished(5000);
        m_process.reset();
        ASSERT_TRUE(QTest::qWaitFor([&] { return ordinaryWindows().isEmpty(); }, 10000));
    }

    QList<ListedWindow> ordinaryWindows() const
    {
        QList<ListedWindow> windows = platform.screens->windows();
        windows.removeIf(
            [](const ListedWindow &window) { return window.layer != 0 || window.frame.width() < 200; });
        return windows;
    }
    QString windowId() const
    {
        const QList<ListedWindow> windows = ordinaryWindows();
        return windows.isEmpty() ? QString() : QString::number(windows.first().id);
    }
    QString xdotool(const QStringList &arguments) const
    {
        QProcess process;
        process.start("xdotool", arguments);
        process.waitForFinished(10000);
        return process.readAllStandardOutput();
    }
    QRect frame() const
    {
        const QList<ListedWindow> windows = ordinaryWindows();
        return windows.isEmpty() ? QRect() : windows.first().frame.toRect();
    }
    // Gives the window, with what the window manager adds, this size.
    void resize(QSize size)
    {
        QHash<QString, int> client;
        for (const QString &line : xdotool({"getwindowgeometry", "--shell", windowId()}).split('\n'))
            client[line.section('=', 0, 0)] = line.section('=', 1).toInt();
        size -= frame().size() - QSize(client["WIDTH"], client["HEIGHT"]);
        xdotool({"windowsize", "--sync", windowId(), QString::number(size.width()),
                 QString::number(size.height())});
    }
    QImage picture(const QRect &region)
    {
        return awaited(
                   platform.pictures->region(platform.screens->screens().first(), region, Pointer::Hidden))
            .value_or(QImage());
    }
    void waitUntilStill()
    {
        constexpr int kStillFor = 1500; // milliseconds; a browser paints late what it has just laid out
        QImage before;
        QElapsedTimer still;
        still.start();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const QImage now = picture(frame());
                if (now != before)
                    still.restart();
                before = now;
                return still.elapsed() > kStillFor;
            },
            40000));
    }

    void capture()
    {
        ScrollingCaptureSession session(
            {*platform.screens, *platform.pictures, *platform.pointer, *platform.permissions},
            platform.screens->screens().first(), frame());
        const Result<std::optional<QImage>> result = awaited(session.run());
        ASSERT_TRUE(result && *result);
        captured = **result;
        EXPECT_GT(session.frames(), 5) << "too short to try anything";
        keepPicture(captured, "captured");
    }

    void expectCapturedIs(const QImage &whole)
    {
        ASSERT_EQ(captured.size(), whole.size());
        const QRect compared = whole.rect().adjusted(0, 0, -kScrollBarColumns, 0);
        const QImage a = captured.copy(compared);
        const QImage b = whole.copy(compared);
        QStringList differing;
        for (int y = 0; y < a.height(); ++y) {
            if (std::memcmp(a.constScanLine(y), b.constScanLine(y), size_t(a.width()) * 4) != 0)
                differing.append(QString::number(y));
        }
        if (differing.isEmpty())
            return;
        keepPicture(whole, "whole");
        ADD_FAILURE() << differing.size() << " rows differ: " << differing.mid(0, 20).join(' ').toStdString();
    }

    // For a look at what went wrong.
    static void keepPicture(const QImage &image, const QString &name)
    {
        const QString folder = qEnvironmentVariable("LUMENPOST_TEST_PICTURES");
        if (!folder.isEmpty())
            image.save(folder + '/' + name + ".png");
    }
    QString writeFile(const QString &name, const QByteArray &content)
    {
        QFile file(m_folder.path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return file.fileName();
    }
    QString lines(int count)
    {
        QByteArray text;
        for (int i = 1; i <= count; ++i)
            text += QByteArray::number(i) + " pack my box with " + QByteArray::number(i * 7919 % 1000) +
                    " jugs\n";
        return writeFile("lines.txt", text);
    }
    QString page()
    {
        QByteArray html =
            "<!doctype html><meta charset=utf-8><style>html{overflow-y:scroll}body{margin:0;font:15px/1.6 "
            "sans-serif}"
            "header{position:sticky;top:0;background:#fff;border-bottom:1px solid #ccc;padding:14px 24px;"
            "box-shadow:0 2px 6px #0002}main{padding:10px 40px}pre{background:#f4f4f8;padding:10px}"
            "</style><header>A header that stays</header><main>";
        for (int i = 1; i <= 26; ++i) {
            html += "<h2>Section " + QByteArray::number(i) + "</h2><p>";
            for (int word = 0; word < 60 + i * 37 % 50; ++word)
                html += QByteArray::number(word * i * 7919 % 10007) + (word % 3 == 0 ? " lorem " : " ipsum ");
            html += "</p><pre>code " + QByteArray::number(i * 31 % 97) + "\n\n\nend</pre>";
        }
        return "file://" + writeFile("page.html", html + "</main>");
    }
    QString folder(const QString &name) const { return m_folder.path(name); }

    Platform platform = makePlatform();
    QImage captured;

private:
    TemporaryFolder m_folder;
    std::unique_ptr<QProcess> m_process;
};

#define NEEDS(program)                                                                                       \
    if (QStandardPaths::findExecutable(program).isEmpty())                                                   \
    GTEST_SKIP() << program << " is not installed"

} // namespace

TEST_F(LiveScrolling, JoinsATerminalsScrollback)
{
    NEEDS("xterm");
    const QString show = "cat " + lines(300) + "; exec sleep 1000";
    open("xterm", {"-geometry", "90x30+100+100", "-sl", "2000", "-e", "sh", "-c", show});
    const QPoint inside = frame().center();
    xdotool({"mousemove", QString::number(inside.x()), QString::number(inside.y()), "click", "--repeat", "90",
             "--delay", "2", "4"});
    waitUntilStill();
    capture();
    open("xterm", {"-geometry", "90x301+100+0", "-e", "sh", "-c", show});
    expectCapturedIs(picture(frame()));
}

TEST_F(LiveScrolling, JoinsATextWindow)
{
    NEEDS("mousepad");
    qputenv("XDG_CONFIG_HOME", folder("config").toUtf8());
    QDir().mkpath(folder("config/gtk-3.0"));
    writeFile("config/gtk-3.0/settings.ini", "[Settings]\ngtk-cursor-blink=0\n");
    const QStringList arguments{"--disable-server", lines(250)};
    open("mousepad", arguments, {800, 600});
    capture();
    open("mousepad", arguments, captured.size());
    expectCapturedIs(picture(frame()));
}

TEST_F(LiveScrolling, JoinsAPageWithAStickyHeader)
{
    NEEDS("chromium");
    const auto arguments = [url = page(), this](const char *profile, const QSize &size) {
        return QStringList{"--no-sandbox",
                           "--disable-gpu",
                           "--no-first-run",
                           "--test-type",
                           "--password-store=basic", // else a desktop with a keyring asks for one
                           "--user-data-dir=" + folder(profile),
                           "--window-position=100,0",
                           QString("--window-size=%1,%2").arg(size.width()).arg(size.height()),
                           "--app=" + url};
    };
    open("chromium", arguments("small", {1000, 800}));
    capture();
    open("chromium", arguments("tall", captured.size()), captured.size());
    expectCapturedIs(picture(frame()));
}
