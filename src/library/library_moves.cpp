// How files come into the Library, change their names, go to the Trash and come back.
#include "library/library.h"

#include "base/atomic_file.h"
#include "base/file_name.h"
#include "base/file_tree.h"
#include "base/free_name.h"
#include "base/log.h"
#include "document/image_files.h"
#include "library/companions.h"
#include "library/intent.h"
#include "library/library_names.h"
#include "library/reservations.h"
#include "library/texts.h"

#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <sys/stat.h>

using LibraryNames::baseOf;
using LibraryNames::nameOf;

namespace {

std::unexpected<Error> notOfLibrary(const QString &path)
{
    return fail(Error::Kind::Invalid, LibraryTexts::tr("%1 is not in the Library.").arg(nameOf(path)));
}

} // namespace

int Library::Outcome::countOf(const QList<Outcome> &outcomes)
{
    return static_cast<int>(
        std::ranges::count_if(outcomes, [](const Outcome &outcome) { return outcome.result.has_value(); }));
}

std::optional<Error> Library::Outcome::firstFailure(const QList<Outcome> &outcomes)
{
    const auto failed =
        std::ranges::find_if_not(outcomes, [](const Outcome &outcome) { return outcome.result.has_value(); });
    return failed == outcomes.end() ? std::nullopt : std::optional(failed->result.error());
}

// The copy of a file into the Library, for any thread.
std::function<Result<QString>()> Library::copyOf(const QString &path)
{
    return [path, folder = folder(), reserved = m_reservations->all(),
            stop = m_stop.get_token()]() -> Result<QString> {
        const QFileInfo info(path);
        struct stat state;
        // The toolkit finds no file whose name is no text.
        if (::stat(FileName::toBytes(path).constData(), &state) != 0 || S_ISDIR(state.st_mode))
            return fail(Error::Kind::NotFound, LibraryTexts::tr("There is no file %1.").arg(path));
        if (!isImage(path) && !isVideo(path))
            return fail(
                Error::Kind::Invalid,
                LibraryTexts::tr("%1 is neither an image nor a film of the Library.").arg(info.fileName()));
        if (isImage(path) && state.st_size > ImageFiles::kMostBytes)
            return fail(Error::Kind::Invalid,
                        LibraryTexts::tr("%1 is too large for a picture: %2.")
                            .arg(info.fileName(), QLocale().formattedDataSize(state.st_size, 0)));
        const QString clean = LibraryNames::cleaned(baseOf(path));
        // A name that would be hidden here, or is too long, gives way; any other is kept as it is.
        const bool isText = info.fileName().isValidUtf16();
        const bool isKept =
            isText && LibraryNames::isProper(info.fileName()) && clean.size() >= baseOf(path).size() - 8;
        auto target = AtomicFile::copyNew(
            path, folder, isKept ? baseOf(path) : (clean.isEmpty() ? LibraryNames::kCapture : clean),
            info.suffix(), reserved, stop);
        if (!target && !target.error().isCancelled())
            return fail(LibraryTexts::tr("Couldn't copy %1 into the Library: %2")
                            .arg(info.fileName(), target.error().message),
                        target.error().detail);
        return target;
    };
}

Result<QString> Library::importFile(const QString &path)
{
    if (contains(path) && FileTree::isFile(path))
        return QFileInfo(path).absoluteFilePath();
    ensureDirectory();
    auto target = copyOf(path)();
    if (target)
        know({nameOf(*target)});
    return target;
}

QFuture<QList<Library::Outcome>> Library::importInBackground(const QStringList &paths)
{
    const auto outcomes = std::make_shared<Outcomes>();
    outcomes->start();
    Q_EMIT working(QStringLiteral("importing files"), QFuture<void>(outcomes->future()));
    importEach(paths, outcomes);
    return outcomes->future();
}

Task<> Library::importEach(QStringList paths, std::shared_ptr<Outcomes> outcomes)
{
    ensureDirectory();
    QList<Outcome> done;
    QStringList imports;
    for (const QString &path : paths) {
        if (contains(path) && FileTree::isFile(path))
            continue;
        auto target = co_await guarded(runInBackground(copyOf(path)), this);
        if (!target && target.error().isCancelled())
            co_return;
        if (target) {
            know({nameOf(*target)});
            imports.append(*target);
            Q_EMIT added({*target});
            Q_EMIT changed();
        } else {
            Log::error(QStringLiteral("A file could not be imported"), target.error());
        }
        done.append({path, std::move(target)});
    }
    if (!imports.isEmpty())
        Q_EMIT imported(imports);
    outcomes->addResult(done);
    outcomes->finish();
}

Result<QString> Library::rename(const QString &path, const QString &name)
{
    const QString clean = LibraryNames::cleaned(name);
    if (clean.isEmpty())
        return fail(Error::Kind::Invalid, LibraryTexts::tr("“%1” is no name for a file.").arg(name));
    if (!contains(path))
        return notOfLibrary(path);
    recover();
    const auto lock = m_catalog.begin();
    if (!lock)
        return std::unexpected(lock.error());
    const QString oldName = nameOf(path);
    if (!Companions(folder()).isThere(oldName))
        return fail(Error::Kind::NotFound, LibraryTexts::tr("There is no file %1.").arg(path));
    QString target;
    for (bool isMoved = false; !isMoved;) {
        target = freeFilePath(folder(), clean, QFileInfo(path).suffix(), m_reservations->all());
        const Intent intent{oldName, nameOf(target), inodeOf(path)};
        if (auto written = Intent::write(Companions::hiddenIn(folder()), intent); !written)
            return std::unexpected(written.error());
        const auto moved = AtomicFile::moveWithoutReplacing(path, target);
        if (!moved) {
            Intent::clear(Companions::hiddenIn(folder()));
            return std::unexpected(moved.error());
        }
        isMoved = *moved;
    }
    finishRename(lock, oldName, nameOf(target));
    Intent::clear(Companions::hiddenIn(folder()));
    know({oldName, nameOf(target)});
    Q_EMIT renamed(path, target);
    Q_EMIT changed();
    return target;
}

void Library::finishRename(const Result<FileLock> &lock, const QString &oldName, const QString &newName)
{
    Companions(folder()).follow(oldName, newName);
    m_catalog.store(lock, CatalogPatch::renaming(m_catalog.data(), oldName, newName));
}

Result<QString> Library::remove(const QString &path)
{
    if (!contains(path))
        return notOfLibrary(path);
    return finishTrashing(path, m_trash.prepare(path, m_stop.get_token()), Undo::None);
}

QFuture<QList<Library::Outcome>> Library::removeInBackground(const QStringList &paths)
{
    const auto outcomes = std::make_shared<Outcomes>();
    outcomes->start();
    Q_EMIT working(QStringLiteral("moving files to the Trash"), QFuture<void>(outcomes->future()));
    removeEach(paths, outcomes);
    return outcomes->future();
}

QFuture<QList<Library::Outcome>> Library::putBackInBackground(const QStringList &trashed)
{
    auto outcomes = std::make_shared<Outcomes>();
    outcomes->start();
    Q_EMIT working(QStringLiteral("putting back what was removed"), QFuture<void>(outcomes->future()));
    putBackEach(trashed, outcomes);
    return outcomes->future();
}

Task<> Library::putBackEach(QStringList trashed, std::shared_ptr<Outcomes> outcomes)
{
    QList<Outcome> done;
    for (const QString &path : trashed) {
        const auto capture = m_removed.find(path);
        if (!capture || !contains(capture->path)) {
            done.append(
                {path, fail(Error::Kind::NotFound,
                            LibraryTexts::tr("%1 can only be had back from the Trash.").arg(nameOf(path)))});
            continue;
        }
        const auto takeBack = [trash = &m_trash, path, target = capture->path, stop = m_stop.get_token()] {
            return trash->takeBack(path, target, stop);
        };
        auto back = co_await guarded(runInBackground(takeBack), this);
        if (!back && back.error().isCancelled())
            co_return;
        // What could not come yet keeps all that belongs to it for the next try.
        if (back)
            m_removed.forget(path);
        done.append({path, finishPuttingBack(*capture, std::move(back))});
    }
    outcomes->addResult(done);
    outcomes->finish();
}

Result<QString> Library::finishPuttingBack(const RemovedCaptures::Capture &capture, Result<QString> back)
{
    if (!back)
        return back;
    const QString name = nameOf(*back);
    const auto lock = m_catalog.begin();
    if (!capture.aside.isEmpty())
        Companions(folder()).takeBack(name, nameOf(capture.path), capture.aside);
    m_catalog.store(lock, capture.patch(m_catalog.data(), name));
    know({name});
    Q_EMIT added({*back});
    Q_EMIT changed();
    return back;
}

Task<> Library::removeEach(QStringList paths, std::shared_ptr<Outcomes> outcomes)
{
    m_removed.begin();
    QList<Outcome> done;
    for (const QString &path : paths) {
        if (!contains(path)) {
            done.append({path, notOfLibrary(path)});
            continue;
        }
        const auto prepare = [trash = &m_trash, path, stop = m_stop.get_token()] {
            return trash->prepare(path, stop);
        };
        auto move = co_await guarded(runInBackground(prepare), this);
        if (!move && move.error().isCancelled())
            co_return;
        done.append({path, finishTrashing(path, std::move(move), Undo::Possible)});
    }
    outcomes->addResult(done);
    outcomes->finish();
}

// The quick rest of a removal, as one with what is known of the file.
Result<QString> Library::finishTrashing(const QString &path, Result<std::unique_ptr<Trash::Move>> move,
                                        Undo undo)
{
    recover();
    const auto lock = m_catalog.begin();
    if (!lock)
        return std::unexpected(lock.error());
    const QString name = nameOf(path);
    if (auto written = Intent::write(Companions::hiddenIn(folder()), {name, {}, inodeOf(path)}); !written)
        return std::unexpected(written.error());
    const auto trashed = move ? (*move)->finish() : Result<QString>(std::unexpected(move.error()));
    const Companions companions(folder());
    const bool isGone = !companions.isThere(name);
    if (isGone && trashed && undo == Undo::Possible) {
        auto capture = RemovedCaptures::Capture::of(m_catalog.data(), path);
        if (companions.hasAny(name))
            capture.aside = m_removed.nextAside(Companions::hiddenIn(folder()));
        finishRemove(lock, name, capture.aside);
        m_removed.add(*trashed, std::move(capture));
    } else if (isGone) {
        finishRemove(lock, name);
    }
    Intent::clear(Companions::hiddenIn(folder()));
    if (!trashed && !isGone) {
        Log::error(QStringLiteral("Couldn't move %1 to the Trash").arg(name), trashed.error());
        return trashed;
    }
    know({name});
    Q_EMIT removed({path});
    Q_EMIT changed();
    // What was gone before has been forgotten, but did not go to the Trash.
    return trashed;
}

void Library::finishRemove(const Result<FileLock> &lock, const QString &name, const QString &aside)
{
    Companions(folder()).setAside(name, aside);
    m_catalog.store(lock, CatalogPatch::forgetting(m_catalog.data(), name));
}

void Library::recover()
{
    const QString directory = Companions::hiddenIn(folder());
    if (!Intent::exists(directory))
        return;
    const auto lock = m_catalog.begin();
    const auto intent = lock ? Intent::read(directory) : std::nullopt;
    if (!lock)
        return;
    if (intent && LibraryNames::isProper(intent->name)) {
        if (LibraryNames::isProper(intent->newName) && intent->inode != 0 &&
            inodeOf(inFolder(intent->newName)) == intent->inode) {
            // It may have both names where a rename takes two steps.
            if (inodeOf(inFolder(intent->name)) == intent->inode)
                FileTree::remove(inFolder(intent->name));
            finishRename(lock, intent->name, intent->newName);
            Log::info(QStringLiteral("Finished an interrupted rename to ") + intent->newName);
        } else if (intent->newName.isEmpty() && !Companions(folder()).isThere(intent->name)) {
            finishRemove(lock, intent->name);
        }
    }
    Intent::clear(directory);
}
