#include "cli/library_files.h"

#include "cli/command.h"
#include "cli/texts.h"
#include "library/library.h"

#include <QDir>
#include <QFileInfo>

QString libraryPath(Library &library, const std::string &word)
{
    const QString text = QString::fromStdString(word);
    if (!text.contains(QLatin1Char('/'))) {
        const QString inLibrary = QDir(library.folder()).filePath(text);
        if (QFileInfo(inLibrary).isFile())
            return inLibrary;
    }
    return QFileInfo(text).absoluteFilePath();
}

std::optional<QString> existingPath(CommandContext &context, const std::string &word)
{
    const QString path = libraryPath(context.library(), word);
    if (!QFileInfo(path).isFile()) {
        context.fail({Error::Kind::NotFound,
                      CliTexts::tr("There is no file %1.").arg(QString::fromStdString(word)),
                      {}});
        return std::nullopt;
    }
    if (!context.library().contains(path)) {
        context.fail({Error::Kind::Invalid,
                      CliTexts::tr("%1 is not in the Library.").arg(QFileInfo(path).fileName()),
                      {}});
        return std::nullopt;
    }
    return path;
}

QStringList pathsOf(CommandContext &context, const std::vector<std::string> &words)
{
    QStringList paths;
    for (const std::string &word : words) {
        const QString path = absolutePath(word);
        paths.append(QFileInfo::exists(path) ? path : libraryPath(context.library(), word));
    }
    return paths;
}
