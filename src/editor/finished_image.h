#pragma once

#include "document/editor_document.h"

#include <QImage>
#include <QList>

// What a document looks like at one moment, to be drawn on a worker thread: shares the document's data, and
// stays as it is while the user goes on.
struct FinishedImage {
    explicit FinishedImage(const EditorDocument &document);

    // With the objects. Makes the pixelated copy where it isn't there yet.
    QImage flattened() const;
    // With objects and effects: what leaves the editor.
    QImage exported() const;
    ProjectFile project() const { return ProjectFile::describing(annotations, effects); }
    EditorDocument::Contents contents() const { return {base, annotations, effects}; }

    QImage base;
    QImage pixelated;
    QList<Annotation> annotations;
    Effects effects;
};
