#pragma once

#include "base/notice.h"

#include <QString>

// What to do with the text read from a grabbed picture: the notice to show, and whether the text goes to the
// clipboard. Text that couldn't be read counts as none.
struct GrabbedText {
    explicit GrabbedText(const QString &text);
    bool isEmpty() const { return text.isEmpty(); }

    QString text;
    Notice notice;
};
