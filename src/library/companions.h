#pragma once

#include <QString>

// What goes with the files of a Library folder, in its hidden directory: the projects that keep their objects
// editable, and their earlier versions. Files of one base name may share either. Holds the folder alone and
// looks at the disk each time.
class Companions {
public:
    explicit Companions(const QString &folder);

    // The hidden directory of a folder.
    static QString hiddenIn(const QString &folder);

    // Whether the folder has an entry of that name, be it a link that leads nowhere.
    bool isThere(const QString &name) const;
    // Where the project of a file lies: "projects/<base>", or, if a file of the same base name uses that, a
    // folder of its own.
    QString projectDirectory(const QString &name) const;
    // "versions/<base>", which files of one base name share.
    QString versionsDirectory(const QString &name) const;

    // The file has a new name, or has gone.
    void follow(const QString &oldName, const QString &newName) const;
    void forget(const QString &name) const { setAside(name, {}); }
    // The same, but all of it is moved into a folder, unless its name is empty.
    void setAside(const QString &name, const QString &folder) const;
    // Gives what was set aside to a file, which need not have the name that it had.
    void takeBack(const QString &name, const QString &oldName, const QString &folder) const;
    // Whether there is anything.
    bool hasAny(const QString &name) const;

private:
    QString projects() const;
    bool hasSiblingImage(const QString &name) const;
    bool isProjectOf(const QString &name, const QString &directory) const;
    void moveProject(const QString &oldName, const QString &newName) const;
    void moveVersions(const QString &oldName, const QString &newName) const;

    QString m_folder;
    QString m_hidden;
};
