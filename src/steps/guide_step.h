#pragma once

#include "document/annotation.h"
#include "document/effects.h"
#include "steps/step_picture.h"

#include <QHash>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUuid>
#include <optional>

// What the full editor gave back for a step.
struct EditedStep {
    StepPicture base; // under the annotations, after any crop
    QList<Annotation> annotations;
    std::optional<QUuid> badgeID; // the number among them that follows the step's place
    Effects effects;

    bool operator==(const EditedStep &) const = default;
};

// One step of a guide.
struct GuideStep {
    QUuid id;                     // stable through reordering and editing
    StepPicture image;            // the picture of the clicked window
    std::optional<QPointF> click; // pixels of `image`, origin at the top left; none for an added step
    QString caption;
    std::optional<QString> app;
    QList<QRectF> redactions; // fractions of `image`, origin at the lower left
    std::optional<EditedStep> edited;
    int editVersion = 0;

    bool operator==(const GuideStep &) const = default;
};

// All that is kept of a guide.
struct Guide {
    QString title;
    QList<GuideStep> steps;
    QHash<QUuid, std::optional<QPointF>> originalClicks; // as they were recorded
    bool markClicks = true;
    bool redact = false;

    bool operator==(const Guide &) const = default;
};
