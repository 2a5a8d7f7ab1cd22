#pragma once

#include "support/temporary_folder.h"
#include "support/xdotool.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

// The built program on the desktop of the test, in a home of its own, driven as a person would.
class RunningProgram : public testing::Test {
protected:
    ~RunningProgram() override
    {
        program.kill();
        program.waitForFinished();
    }

    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", home.path());
        environment.insert("XDG_CONFIG_HOME", home.path("config"));
        environment.insert("XDG_STATE_HOME", home.path("state"));
        environment.insert("XDG_CACHE_HOME", home.path("cache"));
        environment.insert("XDG_DATA_HOME", home.path("data"));
        for (const QString &name : more.keys())
            environment.insert(name, more.value(name));
        return environment;
    }
    static QString binary() { return QStringLiteral(LUMENPOST_BINARY_DIR "/bin/lumenpost"); }

    QString defaultsPath() const { return home.path("config/com.oakfenrow.lumenpost/defaults.json"); }
    void set(const QByteArray &json)
    {
        QDir().mkpath(home.path("config/com.oakfenrow.lumenpost"));
        QFile file(defaultsPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(json);
    }
    void start()
    {
        // A first start shows the guide, which tests of other things don't want.
        if (!QFile::exists(defaultsPath()))
            set(R"({"didShowWelcome": true})");
        const auto before = log().count("Ready for shortcuts");
        program.setProcessEnvironment(environment());
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(binary(), QStringList{});
        ASSERT_TRUE(QTest::qWaitFor([&] { return log().count("Ready for shortcuts") > before; }, 20000));
    }
    // What a command says that is to end with that status.
    QString answer(const QStringList &words, int status = 0) const
    {
        QProcess process;
        process.setProcessEnvironment(environment());
        process.start(binary(), words);
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitCode(), status) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    QByteArray log() const
    {
        QFile file(home.path("state/lumenpost/lumenpost.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool waitForLog(const QByteArray &text)
    {
        return QTest::qWaitFor([&] { return log().contains(text); }, 20000);
    }

    QStringList captures(const QString &pattern = QStringLiteral("*.png")) const
    {
        QStringList paths;
        const QDir folder(home.path("Pictures/Lumenpost"));
        for (const QFileInfo &info :
             folder.entryInfoList({pattern}, QDir::Files, QDir::Time | QDir::Reversed))
            paths.append(info.filePath());
        return paths;
    }
    bool waitForCaptures(qsizetype count)
    {
        return QTest::qWaitFor([&] { return captures().size() >= count; }, 20000);
    }

    static void key(const QString &key) { xdotool({"key", key}); }
    static QImage photograph() { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); }

    TemporaryFolder home;
    QProcess program;
    QProcessEnvironment more; // for the program alone
};
