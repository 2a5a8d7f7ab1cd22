#include "editor/draft_offer.h"

#include "editor/texts.h"

#include <QLocale>

namespace {

QStringList named(const QList<Draft::Entry> &drafts)
{
    QStringList entries;
    for (const Draft::Entry &draft : drafts)
        entries.append(
            EditorTexts::tr("%1, %2").arg(draft.title, QLocale().toString(draft.date, QLocale::ShortFormat)));
    return entries;
}

} // namespace

DraftOffer::DraftOffer(const QList<Draft::Entry> &drafts)
    : UnfinishedOffer(EditorTexts::tr("Unsaved Pictures"),
                      EditorTexts::tr("%n picture(s) were never saved", nullptr, int(drafts.size())),
                      named(drafts))
{}
