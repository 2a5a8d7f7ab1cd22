#pragma once

#include "base/atomic_file.h"
#include "base/notice.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "library/library.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// A folder of captures, and a Library over it. Another one over the same folder is what another process has.
class LibraryStage : public testing::Test {
protected:
    LibraryStage()
    {
        m_settings.setSaveFolder(m_home.path("Shots"));
        restart();
    }
    std::unique_ptr<Library> another() { return std::make_unique<Library>(m_settings, m_trash, m_clock); }
    // The same folder seen by a fresh process.
    void restart()
    {
        m_library.reset();
        m_library = another();
    }

    QString inFolder(const QString &name) const { return m_home.path("Shots/" + name); }
    QString put(const QString &name, const QByteArray &bytes = "x")
    {
        const QString path = inFolder(name);
        QDir().mkpath(QFileInfo(path).path());
        EXPECT_TRUE(AtomicFile::write(path, bytes));
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

    TemporaryFolder m_home;
    FakePaths m_paths{m_home.path()};
    FakeSecrets m_secrets;
    FakeLoginItem m_loginItem;
    NoticeBoard m_notices;
    Defaults m_defaults{{}};
    AppSettings m_settings{m_defaults, m_secrets, m_loginItem, m_paths, m_notices};
    FakeTrash m_trash{m_home.path("Trash")};
    FakeClock m_clock;
    std::unique_ptr<Library> m_library;
};
