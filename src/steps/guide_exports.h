#pragma once

#include "base/result.h"
#include "steps/guide_export.h"

#include <QFuture>
#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>

class Library;
class NoticeBoard;
class PendingWork;
class StepsSession;
class Workspace;

// One guide on its way out. Lives until its end is told; the window that asked may be gone by then.
class GuideExportJob : public QObject {
    Q_OBJECT
public:
    enum class End { Done, Failed, Cancelled };

    void cancel() { *m_isCancelled = true; }

Q_SIGNALS:
    void progressed(int done, int total);
    void ended(GuideExportJob::End end);

private:
    friend class GuideExports;
    explicit GuideExportJob(QObject *parent) : QObject(parent) {}

    std::shared_ptr<std::atomic<bool>> m_isCancelled = std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<StepsSession> m_session; // keeps the pictures on disk
};

// Brings guides out of the program, for all review windows and longer than any of them. The work is done on
// threads of its own; what became of it is said when it is true. Main thread only.
class GuideExports : public QObject {
    Q_OBJECT
public:
    using Source = GuideExport::Source;
    struct Parts {
        Library &library;
        Workspace &workspace;
        NoticeBoard &notices;
        PendingWork &pending;
    };

    explicit GuideExports(Parts parts, QObject *parent = nullptr);

    // Shows a failure that needs a decision.
    std::function<void(const Error &)> showError;

    GuideExportJob *webFolder(const Source &source, std::shared_ptr<StepsSession> session,
                              const QString &directory);
    GuideExportJob *pdf(const Source &source, std::shared_ptr<StepsSession> session, const QString &path);
    // One tall picture in the Library, which is given to `open` then.
    GuideExportJob *guideImage(const Source &source, std::shared_ptr<StepsSession> session,
                               const std::function<void(const QString &path)> &open);
    // Each step as a capture of its own, in a new collection with the guide's title.
    GuideExportJob *saveToLibrary(const Source &source, std::shared_ptr<StepsSession> session);

private:
    struct Saving;

    GuideExportJob *begin(const std::shared_ptr<StepsSession> &session);
    Progress progressOf(GuideExportJob *job) const;
    void end(GuideExportJob *job, GuideExportJob::End end);
    void saveNext(const std::shared_ptr<Saving> &saving);
    void saved(const std::shared_ptr<Saving> &saving, const Result<QString> &path);
    void collect(const Saving &saving);

    Parts m_parts;
};
