#pragma once

#include "document/annotation.h"

#include <QColor>
#include <QString>

// An object in words, for assistive technology and the status line: "red arrow", "Step 2, blue", "Text:
// Invoice".
QString describe(const Annotation &annotation);

// The same where people read rather than listen: "Stamp: check mark", "Blur", "Red arrow".
QString statusWords(const Annotation &annotation);
// What a stamp shows, by its value.
QString stampWords(const QString &value);

// The everyday name of a colour: "red", "dark green", "light gray".
QString spokenColor(const QColor &color);
