#pragma once

#include "platform/accessible_elements.h"
#include "platform/text_engine.h"

#include <QList>
#include <QRect>
#include <QString>
#include <optional>

// Words that are drawn where something was pressed, for programs that don't tell them. Nothing that is typed
// or private is ever read.
namespace DrawnLabel {

struct Place {
    QRect rect;             // native pixels of the desktop
    std::optional<int> row; // where in it the words stand: pixels from its top. Otherwise all of it is words
    ClickedElement element; // what is to get the words as its title
};

// A control without a name, or the row of a menu that had closed when it was asked about. `scale` is the
// screen's, `window` the size of the picture.
std::optional<Place> placeOf(const std::optional<AccessibleElement> &element, const ClickTarget &target,
                             double scale, QSize window);

// Empty when it is no label, or not one that may be shown.
QString wordsOf(const QList<RecognizedLine> &lines, const Place &place);

} // namespace DrawnLabel
