#include "library/catalog_files.h"

#include "base/atomic_file.h"
#include "base/file_errors.h"
#include "base/file_handle.h"
#include "base/log.h"
#include "base/read_file.h"
#include "base/scratch_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

const QString kTexts = QStringLiteral("text-index.json");
const QString kFavorites = QStringLiteral("favorites.json");
const QString kMeta = QStringLiteral("library.json");
const std::array<QString, 3> kJson{kTexts, kFavorites, kMeta};
const QString kJournal = QStringLiteral("changes.jsonl");
const QString kFolding = QStringLiteral("folding.jsonl");
// A fold of 100,000 captures takes a second.
constexpr std::chrono::milliseconds kFoldPatience{30'000};

using Mark = CatalogFiles::Mark;

Mark markOf(const struct stat &state)
{
    return {state.st_ino, state.st_size, state.st_mtim.tv_sec * 1'000'000'000LL + state.st_mtim.tv_nsec};
}

Mark markAt(const QString &path)
{
    struct stat state;
    return stat(QFile::encodeName(path).constData(), &state) == 0 ? markOf(state) : Mark{};
}

// The bytes of a file from an offset; null when there is none.
Result<QByteArray> bytesOf(const QString &path, qint64 from = 0)
{
    // The texts of a million captures; a journal is far smaller.
    constexpr qint64 kMostBytes = 1'000'000'000;
    auto bytes = ReadFile::rest(path, from, kMostBytes);
    if (!bytes && bytes.error().kind == Error::Kind::NotFound)
        return QByteArray();
    if (bytes && bytes->isNull())
        return QByteArray("");
    return bytes;
}

// Applies the patches of a journal from an offset. A line that can't be understood is passed over; one that a
// crash cut off is left out.
Result<CatalogPatch> applyLines(const QString &journal, qint64 from, CatalogData &data)
{
    const auto bytes = bytesOf(journal, from);
    if (!bytes)
        return std::unexpected(bytes.error());
    CatalogPatch touched;
    for (const QByteArray &line : bytes->left(bytes->lastIndexOf('\n') + 1).split('\n')) {
        const auto document = QJsonDocument::fromJson(line);
        if (!document.isObject())
            continue;
        const auto patch = CatalogPatch::fromJson(document.object());
        if (!patch)
            continue;
        patch->apply(data);
        touched.add(*patch);
    }
    return touched;
}

std::optional<QHash<QString, StoredText>> toIndex(const QJsonDocument &document)
{
    if (!document.isObject())
        return std::nullopt;
    QHash<QString, StoredText> index;
    const QJsonObject object = document.object();
    index.reserve(object.size());
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!entry.value().isString())
            return std::nullopt;
        index.insert(entry.key(), entry.value().toString());
    }
    return index;
}

std::optional<QSet<QString>> toNames(const QJsonDocument &document)
{
    if (!document.isArray())
        return std::nullopt;
    QSet<QString> names;
    const QJsonArray array = document.array();
    for (const QJsonValue &value : array) {
        if (!value.isString())
            return std::nullopt;
        names.insert(value.toString());
    }
    return names;
}

// A file that is missing or can't be understood counts as empty, and is told in `broken`.
template <typename Value, typename Parse>
Value parsed(const QByteArray &bytes, const QString &name, Parse parse, QStringList *broken)
{
    if (bytes.isNull())
        return {};
    auto value = parse(QJsonDocument::fromJson(bytes));
    if (!value && broken)
        broken->append(name);
    return std::move(value).value_or(Value{});
}

// The three files as they are, and the first of them open, so that its texts can stay there.
struct Contents {
    std::array<QByteArray, 3> bytes;
    FileHandle texts;
};

// Only a file that is the one whose bytes were read is of use.
FileHandle opened(const QString &path, const QByteArray &bytes)
{
    FileHandle file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat state;
    if (!file.isOpen() || fstat(file.number(), &state) != 0 || !S_ISREG(state.st_mode) ||
        state.st_size != bytes.size())
        return {};
    QByteArray end(std::min<qint64>(bytes.size(), 4096), Qt::Uninitialized);
    const qint64 from = bytes.size() - end.size();
    return pread(file.number(), end.data(), size_t(end.size()), from) == end.size() && bytes.endsWith(end)
               ? std::move(file)
               : FileHandle();
}

CatalogData toData(const Contents &contents, QStringList *broken = nullptr)
{
    const auto &bytes = contents.bytes;
    if (contents.texts.isOpen()) {
        if (auto texts = StoredText::all(bytes[0], contents.texts.number())) {
            CatalogData data = toData({{QByteArray(), bytes[1], bytes[2]}, {}}, broken);
            data.texts = *std::move(texts);
            return data;
        }
    }
    return {parsed<QHash<QString, StoredText>>(bytes[0], kTexts, toIndex, broken),
            parsed<QSet<QString>>(bytes[1], kFavorites, toNames, broken),
            parsed<LibraryMeta>(
                bytes[2], kMeta,
                [](const QJsonDocument &document) { return LibraryMeta::fromJson(document.object()); },
                broken)};
}

std::optional<QByteArray> jsonOf(const CatalogData &data, const QString &name)
{
    if (name == kTexts)
        return StoredText::toJson(data.texts);
    if (name == kFavorites) {
        QJsonArray array;
        // In an order of its own, the same on every machine.
        QStringList names(data.favorites.begin(), data.favorites.end());
        names.sort();
        for (const QString &favorite : names)
            array.append(favorite);
        return QJsonDocument(array).toJson(QJsonDocument::Compact);
    }
    return QJsonDocument(data.meta.toJson()).toJson(QJsonDocument::Compact);
}

bool touches(const CatalogPatch &patch, const QString &name)
{
    return name == kTexts ? !patch.texts.isEmpty()
                          : (name == kFavorites ? !patch.favorites.isEmpty() : patch.touchesMeta());
}

} // namespace

CatalogFiles::CatalogFiles(QString directory) : m_directory(std::move(directory)) {}

Result<FileLock> CatalogFiles::lock() const
{
    if (!QDir().mkpath(m_directory))
        return FileErrors::cannotWrite(m_directory, errno);
    return FileLock::take(path(QStringLiteral(".lock")));
}

CatalogFiles::Marks CatalogFiles::marks() const
{
    return {{markAt(path(kTexts)), markAt(path(kFavorites)), markAt(path(kMeta))},
            markAt(path(kFolding)),
            markAt(path(kJournal))};
}

CatalogFiles::Snapshot CatalogFiles::load() const
{
    if (!QFileInfo::exists(m_directory))
        return {};
    // Who can't lock can't write either; then there is nobody to wait for.
    const auto held = FileLock::take(path(QStringLiteral(".lock")));
    return loadLocked();
}

CatalogFiles::Snapshot CatalogFiles::loadLocked() const
{
    Snapshot snapshot{{}, marks(), {}};
    const auto heed = [&snapshot](const auto &read) {
        if (!read)
            snapshot.problem = read.error();
        return read;
    };
    {
        Contents contents;
        for (size_t i = 0; i < kJson.size(); ++i)
            contents.bytes[i] = heed(bytesOf(path(kJson[i]))).value_or(QByteArray());
        contents.texts = opened(path(kTexts), contents.bytes[0]);
        snapshot.data = toData(contents);
    }
    std::ignore = heed(applyLines(path(kFolding), 0, snapshot.data));
    std::ignore = heed(applyLines(path(kJournal), 0, snapshot.data));
    if (snapshot.problem)
        Log::error(QStringLiteral("What is known of the captures could not be read"), *snapshot.problem);
    return snapshot;
}

CatalogPatch CatalogFiles::refresh(Snapshot &snapshot) const
{
    if (auto news = catchUp(snapshot))
        return *std::move(news);
    const CatalogData before = std::exchange(snapshot, loadLocked()).data; // which tells of a problem
    return CatalogPatch::between(before, snapshot.data);
}

std::optional<CatalogPatch> CatalogFiles::catchUp(Snapshot &snapshot) const
{
    // Some hundred texts, which take a few milliseconds.
    constexpr qint64 kFewBytes = 500'000;
    const Marks now = marks();
    if (now == snapshot.marks)
        return CatalogPatch{};
    Marks known = snapshot.marks;
    if (const std::lock_guard guard(m_mutex);
        m_lastFold && m_lastFold->before == known.json && m_lastFold->after == now.json &&
        (known.folding == m_lastFold->folded || (known.journal.inode == m_lastFold->folded.inode &&
                                                 known.journal.size == m_lastFold->folded.size))) {
        // Our own fold, of lines that are known.
        if (known.folding != m_lastFold->folded)
            known.journal = {};
        known.json = now.json;
        known.folding = {};
    }
    const bool isGrown = now.json == known.json && now.folding == known.folding &&
                         (known.journal.inode == 0 || now.journal.inode == known.journal.inode) &&
                         now.journal.size >= known.journal.size;
    const bool isRotated = now.json == known.json && known.folding == Mark{} && known.journal.inode != 0 &&
                           now.folding.inode == known.journal.inode && now.folding.size >= known.journal.size;
    const qint64 unread = isRotated ? now.folding.size - known.journal.size + now.journal.size
                                    : now.journal.size - known.journal.size;
    if ((!isGrown && !isRotated) || unread > kFewBytes)
        return std::nullopt;
    CatalogPatch touched;
    const auto apply = [&](const QString &journal, qint64 from) {
        auto lines = applyLines(path(journal), from, snapshot.data);
        if (lines)
            touched.add(*lines);
        return lines.has_value();
    };
    if (isRotated && !apply(kFolding, std::exchange(known.journal, {}).size))
        return std::nullopt;
    if (!apply(kJournal, known.journal.size))
        return std::nullopt;
    snapshot.marks = now;
    return touched;
}

Result<void> CatalogFiles::append(Snapshot &snapshot, const CatalogPatch &patch) const
{
    const QString journal = path(kJournal);
    const FileHandle file(::open(QFile::encodeName(journal).constData(),
                                 O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0666));
    struct stat state;
    if (!file.isOpen() || fstat(file.number(), &state) != 0)
        return FileErrors::cannotWrite(journal, errno);
    if (!S_ISREG(state.st_mode))
        return FileErrors::cannotWrite(journal, EINVAL);
    QByteArray line = QJsonDocument(patch.toJson()).toJson(QJsonDocument::Compact) + '\n';
    // A line that a crash cut off ends here.
    char last = '\n';
    if (state.st_size > 0 && pread(file.number(), &last, 1, state.st_size - 1) == 1 && last != '\n')
        line.prepend('\n');
    const ssize_t written = ::write(file.number(), line.constData(), std::size_t(line.size()));
    if (written != line.size()) {
        const int number = written < 0 ? errno : ENOSPC;
        std::ignore = ftruncate(file.number(), state.st_size);
        if (state.st_size == 0)
            QFile::remove(journal);
        return FileErrors::cannotWrite(journal, number);
    }
    // What others wrote there since is still to be read.
    Mark &known = snapshot.marks.journal;
    const bool isKnown = known.inode == 0 ? state.st_size == 0
                                          : known.inode == state.st_ino && known.size == state.st_size;
    fstat(file.number(), &state);
    if (isKnown)
        known = markOf(state);
    patch.apply(snapshot.data);
    return {};
}

Result<void> CatalogFiles::fold()
{
    if (!hasJournal())
        return {};
    const auto folding = FileLock::take(path(QStringLiteral(".folding.lock")), kFoldPatience);
    if (!folding)
        return std::unexpected(folding.error());
    // As long as others replace one of the files meanwhile.
    bool isOutdated = true;
    while (isOutdated) {
        if (auto folded = foldOnce(isOutdated); !folded)
            return folded;
    }
    return {};
}

Result<void> CatalogFiles::foldOnce(bool &isOutdated)
{
    isOutdated = false;
    bool isLeftover = false;
    ScratchFolder::clearLeftovers(m_directory);
    {
        const auto held = lock();
        if (!held)
            return std::unexpected(held.error());
        isLeftover = QFileInfo::exists(path(kFolding));
        if (!isLeftover) {
            if (!QFileInfo::exists(path(kJournal)))
                return {};
            if (std::rename(QFile::encodeName(path(kJournal)).constData(),
                            QFile::encodeName(path(kFolding)).constData()) != 0)
                return FileErrors::cannotWrite(path(kFolding), errno);
        }
    }
    const JsonMarks before = marks().json;
    Contents contents;
    for (size_t i = 0; i < kJson.size(); ++i) {
        auto read = bytesOf(path(kJson[i]));
        if (!read)
            return std::unexpected(read.error());
        contents.bytes[i] = *std::move(read);
    }
    contents.texts = opened(path(kTexts), contents.bytes[0]);
    QStringList broken;
    CatalogData data = toData(contents, &broken);
    contents = {};
    const auto touched = applyLines(path(kFolding), 0, data);
    if (!touched)
        return std::unexpected(touched.error());

    const auto scratch = ScratchFolder::make(m_directory);
    if (!scratch)
        return std::unexpected(scratch.error());
    QStringList names;
    for (const QString &name : kJson) {
        if (!touches(*touched, name))
            continue;
        names.append(name);
        // A copy first, for its mode.
        if (QFileInfo::exists(path(name))) {
            if (auto copied = AtomicFile::copy(path(name), scratch->filePath(name)); !copied)
                return copied;
        }
        const auto json = jsonOf(data, name);
        if (!json)
            return FileErrors::cannotRead(path(name), EIO);
        if (auto written = AtomicFile::write(scratch->filePath(name), *json); !written)
            return written;
    }
    const auto held = lock();
    if (!held)
        return std::unexpected(held.error());
    if (marks().json != before) {
        isOutdated = true;
        return {};
    }
    for (const QString &name : names) {
        if (broken.contains(name))
            std::ignore = AtomicFile::moveNew(path(name), m_directory, name, QStringLiteral("broken"));
        if (std::rename(QFile::encodeName(scratch->filePath(name)).constData(),
                        QFile::encodeName(path(name)).constData()) != 0)
            return FileErrors::cannotWrite(path(name), errno);
    }
    const Mark folded = markAt(path(kFolding));
    QFile::remove(path(kFolding));
    isOutdated = isLeftover; // the present journal is still to be folded
    const std::lock_guard guard(m_mutex);
    m_lastFold = Fold{before, marks().json, folded};
    return {};
}

bool CatalogFiles::hasJournal() const
{
    return QFileInfo::exists(path(kJournal)) || QFileInfo::exists(path(kFolding));
}

qint64 CatalogFiles::jsonBytes() const
{
    qint64 sum = 0;
    for (const QString &name : kJson)
        sum += QFileInfo(path(name)).size();
    return sum;
}

QStringList CatalogFiles::jsonPaths() const
{
    QStringList paths;
    for (const QString &name : kJson)
        paths.append(path(name));
    return paths;
}
