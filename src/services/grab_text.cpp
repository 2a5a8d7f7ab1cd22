#include "services/grab_text.h"

#include <QStringList>

GrabbedText::GrabbedText(const QString &read) : text(read)
{
    if (text.isEmpty()) {
        notice = {"No text found", "text.magnifyingglass"};
        return;
    }
    // "1 lines" too: the plural stays.
    const qsizetype lines = text.split('\n', Qt::SkipEmptyParts).size();
    notice = {QString("Copied %1 lines of text").arg(lines), "text.viewfinder"};
}
