#include "editor/finished_image.h"

#include "document/editor_document.h"
#include "document/renderer.h"

FinishedImage::FinishedImage(const EditorDocument &document)
    : base(document.base()), annotations(document.annotations()), effects(document.effects())
{
    if (std::any_of(annotations.begin(), annotations.end(),
                    [](const Annotation &a) { return a.kind == ToolKind::Blur; }))
        pixelated = document.pixelated();
}

QImage FinishedImage::flattened() const
{
    return annotations.isEmpty() ? base : Renderer::flattened(base, pixelated, annotations);
}

QImage FinishedImage::exported() const
{
    return effects.applied(flattened());
}
