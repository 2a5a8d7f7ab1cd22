#pragma once

#include "base/result.h"
#include "document/project_file.h"

#include <QImage>
#include <QString>
#include <optional>

// Saves a picture together with the project behind it, so that a crash at any moment leaves both as they were
// or both as they became; and sees to it that a project is never applied to a picture that it doesn't belong
// to, since that would show again what the picture hides.
//
// A project carries "picture.sha256" in the form of sha256sum: the digest of the bytes of the picture that it
// belongs to, and its file name. A new project waits in ".saving" inside the project's directory, digest
// included, until its picture is in its place. What a crash leaves waiting is finished or dropped by whoever
// comes next: it belongs to the picture if the digest is the picture's.
//
// Directories of projects lie side by side in one folder; a lock in it lets one at a time change any of them.
// Callable from any thread; encoding is done before the lock is taken.
namespace ProjectSave {

// Replaces the picture at `path` by `finished`, and the project by the other two. A failure leaves both as
// they were.
Result<void> write(const QString &path, const QImage &finished, const QString &projectDirectory,
                   const QImage &base, const ProjectFile &project);
// Replaces the project alone; it then belongs to the picture as it is.
Result<void> writeProject(const QString &path, const QString &projectDirectory, const QImage &base,
                          const ProjectFile &project);
// Replaces the picture by the file `picture`, and the project by the folder `project`, or by none where that
// is empty. Both are taken away from where they are, and must lie on the volume of the picture.
Result<void> put(const QString &path, const QString &picture, const QString &projectDirectory,
                 const QString &project);

struct Opened {
    std::optional<ProjectFile::Contents> contents;
    // The project belonged to another state of the picture, and lies in ".aside" beside the others now.
    bool isSetAside = false;
};
// The project of the picture at `path`, if there is one. One without a digest, as earlier versions of the
// program wrote them, belongs to the picture if it looks exactly like it; then it gets its digest. Needs a
// font database.
Opened open(const QString &path, const QString &projectDirectory);

// Finishes or drops what an interrupted save of the picture at `path` left.
void settle(const QString &path, const QString &projectDirectory);
// Whether the project is that of the picture's present bytes, by its digest; nothing when it carries none.
std::optional<bool> belongs(const QString &path, const QString &projectDirectory);
// The file name of the picture that the project was saved with.
std::optional<QString> owner(const QString &projectDirectory);
// The picture has another name now.
void setOwner(const QString &projectDirectory, const QString &name);
// Moves a project that belongs to nothing that is there to ".aside", so that nothing is lost.
void setAside(const QString &projectDirectory);
// The file that who changes the directories of projects in `folder` locks.
QString lockFile(const QString &folder);

} // namespace ProjectSave
