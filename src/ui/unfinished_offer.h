#pragma once

#include <QStringList>
#include <QWidget>

class QVBoxLayout;

// A small window at the program's start: what an earlier one left unfinished is there still. Deletes itself
// when it closes; without an answer the next start asks again.
class UnfinishedOffer : public QWidget {
    Q_OBJECT
public:
    // `entries` say what there is, one a line; only the first few are shown.
    UnfinishedOffer(const QString &title, const QString &summary, const QStringList &entries);

Q_SIGNALS:
    // All of them.
    void opened();
    void discarded();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addButtons(QVBoxLayout &column);
};
