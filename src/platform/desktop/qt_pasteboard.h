#pragma once

#include "platform/pasteboard.h"

#include <QObject>
#include <functional>

// The desktop's clipboard. Holds ready bytes, so that a paste elsewhere waits for no encoding. Needs the
// toolkit's application object.
class QtPasteboard : public Pasteboard {
public:
    // `hasManager` tells whether somebody takes over the content when this program ends.
    explicit QtPasteboard(std::function<bool()> hasManager = [] { return false; });
    void clear() override;
    void setFlavors(const QList<Flavor> &flavors) override;
    void setText(const QString &text) override;
    void setFile(const QUrl &file) override;
    bool has(const QString &mimeType) const override;
    QByteArray data(const QString &mimeType) const override;
    QString text() const override;
    bool hasImage() const override;
    QImage image() const override;
    QList<Flavor> lostAtQuit() const override;

private:
    std::function<bool()> m_hasManager;
    QObject m_listener;
};
