#pragma once

#include "base/result.h"
#include "document/editor_document.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

// Edits that have not been saved, kept on disk so that nothing but the user loses them. A draft is a
// directory with one folder for each state that was written, named by a number that counts up; a folder gets
// its name when it is whole, so a crash at any moment leaves the last whole one. All functions are callable
// from any thread; of one draft, one at a time.
namespace Draft {

// Whose edits they are.
struct Origin {
    QByteArray picture; // digest of the file that they change; empty for a picture without a file
    QString title;      // what its window is called

    bool operator==(const Origin &) const = default;
};

// A draft of a picture without a file.
struct Entry {
    QString directory;
    QString title;
    QDateTime date; // of its last change
};

// Where the draft of a Library file lies; `projectDirectory` is that file's.
QString directoryOf(const QString &path, const QString &projectDirectory);
// Whether an entry of a project's directory is a draft, set aside or not.
bool isDraft(const QString &name);
// A new place in the folder for drafts without a file.
QString newDirectory(const QString &folder);

// With `keepsBase`, the pixels are those of the state that was written last, which need no encoding.
Result<void> write(const QString &directory, const EditorDocument::Contents &contents, const Origin &origin,
                   bool keepsBase = false);
// The last whole state, if it was made of a picture with this digest.
std::optional<EditorDocument::Contents> read(const QString &directory, const QByteArray &picture);
// True when there is any state, of whatever picture.
bool exists(const QString &directory);
void remove(const QString &directory);
// For a draft of another picture than the one that is there now: out of the way, but not lost.
void setAside(const QString &directory);

// All that the folder holds, newest first.
QList<Entry> list(const QString &folder);
// What a document is made of that goes on with it.
std::optional<EditorDocument::Source> open(const Entry &entry);

} // namespace Draft
