#pragma once

#include "base/atomic_file.h"
#include "library/library.h"
#include "support/printers.h"
#include "support/stage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// A folder of captures, and a Library over it. Another one over the same folder is what another process has.
class LibraryStage : public testing::Test, protected Stage {
protected:
    LibraryStage()
    {
        prefs.setSaveFolder(home.path("Shots"));
        restart();
    }
    std::unique_ptr<Library> another() { return std::make_unique<Library>(prefs, machine.trash, clock); }
    // The same folder seen by a fresh process.
    void restart()
    {
        m_library.reset();
        m_library = another();
    }

    QString inFolder(const QString &name) const { return home.path("Shots/" + name); }
    QString put(const QString &name, const QByteArray &bytes = "x", int ageSeconds = 0)
    {
        const QString path = inFolder(name);
        QDir().mkpath(QFileInfo(path).path());
        EXPECT_TRUE(AtomicFile::write(path, bytes));
        QFile file(path);
        EXPECT_TRUE(ageSeconds == 0 || (file.open(QIODevice::ReadWrite) &&
                                        file.setFileTime(QDateTime::currentDateTime().addSecs(-ageSeconds),
                                                         QFile::FileModificationTime)));
        return path;
    }
    QByteArray contents(const QString &name) const
    {
        QFile file(inFolder(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    bool exists(const QString &name) const { return QFileInfo::exists(inFolder(name)); }
    // A JSON file of the hidden directory, as other programs find it.
    QJsonDocument json(const QString &name) const
    {
        return QJsonDocument::fromJson(contents(".lumenpost/" + name));
    }
    // A project that says whose it is.
    void putProject(const QString &directory, const QString &owner)
    {
        put(".lumenpost/projects/" + directory + "/project.json", "{}");
        put(".lumenpost/projects/" + directory + "/picture.sha256",
            QByteArray(64, '0') + "  " + owner.toUtf8() + '\n');
    }

    std::unique_ptr<Library> m_library;
};
