#pragma once

#include "editor/editor_desk.h"

#include <QFuture>
#include <QObject>
#include <QString>
#include <QTimer>

// Where a draft lies; no directory where there is none.
struct DraftPlace {
    QString directory;
    QString title; // what its window was called
};

// Keeps the unsaved edits of one document on disk while they are unsaved: beside the project of a Library
// file, otherwise in the program's folder for drafts. The last change is on its way there after a second.
class DraftKeeper : public QObject {
    Q_OBJECT
public:
    explicit DraftKeeper(const EditorDesk &desk);
    // What has not been written yet is written.
    ~DraftKeeper() override;

    // Writes the present state, or removes the draft where everything is saved, without waiting for more.
    void keepNow();
    // Where the last state was written.
    DraftPlace place() const;
    // A save ended when its window had closed: a draft of what was saved goes, one of later edits belongs to
    // the file as it is now.
    static void settle(const DraftPlace &draft, const EditorDocument::Contents &kept,
                       const EditorDocument::Contents &saved, const QByteArray &digest);
    // Waits for all that any keeper has begun to write.
    static void finishAll();

private:
    void follow(EditorDocument::Field field);
    QString directory();
    void report(const QString &directory, const Result<void> &written);

    EditorDesk m_desk;
    QTimer m_soon;
    QFuture<Result<void>> m_writing;
    QString m_directory; // of a document without a file in the Library
    QString m_writtenTo; // where there is a draft now
    qint64 m_writtenBase = 0;
    bool m_isDirty = false;
    bool m_hasComplained = false;
};
