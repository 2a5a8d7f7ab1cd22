#include "cli/library_files.h"

#include "base/file_name.h"
#include "base/file_tree.h"
#include "cli/command.h"
#include "cli/texts.h"
#include "library/library.h"

#include <QDir>
#include <QFileInfo>

QString libraryPath(Library &library, const std::string &word)
{
    const QString text = FileName::fromBytes(QByteArray::fromStdString(word));
    if (!text.contains(QLatin1Char('/'))) {
        const QString inLibrary = QDir(library.folder()).filePath(text);
        if (FileTree::isFile(inLibrary))
            return inLibrary;
    }
    return absolutePath(word);
}

std::optional<QString> existingPath(CommandContext &context, const std::string &word)
{
    const QString path = libraryPath(context.library(), word);
    if (!FileTree::isFile(path)) {
        context.fail({Error::Kind::NotFound, CliTexts::tr("There is no file %1.").arg(path), {}});
        return std::nullopt;
    }
    if (!context.library().contains(path)) {
        context.fail({Error::Kind::Invalid, CliTexts::tr("%1 is not in the Library.").arg(path), {}});
        return std::nullopt;
    }
    return path;
}

QStringList pathsOf(CommandContext &context, const std::vector<std::string> &words)
{
    QStringList paths;
    for (const std::string &word : words) {
        const QString path = absolutePath(word);
        paths.append(FileTree::exists(path) ? path : libraryPath(context.library(), word));
    }
    return paths;
}
