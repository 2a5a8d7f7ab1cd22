#pragma once

#include "document/annotation.h"
#include "document/effects.h"
#include "document/project_file.h"

#include <QImage>
#include <QList>

class EditorDocument;

// What a document looks like at one moment, to be drawn on a worker thread: shares the document's data, and
// stays as it is while the user goes on.
struct FinishedImage {
    explicit FinishedImage(const EditorDocument &document);

    // With the objects.
    QImage flattened() const;
    // With objects and effects: what leaves the editor.
    QImage exported() const;
    ProjectFile project() const { return ProjectFile::describing(annotations, effects); }

    QImage base;
    QImage pixelated;
    QList<Annotation> annotations;
    Effects effects;
};
