#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QPushButton;
class StepsGuideModel;
class SymbolLabel;

// What floats over the end of the list: what is under way, with "Cancel" where it can be given up, or that
// steps were deleted, with "Undo". Not seen when there is nothing to tell.
class ReviewStatus : public QWidget {
    Q_OBJECT
public:
    // Stands at the bottom of `parent`, in its middle.
    ReviewStatus(StepsGuideModel &model, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();
    void countSteps();
    void place();

    StepsGuideModel &m_model;
    SymbolLabel *m_symbol;
    QLabel *m_text;
    QPushButton *m_cancel;
    QPushButton *m_undo;
    QTimer m_undoOffer;
    qsizetype m_steps;
    qsizetype m_deleted = 0;
};
