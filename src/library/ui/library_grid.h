#pragma once

#include "library/ui/card_actions.h"
#include "library/ui/card_layout.h"
#include "library/ui/card_painter.h"
#include "library/ui/film_player.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

class LibraryActions;

// The captures as cards, painted by one widget: only what is on the screen costs anything. The model holds
// the selection; the grid knows which card the keyboard is at.
class LibraryGrid : public QAbstractScrollArea {
    Q_OBJECT
public:
    // All outlive it.
    LibraryGrid(LibraryModel &model, LibraryActions &actions, Movies &movies, QWidget *parent = nullptr);

    const CardLayout &cards() const { return m_layout; }
    // The card that the keyboard is at, or -1.
    int current() const { return m_model.visibleIndex(m_current); }
    // In the viewport.
    QRectF cardRect(int index) const { return m_layout.card(index).translated(0, -offset()); }
    // What a card says of itself, for assistive technology.
    QString description(int index) const;
    LibraryModel &model() const { return m_model; }

Q_SIGNALS:
    // The keyboard is at another card.
    void currentChanged();
    // Words were typed that are no command.
    void typed(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    enum class Press { Nothing, Card, SelectedCard, Action, Band };

    qreal offset() const;
    QPointF inContent(const QPointF &position) const { return position + QPointF(0, offset()); }
    void layOut();
    void updateCard(const QString &path);
    void moveTo(int index, Qt::KeyboardModifiers modifiers);
    void makeVisible(int index);
    int place() const;
    void hover(int index);
    void stretchBand();
    void startDrag();
    std::optional<CardAction> actionAt(int index, const QPointF &position) const;
    void perform(CardAction action, const QString &path);

    CardPainter::Card cardAt(int index);
    QRectF pictureRect(int index) const { return m_layout.picture(index).translated(0, -offset()); }
    int pictureEdge() const;

    LibraryModel &m_model;
    LibraryActions &m_actions;
    CardPictures m_pictures;
    FilmPlayer m_player; // of the film under the pointer
    CardLayout m_layout;
    QString m_current;
    QString m_hovered;
    Press m_press = Press::Nothing;
    QPointF m_pressedAt; // in the content
    QPointF m_pointer;   // in the viewport
    Qt::KeyboardModifiers m_pressedWith;
    QSet<QString> m_beforeBand;
    QBasicTimer m_scrolling;
};

// Makes the cards of a grid children of it for assistive technology. Call once before the first is shown.
void installGridAccessibility();
