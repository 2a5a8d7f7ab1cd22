#pragma once

#include "steps/steps_session.h"

#include <QWidget>

// A small window at the program's start: guides that were not finished are there still. Deletes itself when
// it closes; without an answer the next start asks again.
class GuideOffer : public QWidget {
    Q_OBJECT
public:
    explicit GuideOffer(const QList<StepsSession::Unfinished> &guides);

Q_SIGNALS:
    // All of them.
    void opened();
    void discarded();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeButtons();
};
