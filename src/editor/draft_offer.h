#pragma once

#include "document/draft.h"
#include "ui/unfinished_offer.h"

#include <QList>

// Pictures that were never saved are there still.
class DraftOffer : public UnfinishedOffer {
    Q_OBJECT
public:
    explicit DraftOffer(const QList<Draft::Entry> &drafts);
};
