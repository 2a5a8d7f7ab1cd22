#pragma once

#include "base/async.h"
#include "library/batch/combiner.h"
#include "library/batch/exporter.h"
#include "library/library_versions.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <utility>

class AppSettings;
class BatchJob;
class ClaudeClient;
class Library;
class LibraryModel;
class NoticeBoard;
class PendingWork;
class TextIndexing;
class Workspace;

// What the sheets of a Library window start: the program owns it, so all of it comes to its end when the
// window closes meanwhile, and quitting waits for it. Tells by notices what it did; a failure is told to the
// sheet, and by a notice where the sheet has gone. Main thread only.
class LibraryWork : public QObject {
    Q_OBJECT
public:
    // All outlive it.
    struct Parts {
        Library &library;
        Workspace &workspace;
        NoticeBoard &notices;
        ClaudeClient &claude;
        const AppSettings &prefs;
        PendingWork &pending;
        const Clock &clock;
        TextIndexing &indexing;
        std::function<void(const QString &path)> openItem;
    };
    explicit LibraryWork(Parts parts, QObject *parent = nullptr);
    ~LibraryWork() override;

    // What stands under the pictures.
    enum class Captions { None, Names, Written };
    static QString title(Captions captions);

    struct ExportOrder {
        QStringList paths;
        QString folder;
        ExportFormat format = ExportFormat::Original;
        std::optional<int> longest; // pixels
    };
    BatchJob *exportFiles(const ExportOrder &order);

    struct PdfOrder {
        QStringList paths;
        QString title;
        Captions captions = Captions::Names;
        Exporter::PageSize size = Exporter::PageSize::Fit;
        QString target;
    };
    BatchJob *makePdf(const PdfOrder &order);

    struct CombineOrder {
        QStringList paths;
        Combiner::Layout layout = Combiner::Layout::Horizontal;
        double spacing = 0; // pixels
        std::optional<QColor> background;
    };
    // The result is a new capture, and is opened.
    BatchJob *combine(const CombineOrder &order);

    struct GuideOrder {
        QStringList paths;
        QString title;
        Captions captions = Captions::Names;
    };
    BatchJob *makeGuide(const GuideOrder &order);

    // A few files at a time, so that the event loop goes on. Each path with its new name.
    using Names = QList<std::pair<QString, QString>>;
    BatchJob *rename(const Names &names);

    // Moves what is older than the settings say to the Trash, and tells of it.
    enum class WhenNothing { Tell, Silent };
    void runAutoDelete(WhenNothing whenNothing);
    void restore(const LibraryVersion &version, const QString &path);
    // Has what isn't described yet described by the AI service, as far as one run goes.
    void describe(LibraryModel &model);
    // Whether there is a key for the AI service.
    QFuture<Result<QString>> apiKey() const;

private:
    void removeOutdated(const QStringList &outdated, WhenNothing whenNothing);
    template <typename T>
    BatchJob *start(const QString &what, std::function<T(const Progress &)> work,
                    std::function<Result<void>(T)> then);
    void finish(BatchJob *job, const Result<void> &result);
    void complain(const QString &text);
    Task<Result<QStringList>> captionsFor(BatchJob *job, QStringList paths, Captions captions,
                                          QString status);
    Task<Result<QStringList>> writtenCaptions(BatchJob *job, QStringList paths, QString status);
    Task<> writePdf(BatchJob *job, PdfOrder order);
    Task<> writeGuide(BatchJob *job, GuideOrder order);
    Task<> keepAndOpen(BatchJob *job, QFuture<Result<Composition>> picture, QString name, QString problem);
    void renameSome(BatchJob *job, const Names &names, int renamed);
    void startDescribing(LibraryModel &model);

    Parts m_parts;
    bool m_isDescribing = false;
};
