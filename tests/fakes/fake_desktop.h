#pragma once

#include "base/async.h"
#include "base/free_name.h"
#include "platform/login_item.h"
#include "platform/pasteboard.h"
#include "platform/paths.h"
#include "platform/permissions.h"
#include "platform/secrets.h"
#include "platform/sounds.h"
#include "platform/trash.h"
#include "platform/workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

// Well-known folders under one folder of the test.
class FakePaths : public Paths {
public:
    explicit FakePaths(QString folder) : m_folder(std::move(folder)) {}
    QString home() const override { return m_folder; }
    QString pictures() const override { return m_folder + QStringLiteral("/Pictures"); }
    QString desktop() const override { return m_folder + QStringLiteral("/Desktop"); }
    QString temporary() const override { return m_folder + QStringLiteral("/tmp"); }
    QString config() const override { return m_folder + QStringLiteral("/config"); }
    QString state() const override { return m_folder + QStringLiteral("/state"); }
    QString cache() const override { return m_folder + QStringLiteral("/cache"); }

private:
    QString m_folder;
};

// Moves files into a folder of the test, or refuses.
class FakeTrash : public Trash {
public:
    explicit FakeTrash(QString folder) : m_folder(std::move(folder)) {}
    Result<std::unique_ptr<Move>> prepare(const QString &path, const std::stop_token &) override
    {
        if (!QFileInfo::exists(path))
            return fail(Error::Kind::NotFound, QStringLiteral("No such file."));
        if (refuses)
            return fail(QStringLiteral("The Trash refuses."));
        if (preparing)
            preparing();
        return std::make_unique<FakeMove>(*this, path);
    }
    Result<QString> takeBack(const QString &trash, const QString &path, const std::stop_token &) override
    {
        const QFileInfo info(path);
        const QString back = QFileInfo::exists(path)
                                 ? freeFilePath(info.path(), info.completeBaseName(), info.suffix())
                                 : path;
        if (refuses || !QFile::rename(trash, back))
            return fail(QStringLiteral("The Trash keeps it."));
        return back;
    }

    bool refuses = false;
    std::function<void()> preparing; // on the thread that prepares
    QStringList trashed;             // where the files were

private:
    struct FakeMove : Move {
        FakeMove(FakeTrash &trash, QString path) : m_trash(trash), m_path(std::move(path)) {}
        Result<QString> finish() override { return m_trash.move(m_path); }
        FakeTrash &m_trash;
        QString m_path;
    };
    Result<QString> move(const QString &path)
    {
        QDir().mkpath(m_folder);
        const QString target =
            QStringLiteral("%1/%2 %3").arg(m_folder).arg(++m_count).arg(QFileInfo(path).fileName());
        if (!QFile::rename(path, target))
            return fail(QStringLiteral("The Trash is broken."));
        trashed.append(path);
        return target;
    }

    QString m_folder;
    int m_count = 0;
};

class FakeSecrets : public Secrets {
public:
    QFuture<Result<QString>> get(const QString &account, const QString &service,
                                 SecretsAccess access) override
    {
        ++asked;
        if (isLocked && access == SecretsAccess::Quiet)
            return readyFuture<Result<QString>>(fail(Error::Kind::Denied, QStringLiteral("Locked.")));
        isLocked = false;
        const auto found = items.constFind({account, service});
        if (found == items.constEnd())
            return readyFuture<Result<QString>>(fail(Error::Kind::NotFound, QStringLiteral("None.")));
        return readyFuture(Result<QString>(*found));
    }
    QFuture<Result<void>> set(const QString &value, const QString &account, const QString &service) override
    {
        if (failure)
            return readyFuture<Result<void>>(std::unexpected(*failure));
        if (value.isEmpty())
            items.remove({account, service});
        else
            items.insert({account, service}, value);
        return readyFuture<Result<void>>({});
    }

    std::optional<Error> failure; // of what is to be stored
    bool isLocked = false;        // until the user may be asked
    int asked = 0;
    QHash<std::pair<QString, QString>, QString> items; // by account and service
};

class FakeLoginItem : public LoginItem {
public:
    bool isEnabled() const override { return enabled; }
    Result<void> setEnabled(bool wanted) override
    {
        if (failure)
            return std::unexpected(*failure);
        enabled = wanted;
        return {};
    }

    bool enabled = false;
    std::optional<Error> failure;
};

class FakeSounds : public Sounds {
public:
    void shutter() override { ++shutters; }
    void beep() override { ++beeps; }
    void pop() override { ++pops; }

    int shutters = 0;
    int beeps = 0;
    int pops = 0;
};

class FakePermissions : public Permissions {
public:
    PermissionStatus status(Permission permission) const override
    {
        return statuses.value(permission, PermissionStatus::Granted);
    }
    void request(Permission permission) override { requested.append(permission); }
    void openSettings(Permission permission) override { opened.append(permission); }

    QHash<Permission, PermissionStatus> statuses; // granted when missing
    QList<Permission> requested;
    QList<Permission> opened;
};

class FakePasteboard : public Pasteboard {
public:
    void clear() override { set({}); }
    void setFlavors(const QList<Flavor> &wanted) override { set(wanted); }
    void setText(const QString &text) override { set({{kText, text.toUtf8()}}); }
    void setFile(const QUrl &file) override { set({{kFiles, file.toEncoded() + "\r\n"}}); }
    bool has(const QString &mimeType) const override { return find(mimeType) != nullptr; }
    QByteArray data(const QString &mimeType) const override
    {
        const Flavor *found = find(mimeType);
        return found ? found->second : QByteArray();
    }
    QString text() const override { return QString::fromUtf8(data(kText)); }
    bool hasImage() const override { return !image().isNull(); }
    QImage image() const override
    {
        for (const Flavor &flavor : flavors) {
            if (flavor.first.startsWith(QLatin1String("image/")))
                return QImage::fromData(flavor.second);
        }
        return {};
    }

    QList<Flavor> lostAtQuit() const override { return flavors; }

    QList<Flavor> flavors;

private:
    void set(const QList<Flavor> &wanted)
    {
        flavors = wanted;
        noteChange();
    }
    const Flavor *find(const QString &mimeType) const
    {
        for (const Flavor &flavor : flavors) {
            if (flavor.first == mimeType)
                return &flavor;
        }
        return nullptr;
    }

    inline static const QString kText = QStringLiteral("text/plain");
    inline static const QString kFiles = QStringLiteral("text/uri-list");
};

class FakeWorkspace : public Workspace {
public:
    std::optional<Application> frontmost() const override { return front; }
    Result<void> open(const QUrl &url) override
    {
        opened.append(url);
        return {};
    }
    Result<void> reveal(const QString &path) override
    {
        if (!QFileInfo::exists(path))
            return fail(Error::Kind::NotFound, QStringLiteral("No such file."));
        revealed.append(path);
        return {};
    }
    void rememberActiveWindow() override { remembered = front; }
    void restoreActiveWindow() override
    {
        ++restored;
        if (remembered && remembered != front)
            activate(*remembered);
    }

    // As if the user had gone to that program.
    void activate(const Application &application)
    {
        front = application;
        Q_EMIT activated(application);
    }

    std::optional<Application> front;
    std::optional<Application> remembered;
    QList<QUrl> opened;
    QStringList revealed;
    int restored = 0;
};
