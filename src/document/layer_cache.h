#pragma once

#include "document/annotation.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QSize>
#include <QTransform>
#include <optional>

// Keeps the visible part of a document as a picture and, while one object changes, what lies below and above
// that object, so that each step repaints only the place it leaves and the place it enters. What it shows is
// what Renderer::draw paints, clipped to the image.
//
//     cache.prepare(scene, imageToDevice, viewSize, selected);    // at the press, or when anything else
//     changed update(cache.update(objectAsItIsNow));                      // at each step
//     painter.drawImage(dirty.topLeft(), cache.picture(), dirty); // in the paint event, over the canvas'
//     ground
//
// `prepare` costs about as much as drawing the whole scene once; `update` goes with the size of the object.
// Device pixels throughout: a widget with a scale sets the picture's device pixel ratio on its own copy, or
// scales its painter back.
class LayerCache {
public:
    struct Scene {
        QImage base;
        QImage pixelated; // may be null without `blur` objects
        QList<Annotation> annotations;
    };

    // `imageToDevice` scales and moves, nothing else. `changing` is the object that later steps will change;
    // it must be among the scene's annotations (one that is only being drawn is appended by the caller).
    // Without it, `update` does nothing.
    void prepare(const Scene &scene, const QTransform &imageToDevice, const QSize &size,
                 const std::optional<QUuid> &changing = {});
    // Shows the changing object as it is now. Returns what changed, in device pixels; empty when nothing did,
    // or when the object isn't the one that was named.
    QRect update(const Annotation &object);

    // ARGB32_Premultiplied, transparent outside the image. Null before the first `prepare`.
    const QImage &picture() const { return m_picture; }
    const std::optional<QUuid> &changing() const { return m_changing; }

private:
    QRect deviceRect(const Annotation &object) const;
    void paintObject(const Annotation &object, const QRect &region);
    void coverWithAbove(const QRect &region);

    Scene m_scene;
    QTransform m_transform;
    std::optional<QUuid> m_changing;
    qsizetype m_index = -1; // of the changing object
    QRect m_imageRect;      // the image in the picture
    QImage m_picture;
    QImage m_below;
    // What the objects above make of a pixel d, for each channel: d · (onWhite − onBlack) + onBlack. That
    // holds for everything they paint, a multiplying highlight too, and letters come out as they would on the
    // spot: drawn on nothing, they would be blended without the correction that opaque ground gets. The last
    // is for the opacity of a base that isn't opaque.
    QImage m_aboveOnBlack;
    QImage m_aboveOnWhite;
    QImage m_aboveAlone;
};
