#pragma once

#include "library/model/library_model.h"

#include <QRectF>
#include <vector>

// Where the cards and headings of a grid are. Points, y down, from the top left of the whole content. Costs as
// much as there are sections, however many cards there are.
class CardLayout {
public:
    CardLayout() = default;
    // In a content of this width, with cards at least `cardWidth` wide that fill the rows, in the direction of words.
    CardLayout(const QList<LibraryModel::Section> &sections, qreal width, qreal cardWidth,
               Qt::LayoutDirection direction = Qt::LeftToRight);

    static constexpr qreal kMargin = 20;
    static constexpr qreal kGap = 18;
    static constexpr qreal kTextHeight = 46; // name and detail under the picture
    static constexpr qreal kHeadingHeight = 40;

    qreal height() const { return m_height; }
    int columns() const { return m_columns; }
    int count() const;
    QRectF card(int index) const;
    // The part of a card that holds the picture.
    QRectF picture(int index) const;
    // Empty for a section without a title.
    QRectF heading(int section) const;
    int sectionCount() const { return static_cast<int>(m_sections.size()); }

    // The card at a point, or -1.
    int cardAt(const QPointF &point) const;
    std::vector<int> cardsIn(const QRectF &rect) const;
    // The card so many rows under this one, in the nearest column; it stays at the ends.
    int moved(int index, int rows) const;

private:
    struct Part {
        int first = 0;
        int count = 0;
        qreal top = 0;   // of the heading
        qreal cards = 0; // of the first row
        int rows = 0;
    };
    const Part &partOf(int index) const;
    qreal rowStep() const { return m_card.height() + kGap; }

    std::vector<Part> m_sections; // without the empty ones
    std::vector<bool> m_hasTitle;
    QSizeF m_card;
    int m_columns = 1;
    qreal m_height = 0;
    qreal m_width = 0;
    bool m_runsFromTheRight = false;
};
