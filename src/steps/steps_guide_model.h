#pragma once

#include "base/result.h"
#include "steps/caption_writer.h"
#include "steps/guide_exports.h"
#include "steps/guide_previews.h"
#include "steps/guide_step.h"
#include "steps/secret_search.h"

#include <QFuture>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

class AppSettings;
class CaptureSettings;
class ClaudeClient;
class NoticeBoard;
class StepsSession;
class TextRecognizer;

// A guide while it is reviewed: its steps in their order, what is done with them, and the way out. Keeps the
// guide on disk as it changes. Main thread only; nothing here takes longer than a moment.
class StepsGuideModel : public QObject {
    Q_OBJECT
public:
    struct Parts {
        TextRecognizer &recognizer;
        ClaudeClient &claude;
        AppSettings &settings;
        NoticeBoard &notices;
        GuideExports &exports;
    };
    // A step for the full editor.
    struct StepEdit {
        QImage base;
        QList<Annotation> annotations;
        Effects effects;
        QString displayName;
        // What the editor has to call with its result; any number of times, and harmless later on.
        std::function<void(const QImage &base, const QList<Annotation> &annotations, const Effects &effects)>
            save;
    };

    // A new guide; the switches are those of the settings.
    StepsGuideModel(const QList<GuideStep> &steps, const QString &title, const CaptureSettings &capture,
                    std::shared_ptr<StepsSession> session, Parts parts, QObject *parent = nullptr);
    // One that was kept on disk.
    StepsGuideModel(const Guide &guide, std::shared_ptr<StepsSession> session, Parts parts,
                    QObject *parent = nullptr);
    ~StepsGuideModel() override;

    const QString &title() const { return m_guide.title; }
    void setTitle(const QString &title);
    const QList<GuideStep> &steps() const { return m_guide.steps; }
    const GuideStep *step(const QUuid &id) const;
    bool markClicks() const { return m_guide.markClicks; }
    void setMarkClicks(bool on);
    bool redact() const { return m_guide.redact; }
    void setRedact(bool on);
    GuidePreviews &previews() { return m_previews; }
    // The busy line; none when idle.
    std::optional<QString> status() const;
    // Of what has a length: 0 to 1.
    std::optional<double> progress() const;
    bool isImproving() const { return m_writer.isAtWork(); }
    // An export is under way, or waits until it is known what is to be hidden in it.
    bool canCancel() const { return m_job || m_wantedExport; }
    // False where there was no room on disk for the guide: it lasts as long as its window.
    bool canBeKept() const { return m_session != nullptr; }
    // Ends when the guide is on disk as it is now, or with the reason why it isn't.
    QFuture<Result<void>> keep();

    // Asks the program to open a file in the editor, to show a step there, to show the Library.
    std::function<void(const QString &path)> openInEditor;
    std::function<void(const StepEdit &edit)> openStepEditor;
    std::function<void()> showLibrary;

    void setCaption(const QUuid &id, const QString &caption);
    // In pixels of the step's picture. Placing a marker switches markers on.
    void moveMarker(const QUuid &id, QPointF point);
    // Whether the click differs from the recorded one.
    bool markerMoved(const QUuid &id) const;
    void resetMarker(const QUuid &id);
    void edit(const QUuid &id);
    void applyEdit(const QUuid &id, const QImage &base, const QList<Annotation> &annotations,
                   const Effects &effects, const std::optional<QUuid> &badgeID);
    void revertEdits(const QUuid &id);
    // Swaps two steps.
    void move(qsizetype index, qsizetype by);
    // Takes a step out and puts it before the one that is at `to` then.
    void reorder(qsizetype from, qsizetype to);
    void remove(const QList<QUuid> &ids);
    // Brings back what was removed last, where it was.
    bool canUndo() const { return !m_removed.isEmpty(); }
    void undo();
    void improveCaptions();

    // The title for use in names; never blank.
    QString safeTitle() const;
    // What leaves the program; nothing private while `redact` is on.
    QStringList captions() const;

    void exportWebFolder(const QString &directory);
    void exportPDF(const QString &path);
    void exportGuideImage();
    void saveToLibrary();
    void cancelExport();
    // As it is now.
    bool wasExported() const { return m_exported == m_revision; }

    bool isLookingForSecrets() const { return m_search.isUnderWay(); }
    // Steps whose private text is not known because the search failed, and that nobody has edited since.
    QList<QUuid> unsearched() const;
    void searchAgain();

Q_SIGNALS:
    void titleChanged();
    void switchesChanged();
    void stepsChanged();               // how many there are, or their order
    void stepChanged(const QUuid &id); // anything of one step but its preview
    void statusChanged();
    // Nothing left the program: so many steps could show private text that is to be hidden.
    void refused(int steps);

private:
    struct Removed {
        qsizetype index = 0;
        GuideStep step;
    };

    void begin();
    GuideStep *find(const QUuid &id);
    qsizetype indexOf(const QUuid &id) const;
    void changed(const QUuid &id);
    void reordered();
    void save();
    void write();
    void findRedactions();
    bool isRefused();
    // Now, or once it is known what is to be hidden.
    void whenSafeToShow(const std::function<void()> &then);
    GuideExports::Source source() const;
    void beginExport(const QString &status, const std::function<GuideExportJob *()> &start);
    void follow(GuideExportJob *job, const QString &status);
    StepEdit editOf(const GuideStep &step, int number) const;

    Parts m_parts;
    Guide m_guide;
    std::shared_ptr<StepsSession> m_session;
    GuidePreviews m_previews;
    QTimer m_save;
    bool m_hasToldFailure = false; // of keeping the guide, since it was last kept
    QList<QList<Removed>> m_removed;

    SecretSearch m_search;
    QList<std::function<void()>> m_whenSafe;
    QSet<QUuid> m_editWhenSearched;
    CaptionWriter m_writer;

    std::function<void()> m_wantedExport; // while it waits
    QPointer<GuideExportJob> m_job;
    QString m_jobStatus;
    double m_jobProgress = 0;
    quint64 m_revision = 0; // of what the user made
    std::optional<quint64> m_exported;
};
