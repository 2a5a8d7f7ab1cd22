#pragma once

#include "document/draft.h"

#include <QList>
#include <QWidget>

// A small window at the program's start: pictures that were never saved are there still. Deletes itself when
// it closes; without an answer the next start asks again.
class DraftOffer : public QWidget {
    Q_OBJECT
public:
    explicit DraftOffer(const QList<Draft::Entry> &drafts);

Q_SIGNALS:
    // All of them.
    void opened();
    void discarded();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
