#pragma once

#include "steps/guide_step.h"

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>

// The finished picture of a step, and a guide as text. Without state; callable from any thread.
namespace StepsExport {

struct AutoAnnotations {
    QList<Annotation> annotations; // in drawing order: what is hidden, the ring, the number
    std::optional<QUuid> badgeID;
};

// The radius of the ring around a click, in pixels of the picture.
double ringRadius(QSize picture);

// The marks that a step gets by itself. `number` counts from 1.
AutoAnnotations autoAnnotations(const GuideStep &step, int number, bool markClicks, bool redact);
// The picture with its marks; an edited step as its editor left it, under its present number. Null when its
// picture can't be read.
QImage annotated(const GuideStep &step, int number, bool markClicks, bool redact);

// The text with every private stretch replaced by dots.
QString withoutSecrets(const QString &text);

// A page that needs no script and no other file than the pictures; every text in it is text.
QString html(const QString &title, const QStringList &captions, const QStringList &imageNames);
QString markdown(const QString &title, const QStringList &captions, const QStringList &imageNames);

} // namespace StepsExport
