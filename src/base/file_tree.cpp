#include "base/file_tree.h"

#include "base/file_name.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

namespace {

std::filesystem::path nativePath(const QString &path)
{
    return FileName::toBytes(path).toStdString();
}

} // namespace

bool FileTree::exists(const QString &path)
{
    struct stat state;
    return lstat(FileName::toBytes(path).constData(), &state) == 0;
}

bool FileTree::isFile(const QString &path)
{
    struct stat state;
    return stat(FileName::toBytes(path).constData(), &state) == 0 && S_ISREG(state.st_mode);
}

bool FileTree::makeFolder(const QString &path)
{
    std::error_code error;
    std::filesystem::create_directories(nativePath(path), error);
    errno = error ? error.value() : ENOTDIR;
    return !error && std::filesystem::is_directory(nativePath(path), error);
}

void FileTree::remove(const QString &path)
{
    std::error_code ignored;
    std::filesystem::remove_all(nativePath(path), ignored);
}
