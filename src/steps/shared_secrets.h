#pragma once

#include <QImage>
#include <QList>
#include <QRectF>

// What is private in one picture of a window may stand in the next one as well, half covered by a menu, and
// can't be read there as what it is. Compares pixels, so it knows what stands at the same place in the same
// way. A value, callable from any thread.
class SharedSecrets {
public:
    // `boxes` are fractions of the picture, origin at the lower left.
    void learn(const QImage &picture, const QList<QRectF> &boxes);
    // Whether anything is known of pictures of that size that isn't hidden by `own` anyway.
    bool concern(QSize picture, const QList<QRectF> &own) const;
    // What still shows of it: further boxes.
    QList<QRectF> remains(const QImage &picture, const QList<QRectF> &own) const;

private:
    struct Secret {
        QSize picture;
        QRect place;
        QImage pixels;
    };
    bool isHidden(const Secret &secret, const QList<QRectF> &own) const;

    QList<Secret> m_secrets;
};
