#pragma once

#include "steps/steps_session.h"
#include "ui/unfinished_offer.h"

// Guides that were not finished are there still.
class GuideOffer : public UnfinishedOffer {
    Q_OBJECT
public:
    explicit GuideOffer(const QList<StepsSession::Unfinished> &guides);
};
