#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// What one call of the program left behind.
struct Outcome {
    int status = -1;
    QString output;
    QString errors;

    QStringList lines() const { return output.split('\n', Qt::SkipEmptyParts); }
    QJsonDocument json() const { return QJsonDocument::fromJson(output.toUtf8()); }
};

// A home of its own for the calls of one test: nothing of the user's is read or written.
class CommandLine : public testing::Test {
protected:
    enum class Screen { None, Desktop };
    explicit CommandLine(Screen screen = Screen::None)
    {
        m_environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"LUMENPOST_LIBRARY", "QT_QPA_PLATFORM"})
            m_environment.remove(name);
        if (screen == Screen::None) {
            for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
                m_environment.remove(name);
        }
        m_environment.insert("HOME", path("home"));
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            m_environment.insert(name, path("home/") + name);
        QDir().mkpath(path("home"));
        QDir().mkpath(path("library"));
    }

    QString path(const QString &name) const { return m_folder.filePath(name); }
    void set(const QString &name, const QString &value) { m_environment.insert(name, value); }

    QString picture(const QString &name, const QSize &size = {64, 48}, const QColor &color = Qt::white)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path(name)));
        return path(name);
    }

    Outcome call(const QStringList &words) { return run(program(), words); }
    // Through a shell that prepares the call, such as "ulimit -f 1; exec" (no file beyond 512 bytes).
    Outcome callThrough(const QString &preparation, const QStringList &words, const QString &rest = {})
    {
        return run("/bin/sh", QStringList{"-c", preparation + " \"$0\" \"$@\" " + rest, program()} + words);
    }
    Outcome callWithFullDisk(const QStringList &words) { return callThrough("ulimit -f 1; exec", words); }

    // Files in a folder under the working folder, hidden ones too.
    QStringList filesIn(const QString &folder) const
    {
        return QDir(path(folder)).entryList(QDir::Files | QDir::Hidden);
    }

    static testing::AssertionResult isRefused(const Outcome &outcome, int status, const QString &words)
    {
        // One line, "lumenpost: Sentence.", and nothing on standard output.
        static const QRegularExpression sentence("\\Alumenpost: [^\\n]+\\.\\n\\z");
        if (outcome.status == status && outcome.output.isEmpty() &&
            sentence.match(outcome.errors).hasMatch() && outcome.errors.contains(words))
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "status " << outcome.status << " for " << status << ", output \""
               << outcome.output.toStdString() << "\", errors \"" << outcome.errors.toStdString()
               << "\" for one sentence with \"" << words.toStdString() << "\"";
    }

    static testing::AssertionResult isDone(const Outcome &outcome)
    {
        if (outcome.status == 0 && outcome.errors.isEmpty())
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << "status " << outcome.status << ", errors \"" << outcome.errors.toStdString() << "\"";
    }

private:
    static QString program() { return QStringLiteral(LUMENPOST_BINARY_DIR "/bin/lumenpost"); }
    Outcome run(const QString &command, const QStringList &words)
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.setWorkingDirectory(m_folder.path());
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(command, words);
        EXPECT_TRUE(process.waitForFinished(60000)) << words.join(' ').toStdString();
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << words.join(' ').toStdString();
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
};
