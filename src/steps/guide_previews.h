#pragma once

#include "steps/guide_step.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QObject>
#include <QThreadPool>

// Small pictures of a guide's steps with their marks, made on workers and only when a step has changed. The
// one before stays until the new one is there. Those that nobody has looked at for long are kept packed, so
// that a long guide takes little room. Main thread only.
class GuidePreviews : public QObject {
    Q_OBJECT
public:
    static constexpr int kLongestEdge = 900; // pixels
    // Of unpacked pictures: some screens full of them.
    static constexpr qint64 kMostBytes = 48'000'000;

    explicit GuidePreviews(QObject *parent = nullptr);
    ~GuidePreviews() override;

    // Brings them up to date with the guide; those of steps that are gone fall away.
    void refresh(const Guide &guide);
    // Null while there is none, or while it is packed.
    QImage preview(const QUuid &step) const { return m_previews.value(step).image; }
    // These are being looked at: made or unpacked before all others, and never packed.
    void wantFirst(const QList<QUuid> &steps);
    qint64 unpackedBytes() const;
    bool isIdle() const { return m_underWay.isEmpty() && m_waiting.isEmpty(); }

    // What the look of a step's preview depends on.
    static QString key(const GuideStep &step, int number, const Guide &guide);
    // A copy whose longer edge is at most maxEdge; the picture itself when it is no larger.
    static QImage thumbnail(const QImage &image, int maxEdge);

Q_SIGNALS:
    void changed(const QUuid &step);
    void idle();

private:
    struct Preview {
        QString key;
        QImage image;      // null when packed
        QByteArray packed; // lossless
        bool isUnpacking = false;
        quint64 lastWanted = 0;
    };
    struct Order {
        GuideStep step;
        int number = 0;
        bool markClicks = false;
        bool redact = false;
        QString key;
    };
    int mostAtOnce() const;
    void startNext();
    void made(const QUuid &step, const QString &key, const QImage &image, const QByteArray &packed);
    void unpack(const QUuid &step);
    void packOthers();

    QHash<QUuid, Preview> m_previews;
    QHash<QUuid, Order> m_waiting;
    QHash<QUuid, QString> m_underWay; // keys
    QList<QUuid> m_order;             // of the guide
    QList<QUuid> m_first;
    quint64 m_now = 0; // counts how often something was wanted
    QThreadPool m_renderers;
};
