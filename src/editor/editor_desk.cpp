#include "editor/editor_desk.h"

#include "document/editor_document.h"
#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor/editor_sheets.h"
#include "editor/texts.h"
#include "settings/app_settings.h"

#include <QDir>
#include <QFileInfo>

QString EditorDesk::title() const
{
    if (!document.displayName().isEmpty())
        return document.displayName();
    if (!document.fileURL().isEmpty())
        return QFileInfo(document.fileURL().toLocalFile()).completeBaseName();
    return EditorTexts::tr("Untitled Capture");
}

void EditorDesk::commitText() const
{
    canvas.interaction().commitText();
}

bool EditorDesk::isInLibrary() const
{
    return isInLibrary(document.fileURL().toLocalFile());
}

bool EditorDesk::isInLibrary(const QString &path) const
{
    return !path.isEmpty() && isSamePath(QFileInfo(path).path(), ports.settings.saveFolder());
}

void EditorDesk::showError(const Error &error) const
{
    EditorSheets::showError(window, error, ports.openSettings);
}

void EditorDesk::withTemporaryFile(QObject *owner, std::function<void(const QString &)> use) const
{
    QString name = title();
    name.replace('/', '-'); // which no file name can hold
    onWorker(
        owner,
        [name](const FinishedImage &finished) -> std::optional<QString> {
            return ImageFiles::temporaryPNG(finished.exported(), name);
        },
        [desk = *this, use = std::move(use)](const std::optional<QString> &path) {
            if (path)
                use(*path);
            else
                desk.showError({Error::Kind::Failed,
                                EditorTexts::tr("The picture could not be written to a temporary file."),
                                {}});
        });
}

bool isSamePath(const QString &one, const QString &other)
{
    const auto standardized = [](const QString &path) { return QDir::cleanPath(QDir(path).absolutePath()); };
    return standardized(one) == standardized(other);
}
