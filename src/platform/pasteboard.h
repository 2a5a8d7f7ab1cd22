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

    // A place in the order in which the user copied. What takes time to make takes its turn when it is asked
    // for.
    class Turn {
        friend class Pasteboard;
        explicit Turn(quint64 order) : m_order(order) {}
        quint64 m_order;
    };
    Turn takeTurn() { return Turn(++m_order); }
    // Like setFlavors, setText and setFile, unless something newer is there: what another program copied
    // meanwhile, or what was asked for later and was ready sooner. False then, and nothing is touched.
    bool placeFlavors(const QList<Flavor> &flavors, const Turn &turn);
    bool placeText(const QString &text, const Turn &turn);
    bool placeFile(const QUrl &file, const Turn &turn);

    virtual bool has(const QString &mimeType) const = 0;
    virtual QByteArray data(const QString &mimeType) const = 0;
    virtual QString text() const = 0;
    // A null image when there is none that can be read.
    virtual bool hasImage() const = 0;
    virtual QImage image() const = 0;

    // What would be gone if this program ended now: its own content that no clipboard manager takes over.
    virtual QList<Flavor> lostAtQuit() const = 0;

protected:
    // The content is another one now, by whomever.
    void noteChange() { m_newest = ++m_order; }

private:
    quint64 m_order = 0;  // of the last turn or change
    quint64 m_newest = 0; // of what is there
};
