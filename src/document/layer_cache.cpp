#include "document/layer_cache.h"

#include "document/renderer.h"

#include <QPainter>
#include <algorithm>
#include <cstring>

namespace {

void copyRegion(const QImage &from, QImage &to, const QRect &region)
{
    for (int y = region.top(); y <= region.bottom(); ++y)
        std::memcpy(to.scanLine(y) + 4 * region.left(), from.constScanLine(y) + 4 * region.left(),
                    4 * static_cast<size_t>(region.width()));
}

// a · b / 255, rounded.
inline uint32_t times(uint32_t a, uint32_t b)
{
    const uint32_t t = a * b + 128;
    return (t + (t >> 8)) >> 8;
}

} // namespace

void LayerCache::prepare(const Scene &scene, const QTransform &imageToDevice, const QSize &size,
                         const std::optional<QUuid> &changing)
{
    m_scene = scene;
    m_transform = imageToDevice;
    m_changing.reset();
    m_index = -1;
    m_below = m_aboveOnBlack = m_aboveOnWhite = m_aboveAlone = QImage();
    if (m_picture.size() != size || m_picture.isNull())
        m_picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
    if (m_picture.isNull())
        return;
    m_picture.fill(Qt::transparent);
    const QRectF image = imageToDevice.mapRect(QRectF(scene.base.rect()));
    m_imageRect = QRect(qRound(image.left()), qRound(image.top()), 0, 0);
    m_imageRect.setRight(qRound(image.right()) - 1);
    m_imageRect.setBottom(qRound(image.bottom()) - 1);
    m_imageRect &= m_picture.rect();

    const QList<Annotation> &objects = m_scene.annotations;
    if (changing) {
        const auto found =
            std::find_if(objects.begin(), objects.end(), [&](auto &a) { return a.id == *changing; });
        if (found != objects.end()) {
            m_index = found - objects.begin();
            m_changing = changing;
        }
    }

    const auto begin = [&](QPainter &painter) {
        painter.setClipRect(m_imageRect);
        painter.setTransform(m_transform);
    };
    // Spotlights lie under all other objects: when one changes, everything else is above it.
    const bool spotlight = m_changing && objects[m_index].kind == ToolKind::Spotlight;
    const qsizetype below = !m_changing ? objects.size() : spotlight ? 0 : m_index;
    {
        QPainter painter(&m_picture);
        begin(painter);
        Renderer::drawBase(scene.base, painter);
        if (!spotlight)
            Renderer::drawSpotlights(scene.base.size(), objects, painter);
        for (qsizetype i = 0; i < below; ++i)
            Renderer::drawObject(objects[i], scene.base, scene.pixelated, painter);
    }
    if (!m_changing)
        return;
    m_below = m_picture.copy();

    const qsizetype firstAbove = spotlight ? 0 : m_index + 1;
    const auto drawAbove = [&](QImage &layer, const QColor &ground) {
        layer = QImage(size, QImage::Format_ARGB32_Premultiplied);
        if (layer.isNull())
            return;
        layer.fill(ground);
        QPainter painter(&layer);
        begin(painter);
        for (qsizetype i = firstAbove; i < objects.size(); ++i)
            Renderer::drawObject(objects[i], scene.base, scene.pixelated, painter);
    };
    const auto paints = [](const Annotation &a) { return a.kind != ToolKind::Spotlight; };
    if (std::any_of(objects.begin() + firstAbove, objects.end(), paints)) {
        drawAbove(m_aboveOnBlack, Qt::black);
        drawAbove(m_aboveOnWhite, Qt::white);
        if (scene.base.hasAlphaChannel())
            drawAbove(m_aboveAlone, Qt::transparent);
    }
    paintObject(objects[m_index], m_imageRect);
    coverWithAbove(m_imageRect);
}

QRect LayerCache::update(const Annotation &object)
{
    if (!m_changing || object.id != *m_changing || m_below.isNull())
        return {};
    Annotation &current = m_scene.annotations[m_index];
    const QRect region = (deviceRect(current) | deviceRect(object)) & m_imageRect;
    current = object;
    if (region.isEmpty())
        return {};
    copyRegion(m_below, m_picture, region);
    paintObject(object, region);
    coverWithAbove(region);
    return region;
}

QRect LayerCache::deviceRect(const Annotation &object) const
{
    const QRectF painted = Renderer::paintedRect(object);
    return painted.isEmpty() ? QRect() : m_transform.mapRect(painted).toAlignedRect().adjusted(-1, -1, 1, 1);
}

void LayerCache::paintObject(const Annotation &object, const QRect &region)
{
    QPainter painter(&m_picture);
    painter.setClipRect(region);
    painter.setTransform(m_transform);
    if (object.kind == ToolKind::Spotlight)
        Renderer::drawSpotlights(m_scene.base.size(), m_scene.annotations, painter);
    else
        Renderer::drawObject(object, m_scene.base, m_scene.pixelated, painter);
}

void LayerCache::coverWithAbove(const QRect &region)
{
    if (m_aboveOnBlack.isNull() || m_aboveOnWhite.isNull())
        return;
    for (int y = region.top(); y <= region.bottom(); ++y) {
        uint8_t *out = m_picture.scanLine(y) + 4 * region.left();
        const uint8_t *black = m_aboveOnBlack.constScanLine(y) + 4 * region.left();
        const uint8_t *white = m_aboveOnWhite.constScanLine(y) + 4 * region.left();
        for (int x = 0; x < region.width(); ++x, out += 4, black += 4, white += 4) {
            uint32_t b;
            uint32_t w;
            std::memcpy(&b, black, 4);
            std::memcpy(&w, white, 4);
            if (b == 0xff000000 && w == 0xffffffff)
                continue; // nothing above
            for (int c = 0; c < 3; ++c)
                out[c] = static_cast<uint8_t>(times(out[c], white[c] - black[c]) + times(black[c], out[3]));
        }
        if (m_aboveAlone.isNull())
            continue; // the picture is opaque and stays so
        out = m_picture.scanLine(y) + 4 * region.left();
        const uint8_t *layer = m_aboveAlone.constScanLine(y) + 4 * region.left();
        for (int x = 0; x < region.width(); ++x, out += 4, layer += 4)
            out[3] = static_cast<uint8_t>(out[3] + layer[3] - times(out[3], layer[3]));
    }
}
