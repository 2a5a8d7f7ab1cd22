#include "platform/desktop/desktop_trash.h"

#include "base/atomic_file.h"
#include "base/file_errors.h"
#include "base/file_handle.h"
#include "base/file_name.h"
#include "platform/texts.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>
#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::unexpected<Error> untrashable(const QString &path, const QString &detail)
{
    return fail(PlatformTexts::tr("“%1” could not be moved to the Trash.").arg(QFileInfo(path).fileName()),
                detail);
}

// A folder with "files" and "info" in it.
struct Place {
    QString folder;
    QString top; // what the paths in its records begin at; empty: they are absolute

    QString file(const QString &name) const { return folder + QStringLiteral("/files/") + name; }
    QString record(const QString &name) const
    {
        return folder + QStringLiteral("/info/") + name + QStringLiteral(".trashinfo");
    }
};

// A folder of the user's own, not one that somebody has planted. Leaves the reason in errno.
bool makeFolder(const QString &path)
{
    const QByteArray name = FileName::toBytes(path);
    struct stat state;
    if (mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST)
        return false;
    if (lstat(name.constData(), &state) != 0)
        return false;
    errno = S_ISDIR(state.st_mode) ? EACCES : ENOTDIR;
    return S_ISDIR(state.st_mode) && state.st_uid == getuid() && access(name.constData(), W_OK | X_OK) == 0;
}

bool makePlace(const Place &place)
{
    return makeFolder(place.folder) && makeFolder(place.folder + QStringLiteral("/files")) &&
           makeFolder(place.folder + QStringLiteral("/info"));
}

// The user's trash; it is made where this is the first use of it.
Result<Place> homeTrash(const QString &path)
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (!QDir::isAbsolutePath(data))
        return untrashable(path, QStringLiteral("there is no folder for data"));
    QDir().mkpath(data);
    const QFileInfo trash(data + QStringLiteral("/Trash"));
    const Place place{trash.isSymLink() ? trash.canonicalFilePath() : trash.filePath(), {}};
    if (!makePlace(place))
        return untrashable(path, QStringLiteral("%1: %2").arg(place.folder, FileErrors::reason(errno)));
    return place;
}

// The trash at the top of the file's volume, where there is one or one can be made.
std::optional<Place> volumeTrash(const QString &path)
{
    const QString top = QStorageInfo(QFileInfo(path).absolutePath()).rootPath();
    if (top.isEmpty())
        return std::nullopt;
    const QString prefix = top.endsWith(QLatin1Char('/')) ? top : top + QLatin1Char('/');
    const QString shared = prefix + QStringLiteral(".Trash"), number = QString::number(getuid());
    struct stat state;
    if (lstat(FileName::toBytes(shared).constData(), &state) == 0 && S_ISDIR(state.st_mode) &&
        (state.st_mode & S_ISVTX)) {
        if (const Place place{shared + QLatin1Char('/') + number, prefix}; makePlace(place))
            return place;
    }
    const Place own{shared + QLatin1Char('-') + number, prefix};
    return makePlace(own) ? std::optional(own) : std::nullopt;
}

// What a file can be moved about in: the parts of a volume, and one that is mounted twice, are several.
std::optional<std::array<quint64, 3>> realmOf(const QString &folder)
{
    struct statx state;
    if (statx(AT_FDCWD, FileName::toBytes(folder).constData(), 0, STATX_MNT_ID, &state) != 0)
        return std::nullopt;
    return std::array<quint64, 3>{state.stx_dev_major, state.stx_dev_minor,
                                  state.stx_mask & STATX_MNT_ID ? state.stx_mnt_id : 0};
}

// A name in the trash, which is ours as soon as its record is there; given back unless it was kept.
class Claim {
public:
    static Result<Claim> make(const Place &place, const QString &path)
    {
        const QFileInfo info(path);
        const QString ending = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
        const QString stem = info.fileName().chopped(ending.size());
        for (int n = 1;; ++n) {
            const QString name =
                n == 1 ? info.fileName() : stem + QLatin1Char(' ') + QString::number(n) + ending;
            const QByteArray record = FileName::toBytes(place.record(name));
            FileHandle handle(::open(record.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
            if (!handle.isOpen() && errno == EEXIST)
                continue;
            if (!handle.isOpen())
                return untrashable(path, FileErrors::reason(errno));
            Claim claim(place.file(name), record);
            struct stat state;
            if (lstat(FileName::toBytes(claim.file()).constData(), &state) == 0)
                continue; // one without a record
            if (!claim.fill(handle, place, path))
                return untrashable(path, FileErrors::reason(errno));
            return claim;
        }
    }
    Claim(Claim &&other) noexcept
        : m_file(std::move(other.m_file)), m_record(std::exchange(other.m_record, {}))
    {}
    Claim &operator=(Claim &&) = delete;
    ~Claim()
    {
        if (!m_record.isEmpty())
            unlink(m_record.constData());
    }

    const QString &file() const { return m_file; }
    void keep() { m_record.clear(); }

private:
    Claim(QString file, QByteArray record) : m_file(std::move(file)), m_record(std::move(record)) {}

    static bool fill(FileHandle &handle, const Place &place, const QString &path)
    {
        QString recorded = QFileInfo(path).absoluteFilePath();
        if (!place.top.isEmpty() && recorded.startsWith(place.top))
            recorded = recorded.mid(place.top.size());
        const QByteArray lines =
            "[Trash Info]\nPath=" + FileName::toBytes(recorded).toPercentEncoding("/") +
            "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + "\n";
        errno = ENOSPC; // for a file that takes less
        return ::write(handle.number(), lines.constData(), std::size_t(lines.size())) == lines.size() &&
               handle.close();
    }

    QString m_file;
    QByteArray m_record;
};

// A file copied to where it can't be moved, then taken away.
class CopiedMove : public Trash::Move {
public:
    static Result<std::unique_ptr<Move>> make(const QString &path, const Place &place,
                                              const struct stat &state, const std::stop_token &stop)
    {
        if (!S_ISREG(state.st_mode) && !S_ISLNK(state.st_mode))
            return untrashable(path, QStringLiteral("no regular file, on a volume without a trash"));
        auto claim = Claim::make(place, path);
        if (!claim)
            return std::unexpected(claim.error());
        const auto copied = S_ISLNK(state.st_mode) ? copyLink(path, claim->file())
                                                   : AtomicFile::copy(path, claim->file(), stop);
        if (!copied)
            return copied.error().kind == Error::Kind::Cancelled ? std::unexpected(copied.error())
                                                                 : untrashable(path, copied.error().message);
        return std::make_unique<CopiedMove>(path, *std::move(claim), state);
    }
    CopiedMove(QString path, Claim claim, const struct stat &state)
        : m_path(std::move(path)), m_claim(std::move(claim)), m_state(state)
    {}
    ~CopiedMove() override
    {
        if (!m_isFinished)
            unlink(FileName::toBytes(m_claim.file()).constData());
    }

    Result<QString> finish() override
    {
        const QByteArray name = FileName::toBytes(m_path);
        struct stat now;
        if (lstat(name.constData(), &now) != 0)
            return untrashable(m_path, FileErrors::reason(errno));
        if (now.st_ino != m_state.st_ino || now.st_size != m_state.st_size ||
            now.st_ctim.tv_sec != m_state.st_ctim.tv_sec || now.st_ctim.tv_nsec != m_state.st_ctim.tv_nsec)
            return untrashable(m_path, QStringLiteral("it was changed meanwhile"));
        if (unlink(name.constData()) != 0)
            return untrashable(m_path, FileErrors::reason(errno));
        m_isFinished = true;
        m_claim.keep();
        return m_claim.file();
    }

private:
    static Result<void> copyLink(const QString &path, const QString &target)
    {
        QByteArray goal(PATH_MAX, Qt::Uninitialized);
        const ssize_t length =
            readlink(FileName::toBytes(path).constData(), goal.data(), std::size_t(goal.size() - 1));
        goal.truncate(std::max<ssize_t>(length, 0));
        if (length < 0 || symlink(goal.constData(), FileName::toBytes(target).constData()) != 0)
            return FileErrors::cannotWrite(target, errno);
        return {};
    }

    QString m_path;
    Claim m_claim;
    struct stat m_state;
    bool m_isFinished = false;
};

// A file that is moved as it is.
class PlainMove : public Trash::Move {
public:
    PlainMove(QString path, Place place) : m_path(std::move(path)), m_place(std::move(place)) {}

    Result<QString> finish() override
    {
        while (true) {
            auto claim = Claim::make(m_place, m_path);
            if (!claim)
                return std::unexpected(claim.error());
            const auto moved = AtomicFile::moveWithoutReplacing(m_path, claim->file());
            if (!moved)
                return untrashable(m_path, moved.error().message);
            if (*moved) {
                claim->keep();
                return claim->file();
            }
        }
    }

private:
    QString m_path;
    Place m_place;
};

} // namespace

Result<std::unique_ptr<Trash::Move>> DesktopTrash::prepare(const QString &path, const std::stop_token &stop)
{
    struct stat state;
    if (lstat(FileName::toBytes(path).constData(), &state) != 0) {
        if (errno != ENOENT && errno != ENOTDIR)
            return untrashable(path, FileErrors::reason(errno));
        return fail(Error::Kind::NotFound,
                    PlatformTexts::tr("There is no file “%1”.").arg(QFileInfo(path).fileName()), path);
    }
    const auto home = homeTrash(path);
    const auto realm = realmOf(QFileInfo(path).absolutePath());
    if (home && realm == realmOf(home->folder))
        return std::make_unique<PlainMove>(path, *home);
    // Where the user's own trash can't be had, its volume gets no other.
    if (home || realm != realmOf(QDir::homePath())) {
        if (const auto place = volumeTrash(path))
            return std::make_unique<PlainMove>(path, *place);
    }
    if (!home)
        return std::unexpected(home.error());
    return CopiedMove::make(path, *home, state, stop);
}

Result<QString> DesktopTrash::takeBack(const QString &trashed, const QString &path,
                                       const std::stop_token &stop)
{
    const QFileInfo target(path);
    const QString folder = target.absolutePath();
    auto back = AtomicFile::moveNew(trashed, folder, target.completeBaseName(), target.suffix());
    if (!back) { // it may lie on another volume
        back = AtomicFile::copyNew(trashed, folder, target.completeBaseName(), target.suffix(), {}, stop);
        // What can't be taken out of the trash stays listed there.
        if (back && unlink(FileName::toBytes(trashed).constData()) != 0)
            return back;
    }
    if (!back)
        return back;
    const QFileInfo file(trashed);
    const Place place{QFileInfo(file.absolutePath()).absolutePath(), {}};
    unlink(FileName::toBytes(place.record(file.fileName())).constData());
    return back;
}
