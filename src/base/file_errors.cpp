#include "base/file_errors.h"

#include "base/texts.h"

#include <QFileInfo>
#include <cerrno>

QString FileErrors::reason(int number)
{
    switch (number) {
    case ENOSPC:
        return BaseTexts::tr("the disk is full");
    case EDQUOT:
        return BaseTexts::tr("your share of the disk is used up");
    case EFBIG:
        return BaseTexts::tr("the file would be larger than is allowed here");
    case EROFS:
        return BaseTexts::tr("the disk can't be written to");
    case EACCES:
    case EPERM:
        return BaseTexts::tr("permission denied");
    case ENOENT:
        return BaseTexts::tr("there is no such folder");
    case ENAMETOOLONG:
        return BaseTexts::tr("the name is too long");
    case EMFILE:
    case ENFILE:
        return BaseTexts::tr("too many files are open");
    case EIO:
        return BaseTexts::tr("the disk reports an error");
    }
    return qt_error_string(number);
}

std::unexpected<Error> FileErrors::cannotWrite(const QString &path, const QString &reason)
{
    return fail(BaseTexts::tr("Couldn't write %1: %2.").arg(QFileInfo(path).fileName(), reason), path);
}

std::unexpected<Error> FileErrors::cannotWrite(const QString &path, int number)
{
    return cannotWrite(path, reason(number));
}

Error FileErrors::about(const QString &path, Error error)
{
    if (const QString name = QFileInfo(error.detail).fileName(); !name.isEmpty())
        error.message.replace(name, QFileInfo(path).fileName());
    return error;
}

std::unexpected<Error> FileErrors::cannotRead(const QString &path, int number)
{
    return fail(number == ENOENT ? Error::Kind::NotFound : Error::Kind::Failed,
                number == ENOENT
                    ? BaseTexts::tr("There is no file %1.").arg(QFileInfo(path).fileName())
                    : BaseTexts::tr("Couldn't read %1: %2.").arg(QFileInfo(path).fileName(), reason(number)),
                path);
}
