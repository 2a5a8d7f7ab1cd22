#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QString>
#include <QUrl>
#include <utility>

// The clipboard that other programs read. Main thread only. Content stays readable while this program runs.
class Pasteboard {
public:
    using Flavor = std::pair<QString, QByteArray>; // MIME type, bytes

    virtual ~Pasteboard() = default;
    virtual void clear() = 0;
    // Replaces what is there by these flavours, best first.
    virtual void setFlavors(const QList<Flavor> &flavors) = 0;
    virtual void setText(const QString &text) = 0;
    virtual void setFile(const QUrl &file) = 0;

    virtual bool has(const QString &mimeType) const = 0;
    virtual QByteArray data(const QString &mimeType) const = 0;
    virtual QString text() const = 0;
    // A null image when there is none that can be read.
    virtual bool hasImage() const = 0;
    virtual QImage image() const = 0;
};
