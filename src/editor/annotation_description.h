#pragma once

#include "document/annotation.h"

#include <QColor>
#include <QString>

// An object in words, for assistive technology and the status line: "red arrow", "Step 2, blue", "Text:
// Invoice".
QString describe(const Annotation &annotation);

// The everyday name of a colour: "red", "dark green", "light gray".
QString spokenColor(const QColor &color);
