#include "editor/canvas_painter.h"

#include "base/geometry.h"
#include "document/editor_document.h"
#include "document/renderer.h"
#include "document/soft_shadow.h"
#include "editor/canvas_chrome.h"
#include "ui/theme.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace {

constexpr double kCornerRadius = 24;    // image pixels, with rounded corners or a backdrop
constexpr double kBorderWidth = 16;     // image pixels, half of it over the picture
constexpr double kSharpAbove = 1.5;     // device pixels for an image pixel, from where pixels stay square
constexpr double kBackdropShare = 0.08; // of the longer side
constexpr double kSpotlightCorner = 16; // image pixels
constexpr int kMostRects = 8;           // rendered one by one; a region of more is rendered as one
constexpr double kChromeReach = 10;     // selection outline and handles around the bounds, with their strokes

bool isSpotlight(const Annotation &annotation)
{
    return annotation.kind == ToolKind::Spotlight;
}

bool isMosaic(const Annotation &annotation)
{
    return annotation.kind == ToolKind::Blur;
}

bool dims(const QList<Annotation> &objects)
{
    return std::any_of(objects.begin(), objects.end(), isSpotlight);
}

QList<Annotation> mosaicsOf(QList<Annotation> objects)
{
    objects.removeIf([](const Annotation &a) { return a.kind != ToolKind::Blur; });
    return objects;
}

bool sameStage(const CanvasPainter::Scene &a, const CanvasPainter::Scene &b)
{
    const auto &v = a.viewport, &w = b.viewport;
    return a.base.cacheKey() == b.base.cacheKey() && a.effects == b.effects && v.view == w.view &&
           v.backing == w.backing && v.scale() == w.scale() && v.origin() == w.origin();
}

// Draws the objects anew over the stage, in one part of the layer. Callable from any thread.
void drawObjects(QImage &layer, const QImage &stage, const CanvasPainter::Scene &scene, const QRect &rect)
{
    const Effects &effects = scene.effects;
    const QTransform toView = scene.imageToView();
    const QRectF image(scene.base.rect());
    const double s = scene.viewport.scale();

    QPainter painter(&layer);
    painter.setClipRect(rect);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPointF(), stage);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.save();
    const QRectF frame = toView.mapRect(image);
    const double radius = effects.rounded || effects.backdrop ? kCornerRadius * s : 0;
    if (radius > 0) {
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath clip;
        clip.addRoundedRect(frame, radius, radius);
        painter.setClipPath(clip, Qt::IntersectClip);
    } else {
        painter.setClipRect(frame, Qt::IntersectClip);
    }
    painter.setTransform(toView, true);
    Renderer::drawSpotlights(image.size(), scene.objects, painter);
    for (const Annotation &annotation : scene.objects)
        Renderer::drawObject(annotation, scene.base, scene.pixelated, scene.objects, painter);
    painter.restore();

    if (effects.border) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(
            QPen(effects.borderColor, kBorderWidth * s, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        painter.drawRoundedRect(frame, radius, radius);
    }
}

} // namespace

CanvasPainter::Scene CanvasPainter::Scene::of(const EditorDocument &document,
                                              const CanvasInteraction &interaction)
{
    Scene scene;
    scene.viewport = interaction.viewport();
    scene.base = document.base();
    scene.effects = document.effects();
    const QUuid edited = interaction.editedObject();
    scene.objects = document.annotations();
    // The field shows the text; a callout's bubble stays under it.
    scene.objects.removeIf(
        [&edited](const Annotation &a) { return a.id == edited && a.kind != ToolKind::Callout; });
    for (Annotation &annotation : scene.objects) {
        if (annotation.id == edited)
            annotation.text.clear();
    }
    scene.draft = interaction.draft();
    if (scene.hasMosaic())
        scene.pixelated = document.readyPixelated();
    // Dimming lies under all objects, also while it is being drawn. A press alone dims nothing yet.
    if (scene.draft && isSpotlight(*scene.draft)) {
        const Annotation spotlight = *std::exchange(scene.draft, std::nullopt);
        if (!spotlight.rect().isEmpty())
            scene.objects.append(spotlight);
    }
    scene.selected = document.selected();
    if (scene.selected && scene.selected->id == edited)
        scene.selected.reset();
    scene.band = interaction.band();
    scene.bandKind = interaction.bandKind();
    scene.aim = interaction.aim();
    if (scene.aim)
        scene.aimedColor = document.sampleColor(*scene.aim).value_or(QColor());
    scene.cutsColumns = document.toolStyle(ToolKind::Cutout) == 1;
    return scene;
}

bool CanvasPainter::Scene::hasMosaic() const
{
    return (draft && isMosaic(*draft)) || std::any_of(objects.begin(), objects.end(), isMosaic);
}

bool CanvasPainter::wantsMosaic() const
{
    return m_scene.pixelated.isNull() && m_scene.hasMosaic();
}

// Whole device pixels, so that a picture at 100 percent is not smeared over two.
QTransform CanvasPainter::Scene::imageToView() const
{
    const CanvasViewport &view = viewport;
    const QPointF origin = view.origin();
    const auto snapped = [&view](double value) { return std::round(value * view.backing) / view.backing; };
    const double scale = view.scale();
    return QTransform::fromTranslate(snapped(origin.x()), snapped(origin.y())).scale(scale, scale);
}

QRectF CanvasPainter::painted(const Annotation &annotation) const
{
    return outset(m_scene.imageToView().mapRect(Renderer::paintedRect(annotation)), 2);
}

QRegion CanvasPainter::update(const Scene &scene)
{
    const QRegion overlayBefore = overlayRegion();
    const bool stageStays = !m_layer.isNull() && sameStage(m_scene, scene);
    const bool mosaicCame = m_scene.pixelated.cacheKey() != scene.pixelated.cacheKey() && scene.hasMosaic();
    const QList<Annotation> before = std::exchange(m_scene, scene).objects;
    const QRect whole(QPoint(), scene.viewport.view.toSize());
    if (!stageStays) {
        renderStage();
        renderObjects(whole);
        return whole;
    }
    if (!dims(before) && dims(scene.objects) && m_ahead && m_ahead->fits(scene)) {
        m_layer = std::exchange(m_ahead, std::nullopt)->layer;
        for (const Annotation &annotation : scene.objects) {
            if (isSpotlight(annotation))
                renderObjects(painted(annotation).toAlignedRect() & whole);
        }
        return whole;
    }
    QRegion changed = changedObjects(before, scene.objects) & whole;
    for (const Annotation &annotation : scene.objects) {
        if (mosaicCame && (isMosaic(annotation) || annotation.kind == ToolKind::Magnify))
            changed |= painted(annotation).toAlignedRect() & whole;
    }
    if (!changed.isEmpty())
        renderObjects(changed);
    return (changed | overlayBefore | overlayRegion()) & whole;
}

// Dimming stays as it is but where a hole opens or closes: between the two rectangles, and around their
// corners.
QRegion CanvasPainter::changedHole(const Annotation *before, const Annotation *after) const
{
    const auto reach = [this](const Annotation *a) { return a ? painted(*a).toAlignedRect() : QRect(); };
    const QRect old = reach(before), now = reach(after);
    const int corner = qCeil(kSpotlightCorner * m_scene.viewport.scale()) + 4;
    const QRect untouched = (old & now).adjusted(corner, corner, -corner, -corner);
    QRegion region = QRegion(old) | now;
    return untouched.isValid() ? region - untouched : region;
}

QRegion CanvasPainter::changedObjects(const QList<Annotation> &before, const QList<Annotation> &after) const
{
    if (before == after)
        return {};
    if (dims(before) != dims(after))
        return QRect(QPoint(), m_scene.viewport.view.toSize());
    QHash<QUuid, std::pair<const Annotation *, qsizetype>> old;
    for (qsizetype i = 0; i < before.size(); ++i)
        old.insert(before[i].id, {&before[i], i});
    QRegion region;
    const auto touch = [&](const Annotation *was, const Annotation *is) {
        const Annotation &any = was ? *was : *is;
        if (any.kind == ToolKind::Spotlight) {
            region |= changedHole(was, is);
            return;
        }
        const QRect old = was ? painted(*was).toAlignedRect() : QRect();
        const QRect now = is ? painted(*is).toAlignedRect() : QRect();
        // As one where they overlap: a region of many bands would draw what crosses them many times.
        region |= old.intersects(now) ? QRegion(old | now) : QRegion(old) | now;
    };
    qsizetype last = -1;
    for (const Annotation &annotation : after) {
        const auto known = old.find(annotation.id);
        if (known == old.end()) {
            touch(nullptr, &annotation);
            continue;
        }
        const auto [previous, index] = *known;
        const bool changedPlaces = index < last;
        if (changedPlaces || !(*previous == annotation))
            touch(previous, &annotation);
        last = std::max(last, index);
        old.erase(known);
    }
    for (const auto &[previous, index] : old)
        touch(previous, nullptr);
    if (mosaicsOf(before) != mosaicsOf(after)) { // which magnifiers show, wherever they are
        for (const Annotation &annotation : after) {
            if (annotation.kind == ToolKind::Magnify)
                region |= painted(annotation).toAlignedRect();
        }
    }
    return region;
}

QRegion CanvasPainter::overlayRegion() const
{
    QRegion region;
    if (m_scene.draft)
        region |= painted(*m_scene.draft).toAlignedRect();
    if (m_scene.selected) {
        QRectF rect = m_scene.selected->bounds();
        for (const auto &[handle, point] : m_scene.selected->handles())
            rect |= QRectF(point, QSizeF(0.01, 0.01));
        region |= outset(m_scene.imageToView().mapRect(rect), kChromeReach).toAlignedRect();
    }
    if (m_scene.aim)
        region |= CanvasChrome::aimRect(m_scene).toAlignedRect();
    if (m_scene.band) // the crop band darkens all around it; labels hang below
        region |= QRect(QPoint(), m_scene.viewport.view.toSize());
    return region;
}

void CanvasPainter::renderStage()
{
    const CanvasViewport &view = m_scene.viewport;
    const QSize pixels = (view.view * view.backing).toSize().expandedTo({1, 1});
    if (m_stage.size() != pixels)
        m_stage = QImage(pixels, QImage::Format_RGB32);
    m_stage.setDevicePixelRatio(view.backing);
    QPainter painter(&m_stage);
    painter.setRenderHint(QPainter::Antialiasing);
    drawStage(painter);
}

void CanvasPainter::drawStage(QPainter &painter)
{
    const QTransform toView = m_scene.imageToView();
    const double s = m_scene.viewport.scale();
    const Effects &effects = m_scene.effects;
    painter.fillRect(QRectF(QPointF(), m_scene.viewport.view), Theme::canvasSurround());

    const QRectF frame = toView.mapRect(QRectF(m_scene.base.rect()));
    const double radius = effects.rounded || effects.backdrop ? kCornerRadius * s : 0;
    QPainterPath framePath;
    framePath.addRoundedRect(frame, radius, radius);

    if (effects.backdrop) {
        const double grow =
            std::trunc(std::max(m_scene.base.width(), m_scene.base.height()) * kBackdropShare) * s;
        const QRectF around = outset(frame, grow);
        const auto &colors = Effects::backdropGradient(effects.backdropStyle);
        QLinearGradient gradient(around.topLeft(), around.bottomRight());
        gradient.setColorAt(0, colors.first);
        gradient.setColorAt(1, colors.second);
        painter.fillRect(around, gradient);
    }
    const bool lifted = effects.shadow || effects.backdrop;
    const SoftShadow shadow{lifted ? 30.0 : 14.0, QColor::fromRgbF(0, 0, 0, lifted ? 0.7f : 0.45f), {0, 6}};
    shadow.paint(painter, frame, [&](QPainter &mask) { mask.fillPath(framePath, Qt::black); });
    painter.fillPath(framePath, QColor::fromRgbF(0.3f, 0.3f, 0.3f));

    painter.save();
    if (radius > 0)
        painter.setClipPath(framePath);
    drawBase(painter);
    painter.restore();
}

void CanvasPainter::drawBase(QPainter &painter)
{
    const CanvasViewport &view = m_scene.viewport;
    const double zoom = view.displayZoom();
    const QRectF frame = m_scene.imageToView().mapRect(QRectF(m_scene.base.rect()));
    if (zoom >= 1) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom > 1 && zoom <= kSharpAbove);
        painter.drawImage(frame, m_scene.base);
        return;
    }
    // Reduced once with every pixel counted, then only copied while it is pushed about.
    const QSize size = (QSizeF(m_scene.base.size()) * zoom).toSize().expandedTo({1, 1});
    if (m_scaledKey != m_scene.base.cacheKey() || m_scaled.size() != size) {
        m_scaled = m_scene.base.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_scaledKey = m_scene.base.cacheKey();
    }
    painter.drawImage(frame, m_scaled);
    if (!view.zoom)
        m_scaled = QImage(); // while fitting, the next size is another one
}

void CanvasPainter::renderObjects(const QRegion &region)
{
    if (m_stage.isNull())
        renderStage();
    if (m_scene.objects.isEmpty() && !m_scene.effects.border) {
        m_layer = m_stage; // shares its pixels
        return;
    }
    if (m_layer.size() != m_stage.size())
        m_layer = m_stage;
    m_layer.setDevicePixelRatio(m_stage.devicePixelRatio());
    // Rectangle by rectangle, so that nothing is drawn for the room between them.
    if (region.rectCount() > kMostRects)
        return drawObjects(m_layer, m_stage, m_scene, region.boundingRect());
    for (const QRect &rect : region)
        drawObjects(m_layer, m_stage, m_scene, rect);
}

bool CanvasPainter::Dimmed::fits(const Scene &now) const
{
    QList<Annotation> objects = now.objects;
    objects.removeIf(isSpotlight);
    return sameStage(scene, now) && scene.objects == objects &&
           scene.pixelated.cacheKey() == now.pixelated.cacheKey();
}

void CanvasPainter::Dimmed::draw()
{
    Scene all = scene;
    Annotation closed; // a hole of no size
    closed.kind = ToolKind::Spotlight;
    all.objects.append(closed);
    layer = stage;
    drawObjects(layer, stage, all, QRect(QPoint(), scene.viewport.view.toSize()));
}

std::optional<CanvasPainter::Dimmed> CanvasPainter::dimmedAhead() const
{
    if (m_stage.isNull() || m_scene.objects.isEmpty() || dims(m_scene.objects) ||
        (m_ahead && m_ahead->fits(m_scene)))
        return std::nullopt;
    return Dimmed{m_scene, m_stage, {}};
}

void CanvasPainter::releaseCaches()
{
    m_stage = QImage();
    m_scaled = QImage();
    m_ahead.reset();
    m_scene.pixelated = QImage();
}

void CanvasPainter::paint(QPainter &painter) const
{
    painter.drawImage(QPointF(), m_layer);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_scene.draft) {
        painter.save();
        painter.setClipRect(m_scene.imageToView().mapRect(QRectF(m_scene.base.rect())), Qt::IntersectClip);
        painter.setTransform(m_scene.imageToView(), true);
        Renderer::drawObject(*m_scene.draft, m_scene.base, m_scene.pixelated, m_scene.objects, painter);
        painter.restore();
    }
    if (m_scene.band)
        CanvasChrome::drawBand(m_scene, painter);
    if (m_scene.selected)
        CanvasChrome::drawSelection(m_scene, painter);
    if (m_scene.aim)
        CanvasChrome::drawAim(m_scene, painter);
}
