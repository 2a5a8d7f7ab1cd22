#pragma once

#include <QTemporaryDir>

// A folder that vanishes with the test, with helpers to fill it.
class TemporaryFolder {
public:
    QString path(const QString &name = {}) const
    {
        return name.isEmpty() ? m_folder.path() : m_folder.filePath(name);
    }

private:
    QTemporaryDir m_folder;
};
