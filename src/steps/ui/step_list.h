#pragma once

#include <QHash>
#include <QList>
#include <QScrollArea>
#include <QSet>
#include <QTimer>
#include <QUuid>

class StepRow;
class StepsGuideModel;

// The steps of a guide as a column of cards: chosen, moved and deleted by pointer and keyboard. Cards that
// are not in view yet are made little by little.
class StepList : public QScrollArea {
    Q_OBJECT
public:
    static constexpr int kColumn = 760; // as wide as a card gets

    explicit StepList(StepsGuideModel &model, QWidget *parent = nullptr);

    // Null when it isn't made yet, or there is no such step.
    StepRow *row(const QUuid &step) const { return m_rows.value(step); }
    QList<QUuid> selected() const;
    void select(const QList<QUuid> &steps);
    void removeSelected();

Q_SIGNALS:
    // The user wants out of the last or first caption by keyboard.
    void leftByTab(int direction);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    class Column;

    void follow();
    void make(const QUuid &step);
    void makeSome();
    void connectRow(StepRow *row);
    void layOut();
    void layOutSoon();
    void tellStandings();
    void lookAt();
    void show(const QUuid &step);
    qsizetype indexOf(const QUuid &step) const;

    void press(const QUuid &step, Qt::KeyboardModifiers modifiers);
    bool key(QKeyEvent *event);
    bool keyWithAlt(QKeyEvent *event);
    bool keyWithControl(QKeyEvent *event);
    void goTo(qsizetype index, bool extends);
    void moveCurrent(int by);
    void nudgeMarker(QPointF by);
    void enterCaption(qsizetype index);
    void drag(const QUuid &step, QPoint global);
    void drop(const QUuid &step);
    void openMenu(const QUuid &step, QPoint global);

    StepsGuideModel &m_model;
    Column *m_column;
    QHash<QUuid, StepRow *> m_rows;
    QList<QUuid> m_order; // as it is laid out
    QHash<QUuid, QRect> m_places;
    QSet<QUuid> m_nearby; // in view or about to be
    QSet<QUuid> m_selected;
    QUuid m_current;
    QUuid m_anchor;
    QTimer m_making;
    QTimer m_layingOut;
    QTimer m_scrolling; // while a card is dragged to an edge
    qsizetype m_dropAt = -1;
};
