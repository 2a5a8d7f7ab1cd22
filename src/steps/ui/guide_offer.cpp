#include "steps/ui/guide_offer.h"

#include "steps/ui/texts.h"

#include <QLocale>

namespace {

QStringList named(const QList<StepsSession::Unfinished> &guides)
{
    QStringList entries;
    for (const StepsSession::Unfinished &guide : guides) {
        const QString title =
            guide.title.trimmed().isEmpty() ? StepsUiTexts::tr("How-To Guide") : guide.title;
        entries.append(StepsUiTexts::tr("%1, %2, %3")
                           .arg(title, StepsUiTexts::tr("%n step(s)", nullptr, int(guide.count)),
                                QLocale().toString(guide.date, QLocale::ShortFormat)));
    }
    return entries;
}

} // namespace

GuideOffer::GuideOffer(const QList<StepsSession::Unfinished> &guides)
    : UnfinishedOffer(StepsUiTexts::tr("Unfinished Guides"),
                      StepsUiTexts::tr("%n guide(s) were not finished", nullptr, int(guides.size())),
                      named(guides))
{}
