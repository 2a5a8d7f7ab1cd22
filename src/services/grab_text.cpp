#include "services/grab_text.h"

#include "services/texts.h"

#include <QStringList>

GrabbedText::GrabbedText(const QString &read) : text(read)
{
    if (text.isEmpty()) {
        notice = {ServicesTexts::tr("No text found"), "text.magnifyingglass"};
        return;
    }
    const auto lines = static_cast<int>(text.split('\n', Qt::SkipEmptyParts).size());
    notice = {ServicesTexts::tr("Copied %n lines of text", nullptr, lines), "text.viewfinder"};
}
