#pragma once

#include "editor/draft_keeper.h"
#include "editor/editor_desk.h"

#include <QObject>
#include <QPointer>

class SaveRun;

// Puts a document into files: into its own, with a version and a project where that lies in the Library, and
// into others. One save at a time; another one that is asked for meanwhile follows it, also when the window
// has closed by then.
class DocumentSaving : public QObject {
    Q_OBJECT
public:
    explicit DocumentSaving(const EditorDesk &desk) : m_desk(desk) {}
    ~DocumentSaving() override;

    // Asks for a file where the document has none, or has one of a kind that isn't written.
    void save();
    void saveAs();
    // The file dialog's answer. The document's own file is saved; another file of the Library keeps a
    // version, and loses the project that no longer belongs to it.
    void saveInto(const QString &path);

    bool isSaving() const;
    // Where the window's unsaved edits are kept, for a save that ends after the window.
    void setDraft(const DraftPlace &draft);

Q_SIGNALS:
    // Every save that was asked for has ended.
    void ended();

private:
    void finish(const FinishedImage &finished, const QString &wanted, const QString &path,
                const QByteArray &digest);

    EditorDesk m_desk;
    QPointer<SaveRun> m_run;
    DraftPlace m_draft;
};
