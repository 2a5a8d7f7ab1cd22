#pragma once

#include "base/result.h"

#include <QImage>
#include <QString>

struct ProjectFile;

// Saves a picture together with the project behind it, so that a crash at any moment leaves both as they were
// or both as they became.
//
// The new project waits in the project's directory, with the digest of the picture that it belongs to, until
// that picture is in its place. What a crash leaves waiting is finished or dropped by whoever opens the
// picture next: a project that waits belongs to the picture if the digest is the picture's.
namespace ProjectSave {

// Replaces the picture at `path` by `finished`, and the project by the other two. A failure leaves both as
// they were. On any thread; two saves of one picture at once don't mix, the second fails.
Result<void> write(const QString &path, const QImage &finished, const QString &projectDirectory,
                   const QImage &base, const ProjectFile &project);

// Finishes or drops what an interrupted save of the picture at `path` left. A save that is under way is left
// alone.
void settle(const QString &path, const QString &projectDirectory);

} // namespace ProjectSave
