#pragma once

#include "base/file_handle.h"
#include "base/result.h"

#include <QString>

// A hidden folder for what is being made beside its later place, readable for nobody else and gone with its
// owner. What a killed process leaves of them is cleared by whoever comes next.
class ScratchFolder {
public:
    // Inside `parent`, which must be there.
    static Result<ScratchFolder> make(const QString &parent);
    // Removes the scratch folders and files in `parent` that nobody holds any more.
    static void clearLeftovers(const QString &parent);
    // How the names of all of them begin.
    static const QString &prefix();

    ScratchFolder(ScratchFolder &&) = default;
    ScratchFolder &operator=(ScratchFolder &&) = delete;
    ~ScratchFolder();

    QString filePath(const QString &name) const { return m_path + QLatin1Char('/') + name; }

private:
    ScratchFolder(QString path, FileHandle handle) : m_path(std::move(path)), m_handle(std::move(handle)) {}

    QString m_path;
    FileHandle m_handle; // locked while this lives
};
