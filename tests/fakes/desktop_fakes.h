#pragma once

#include "base/clock.h"
#include "platform/login_item.h"
#include "platform/paths.h"
#include "platform/secrets.h"
#include "platform/trash.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QString>
#include <QStringList>

// Stand-ins for the quieter parts of a desktop. Each records what it was asked and can be told to fail.

class FakePaths : public Paths {
public:
    explicit FakePaths(QString root) : m_root(std::move(root)) {}
    QString home() const override { return m_root; }
    QString pictures() const override { return m_root + "/Pictures"; }
    QString desktop() const override { return m_root + "/Desktop"; }
    QString temporary() const override { return m_root + "/tmp"; }
    QString config() const override { return m_root + "/config"; }
    QString state() const override { return m_root + "/state"; }
    QString cache() const override { return m_root + "/cache"; }

private:
    QString m_root;
};

class FakeSecrets : public Secrets {
public:
    std::optional<QString> get(const QString &account, const QString &service) const override
    {
        ++reads;
        const QString key = service + '/' + account;
        return items.contains(key) ? std::optional(items.value(key)) : std::nullopt;
    }
    Result<void> set(const QString &value, const QString &account, const QString &service) override
    {
        items.remove(service + '/' + account);
        if (!value.isEmpty())
            items.insert(service + '/' + account, value);
        return {};
    }

    QHash<QString, QString> items;
    mutable int reads = 0;
};

class FakeLoginItem : public LoginItem {
public:
    bool isEnabled() const override { return enabled; }
    Result<void> setEnabled(bool on) override
    {
        if (failure)
            return std::unexpected(*failure);
        enabled = on;
        return {};
    }

    bool enabled = false;
    std::optional<Error> failure;
};

class FakeTrash : public Trash {
public:
    explicit FakeTrash(QString folder) : m_folder(std::move(folder)) {}
    Result<QString> moveToTrash(const QString &path) override
    {
        if (failure)
            return std::unexpected(*failure);
        QDir().mkpath(m_folder);
        const QString target = m_folder + '/' + QFileInfo(path).fileName();
        if (!QFile::rename(path, target))
            return fail("There is nothing to move.");
        return target;
    }

    std::optional<Error> failure;

private:
    QString m_folder;
};

class FakeClock : public Clock {
public:
    QDateTime now() const override { return time; }
    void advance(qint64 seconds) { time = time.addSecs(seconds); }

    QDateTime time{QDate(2026, 3, 14), QTime(9, 41, 7)};
};
