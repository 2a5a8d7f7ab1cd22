#pragma once

#include "platform/pasteboard.h"

#include <QObject>

// The desktop's clipboard. Holds ready bytes, so that a paste elsewhere waits for no encoding. Needs the
// toolkit's application object.
class QtPasteboard : public Pasteboard {
public:
    QtPasteboard();
    void clear() override;
    void setFlavors(const QList<Flavor> &flavors) override;
    void setText(const QString &text) override;
    void setFile(const QUrl &file) override;
    bool has(const QString &mimeType) const override;
    QByteArray data(const QString &mimeType) const override;
    QString text() const override;
    bool hasImage() const override;
    QImage image() const override;

private:
    QObject m_listener;
};
