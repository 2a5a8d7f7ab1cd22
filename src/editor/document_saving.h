#pragma once

#include "editor/editor_desk.h"

#include <QObject>

// Puts a document into files: into its own, with a version and a project where that lies in the Library, and
// into copies. One save at a time; another one that is asked for meanwhile follows it.
class DocumentSaving : public QObject {
    Q_OBJECT
public:
    explicit DocumentSaving(const EditorDesk &desk) : m_desk(desk) {}

    // Asks for a file where the document has none.
    void save();
    void saveAs();
    // The file dialog's answer.
    void saveCopy(const QString &path);

    bool isSaving() const { return m_isSaving; }

Q_SIGNALS:
    // Every save that was asked for has ended.
    void ended();

private:
    void finishSave(const Result<void> &result);

    EditorDesk m_desk;
    bool m_isSaving = false;
    bool m_saveAgain = false;
};
