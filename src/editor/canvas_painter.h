#pragma once

#include "document/annotation.h"
#include "document/effects.h"
#include "editor/canvas_interaction.h"
#include "editor/canvas_viewport.h"

#include <QImage>
#include <QList>
#include <QRegion>
#include <QUuid>
#include <optional>

class EditorDocument;
class QPainter;

// Paints the canvas. The picture with its objects is kept as it looks in the view and brought up to date only
// where it changed; what lies over it (the object being drawn, bands, the selection) is painted anew each
// time.
class CanvasPainter {
public:
    // All that the look of the canvas depends on, taken at one moment.
    struct Scene {
        CanvasViewport viewport;
        QImage base;
        QImage pixelated;
        Effects effects;
        QList<Annotation> objects; // without the text that is being typed
        std::optional<Annotation> draft;
        std::optional<Annotation> selected; // none while its text is being typed
        std::optional<QRectF> band;         // image pixels
        CanvasInteraction::BandKind bandKind = CanvasInteraction::BandKind::Crop;
        bool cutsColumns = false;
        std::optional<QPointF> aim; // of keys that pick a colour; image pixels
        QColor aimedColor;

        static Scene of(const EditorDocument &document, const CanvasInteraction &interaction);
        QTransform imageToView() const;
        bool hasMosaic() const;
    };
    // The canvas dimmed as a whole, objects and all: what the first spotlight shows around its hole.
    struct Dimmed {
        Scene scene; // as it was when this was asked for
        QImage stage;
        QImage layer;

        // Takes longer than a frame; callable from any thread.
        void draw();
        bool fits(const Scene &now) const;
    };

    // Takes the scene over and tells what part of the view has to be painted, in points.
    QRegion update(const Scene &scene);
    // Within the painter's clip.
    void paint(QPainter &painter) const;
    // The first spotlight changes every pixel at once. Where that has been drawn ahead, its first frame is as
    // quick as all others. Nothing when there is nothing to prepare, or it is prepared already.
    std::optional<Dimmed> dimmedAhead() const;
    void keepAhead(std::optional<Dimmed> drawn) { m_ahead = std::move(drawn); }
    // A mosaic is to be shown, which has yet to be made.
    bool wantsMosaic() const;
    // Gives back what only the next change needs, which then takes a little longer.
    void releaseCaches();

private:
    void renderStage();
    void renderObjects(const QRegion &region); // points
    QRegion changedObjects(const QList<Annotation> &before, const QList<Annotation> &after) const;
    QRegion changedHole(const Annotation *before, const Annotation *after) const;
    QRegion overlayRegion() const;
    QRectF painted(const Annotation &annotation) const; // view coordinates
    void drawStage(QPainter &painter);
    void drawBase(QPainter &painter);

    Scene m_scene;
    QImage m_stage;  // surround, backdrop, shadow and picture, in device pixels
    QImage m_layer;  // the same with all objects
    QImage m_scaled; // the picture reduced to its size in the view
    qint64 m_scaledKey = 0;
    std::optional<Dimmed> m_ahead;
};
