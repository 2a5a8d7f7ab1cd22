#pragma once

#include "platform/pasteboard.h"
#include "platform/sounds.h"
#include "platform/workspace.h"

// Other programs can't be seen or started.
class NullWorkspace : public Workspace {
    Q_OBJECT
public:
    explicit NullWorkspace(QString reason);
    std::optional<Application> frontmost() const override { return std::nullopt; }
    Result<void> open(const QUrl &url) override;
    Result<void> reveal(const QString &path) override;
    void rememberActiveWindow() override {}
    void restoreActiveWindow() override {}

private:
    QString m_reason;
};

// A clipboard of this process alone.
class NullPasteboard : public Pasteboard {
public:
    void clear() override { setFlavors({}); }
    void setFlavors(const QList<Flavor> &flavors) override
    {
        m_flavors = flavors;
        noteChange();
    }
    void setText(const QString &text) override;
    void setFile(const QUrl &file) override;
    bool has(const QString &mimeType) const override;
    QByteArray data(const QString &mimeType) const override;
    QString text() const override;
    bool hasImage() const override;
    QImage image() const override;
    QList<Flavor> lostAtQuit() const override { return {}; }

private:
    QList<Flavor> m_flavors;
};

class NullSounds : public Sounds {
public:
    void shutter() override {}
    void beep() override {}
    void pop() override {}
};
