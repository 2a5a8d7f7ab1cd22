#include "editor/finished_image.h"

#include "document/renderer.h"

FinishedImage::FinishedImage(const EditorDocument &document)
    : base(document.base()),
      pixelated(document.readyPixelated()),
      annotations(document.annotations()),
      effects(document.effects())
{}

QImage FinishedImage::flattened() const
{
    if (annotations.isEmpty())
        return base;
    const bool hasMosaic = std::any_of(annotations.begin(), annotations.end(),
                                       [](const Annotation &a) { return a.kind == ToolKind::Blur; });
    const QImage mosaic = hasMosaic && pixelated.isNull() ? Renderer::pixelated(base) : pixelated;
    return Renderer::flattened(base, mosaic, annotations);
}

QImage FinishedImage::exported() const
{
    return effects.applied(flattened());
}
