#include "base/atomic_file.h"
#include "library/conflict_copies.h"
#include "library/library.h"
#include "support/printers.h"
#include "support/stage.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QTest>
#include <gtest/gtest.h>

namespace {

struct Machine : Stage {
    Machine()
    {
        prefs.setSaveFolder(home.path("Shots"));
        library = std::make_unique<Library>(prefs, machine.trash, clock);
        library->watch();
    }
    QString folder() const { return home.path("Shots/"); }
    QStringList files() const
    {
        QStringList names;
        QDirIterator files(folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext())
            names.append(files.next().mid(folder().size()));
        names.removeIf(
            [](const QString &name) { return name.endsWith("lock") || name.contains(".scratch"); });
        return names;
    }
    QByteArray bytes(const QString &name) const
    {
        QFile file(folder() + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void take(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(folder() + name).path());
        EXPECT_TRUE(AtomicFile::write(folder() + name, bytes));
    }
    LibraryCatalog &catalog() const { return library->catalog(); }

    std::unique_ptr<Library> library;
};

// What a tool does that keeps two folders alike: what one side changed goes to the other; of what both
// changed, one stays and the other lies beside it.
class Synchroniser {
public:
    Synchroniser(const Machine &a, const Machine &b) : m_a(a), m_b(b) {}

    // Whether there was anything to do.
    bool run()
    {
        const QStringList all = m_a.files() + m_b.files() + m_last.keys();
        bool isNews = false;
        for (const QString &name : QSet<QString>(all.begin(), all.end())) {
            const QByteArray a = m_a.bytes(name);
            const QByteArray b = m_b.bytes(name);
            if (a != b) {
                isNews = true;
                bring(name, a, b);
            }
            m_last[name] = m_a.bytes(name);
        }
        return isNews;
    }

private:
    void bring(const QString &name, const QByteArray &a, const QByteArray &b)
    {
        const QByteArray last = m_last.value(name);
        if (a != last && b != last && !a.isNull() && !b.isNull()) {
            QString copy = name;
            copy.insert(name.lastIndexOf('.'), ".sync-conflict-20260314-101112-ABCDEFG");
            m_a.take(copy, b);
            m_b.take(copy, b);
            m_last[copy] = b;
            m_b.take(name, a);
        } else if (a != last) {
            give(m_b, name, a);
        } else {
            give(m_a, name, b);
        }
    }
    static void give(const Machine &to, const QString &name, const QByteArray &bytes)
    {
        if (bytes.isNull())
            QFile::remove(to.folder() + name);
        else
            to.take(name, bytes);
    }

    const Machine &m_a;
    const Machine &m_b;
    QHash<QString, QByteArray> m_last;
};

} // namespace

TEST(TwoMachines, KnowTheSameAfterBothChangedWhatTheyShare)
{
    const Machine a;
    const Machine b;
    Synchroniser tool(a, b);
    a.take("shared.png", "picture");
    const QUuid bugs = a.catalog().createCollection("Bugs");
    ASSERT_TRUE(a.catalog().flush());
    const auto becomesQuiet = [&] {
        return QTest::qWaitFor(
            [&] {
                // Time for what either does with it.
                const bool isNews = tool.run();
                QTest::qWait(400);
                return !isNews && ConflictCopies::in(a.folder() + ".lumenpost").isEmpty();
            },
            30'000);
    };
    ASSERT_TRUE(becomesQuiet());
    ASSERT_EQ(b.catalog().meta().collections.size(), 1) << "B learned of it while it ran";

    // Each on its own, without the other.
    a.catalog().setFavorite("shared.png", true);
    a.catalog().setIndexedText("shared.png", "read by A");
    a.catalog().add({"a.png"}, bugs);
    b.catalog().setFavorite("b.png", true);
    b.catalog().setIndexedText("b.png", "read by B");
    b.catalog().add({"b.png"}, bugs);
    ASSERT_TRUE(a.catalog().flush());
    ASSERT_TRUE(b.catalog().flush());
    ASSERT_TRUE(becomesQuiet());
    for (const Machine *each : {&a, &b}) {
        EXPECT_EQ(each->catalog().data().favorites, (QSet<QString>{"shared.png", "b.png"}));
        EXPECT_EQ(each->catalog().data().texts,
                  (QHash<QString, StoredText>{{"shared.png", QString("read by A")},
                                              {"b.png", QString("read by B")}}));
        QStringList items = each->catalog().meta().collections.value(0).items;
        items.sort();
        EXPECT_EQ(items, (QStringList{"a.png", "b.png"}));
    }
}
