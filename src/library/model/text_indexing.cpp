#include "library/model/text_indexing.h"

#include "document/image_files.h"
#include "library/library.h"
#include "library/model/capture_table.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace {

constexpr int kMostFailures = 3;

// Read and scaled on a worker; the cache is not for this.
Result<QImage> picture(const QString &path, int longestEdge)
{
    if (auto image = ImageFiles::thumbnail(path, longestEdge))
        return *image;
    auto image = ImageFiles::read(path);
    return image ? fail(QStringLiteral("%1 could not be read.").arg(QFileInfo(path).fileName()))
                 : Result<QImage>(std::unexpected(image.error()));
}

} // namespace

TextIndexing::TextIndexing(Library &library, TextRecognizer &recognizer, QObject *parent)
    : QObject(parent), m_library(library), m_recognizer(recognizer)
{
    connect(&library.catalog(), &LibraryCatalog::read, this, [this] {
        if (m_state == State::Looking)
            look();
    });
}

namespace {

// For any thread.
template <typename Text>
QStringList picturesWithout(const QHash<QString, Text> &known, const QString &folder)
{
    std::vector<CaptureTable::File> files = CaptureTable::list(folder);
    std::erase_if(files, [&](const CaptureTable::File &file) {
        return Library::isVideo(file.name) || known.contains(file.name);
    });
    std::ranges::sort(files, [](const CaptureTable::File &a, const CaptureTable::File &b) {
        return a.modified != b.modified ? a.modified > b.modified : a.name < b.name;
    });
    QStringList paths;
    for (const CaptureTable::File &file : files)
        paths.append(QDir(folder).filePath(file.name));
    return paths;
}

} // namespace

QStringList TextIndexing::withoutText(Library &library)
{
    return picturesWithout(library.catalog().data().texts, library.folder());
}

QStringList TextIndexing::withoutDescription(Library &library)
{
    return picturesWithout(library.catalog().meta().descriptions, library.folder());
}

QFuture<Result<QString>> TextIndexing::textOf(TextRecognizer &recognizer, const QString &path)
{
    return runInBackground([path, &recognizer]() -> Result<QString> {
        const auto image = picture(path, kReadingEdge);
        if (!image)
            return std::unexpected(image.error());
        auto text = recognizer.text(*image);
        text.waitForFinished();
        return text.resultCount() > 0 ? text.takeResult().value_or(QString()) : QString();
    });
}

void TextIndexing::indexMissingText()
{
    if (m_state != State::Idle) {
        m_callsAgain = true;
        return;
    }
    m_state = State::Looking;
    m_library.catalog().readInBackground();
    if (m_library.catalog().isRead())
        look();
}

void TextIndexing::look()
{
    const auto looking =
        runInBackground([texts = m_library.catalog().data().texts, folder = m_library.folder()] {
            return picturesWithout(texts, folder);
        });
    whenDone(looking, this, [this](const QStringList &paths) { begin(paths); });
}

void TextIndexing::begin(const QStringList &paths)
{
    m_paths = paths;
    m_done = 0;
    m_state = State::Running;
    if (m_paths.isEmpty())
        finish();
    else
        next();
}

void TextIndexing::setPaused(bool paused)
{
    m_isPaused = paused;
    if (!paused && m_state == State::Paused) {
        m_state = State::Running;
        next();
    }
}

void TextIndexing::next()
{
    if (m_done == m_paths.size())
        return finish();
    if (m_isPaused) {
        m_state = State::Paused;
        return;
    }
    Q_EMIT m_library.indexing(m_done, static_cast<int>(m_paths.size()));
    const QString path = m_paths[m_done++];
    whenDone(textOf(m_recognizer, path), this, [this, path](const Result<QString> &text) {
        if (text && QFileInfo::exists(path))
            m_library.catalog().setIndexedText(path, *text);
        next();
    });
}

void TextIndexing::finish()
{
    m_state = State::Idle;
    const auto total = static_cast<int>(m_paths.size());
    m_paths.clear();
    if (total > 0) {
        Q_EMIT m_library.indexing(total, total);
        m_library.postChanged();
    }
    Q_EMIT finished();
    if (std::exchange(m_callsAgain, false))
        indexMissingText();
}

QFuture<Result<QImage>> TextIndexing::pictureOf(const QString &path)
{
    return runInBackground([path] { return picture(path, kDescribingEdge); });
}

QFuture<Result<QString>> TextIndexing::descriptionOf(ClaudeClient &client, const QImage &image)
{
    return client.ask(
        // untranslated: to the service
        QStringLiteral("Describe what this screenshot shows: the app or site, what's on screen, and "
                       "anything notable or unusual. Be concise and concrete."),
        image, QStringLiteral("medium"));
}

void TextIndexing::describeMissing(ClaudeClient &client, int limit, std::function<void(int, int)> told,
                                   Ended ended)
{
    describe(client, withoutDescription(m_library).mid(0, limit), std::move(told), std::move(ended));
}

bool TextIndexing::isWorthAsking(const Error &failure, int inARow)
{
    return failure.kind != Error::Kind::Denied && inARow < kMostFailures;
}

Task<> TextIndexing::describe(ClaudeClient &client, QStringList paths, std::function<void(int, int)> told,
                              Ended ended)
{
    int described = 0;
    int failedInARow = 0;
    std::optional<Error> first;
    const auto total = static_cast<int>(paths.size());
    for (int i = 0; i < total; ++i) {
        told(i, total);
        const auto image = co_await guarded(pictureOf(paths[i]), this);
        if (!image && image.error().isCancelled())
            co_return;
        if (!image) {
            first = first.value_or(image.error());
            continue;
        }
        const auto text = co_await guarded(descriptionOf(client, *image), this);
        if (!text && text.error().isCancelled())
            co_return;
        if (text) {
            m_library.catalog().setDescription(paths[i], *text);
            ++described;
            failedInARow = 0;
            continue;
        }
        first = first.value_or(text.error());
        if (!isWorthAsking(text.error(), ++failedInARow))
            break;
    }
    m_library.postChanged();
    ended(described, first);
}
