#pragma once

#include "base/pending_work.h"
#include "library/library.h"
#include "library/model/text_indexing.h"
#include "library/ui/batch_job.h"
#include "library/ui/library_grid.h"
#include "library/ui/library_window.h"
#include "library/ui/library_work.h"
#include "pins/pins.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/stage.h"

#include <QTest>
#include <atomic>
#include <gtest/gtest.h>
#include <mutex>

// A window with ten captures, A to J from newest to oldest, in two sections: A to E of today, the rest of the
// day before.
class LibraryWindowTest : public testing::Test, protected Stage {
protected:
    LibraryWindowTest()
    {
        clock.time = QDateTime(QDate(2026, 3, 14), QTime(15, 0));
        prefs.setSaveFolder(home.path("Shots"));
        QDir().mkpath(home.path("Shots"));
        for (int i = 0; i < 10; ++i) {
            const QString path = inFolder(QChar('A' + i));
            EXPECT_TRUE(filled({160, 100}, QColor::fromHsv(i * 30, 200, 200)).save(path));
            QFile file(path);
            EXPECT_TRUE(file.open(QIODevice::ReadWrite));
            const QDateTime date = clock.time.addDays(i < 5 ? 0 : -1).addSecs(-60 * i);
            EXPECT_TRUE(file.setFileTime(date, QFile::FileModificationTime));
        }
        m_library = std::make_unique<Library>(prefs, machine.trash, clock);
        m_model = std::make_unique<LibraryModel>(*m_library, defaults, clock);
        m_model->setCardSize(180);
        m_model->reload();
        m_indexing = std::make_unique<TextIndexing>(*m_library, m_recognizer);
        m_work = std::make_unique<LibraryWork>(LibraryWork::Parts{
            .library = *m_library,
            .workspace = machine.workspace,
            .notices = notices,
            .claude = m_claude,
            .prefs = prefs,
            .pending = m_pending,
            .clock = clock,
            .indexing = *m_indexing,
            .openItem = [this](const QString &path) { m_opened.append(QFileInfo(path).completeBaseName()); },
        });
        m_window = std::make_unique<LibraryWindow>(LibraryPorts{
            .model = *m_model,
            .pasteboard = machine.pasteboard,
            .workspace = machine.workspace,
            .notices = notices,
            .pins = m_pins,
            .movies = machine.movies,
            .settings = prefs,
            .work = *m_work,
            .hashFile = home.path("hashes"),
            .openItem = [this](const QString &path) { m_opened.append(QFileInfo(path).completeBaseName()); },
            .playSound = [this](const QString &, double from) -> std::shared_ptr<void> {
                const std::lock_guard guard(m_soundMutex);
                m_sounds.append(from);
                return std::shared_ptr<void>(this, [this](void *) { ++m_silenced; });
            },
        });
        // Four cards in a row.
        m_window->resize(1180, 740);
        m_window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        m_window->activateWindow();
        grid().setFocus();
        QObject::connect(&notices, &NoticeBoard::posted, &notices,
                         [this](const Notice &notice) { m_told.append(notice.text); });
    }

    QString inFolder(const QString &name) const { return home.path("Shots/" + name + ".png"); }
    LibraryGrid &grid() { return *m_window->grid(); }
    QString selected()
    {
        QString names;
        for (const QString &path : m_model->selectedPaths())
            names.append(QFileInfo(path).completeBaseName());
        return names;
    }
    QPoint middle(int index) { return grid().cardRect(index).center().toPoint(); }

    std::mutex m_soundMutex;
    QList<double> m_sounds; // where the sounds of films began
    std::atomic<int> m_silenced = 0;
    PendingWork m_pending;
    Pins m_pins{machine.pasteboard, notices};
    TextRecognizer m_recognizer{machine.text, machine.faces};
    ClaudeClient m_claude{machine.http, prefs};
    std::unique_ptr<Library> m_library;
    std::unique_ptr<LibraryModel> m_model;
    std::unique_ptr<TextIndexing> m_indexing;
    std::unique_ptr<LibraryWork> m_work;
    std::unique_ptr<LibraryWindow> m_window;
    QStringList m_opened;
    QStringList m_told;
};
