#include "library/ui/card_layout.h"

namespace {
constexpr qreal kPictureRatio = 0.625; // height to width: that of most screens
}

CardLayout::CardLayout(const QList<LibraryModel::Section> &sections, qreal width, qreal cardWidth,
                       Qt::LayoutDirection direction)
    : m_width(width), m_runsFromTheRight(direction == Qt::RightToLeft)
{
    const qreal room = std::max(width - 2 * kMargin, 1.0);
    m_columns = std::max(1, static_cast<int>((room + kGap) / (cardWidth + kGap)));
    const qreal wide = std::floor((room - (m_columns - 1) * kGap) / m_columns);
    m_card = QSizeF(std::max(wide, 1.0), std::round(wide * kPictureRatio) + kTextHeight);

    qreal y = kMargin / 2;
    for (const LibraryModel::Section &section : sections) {
        const bool hasTitle = !section.title.isEmpty();
        Part part{.first = section.first, .count = section.count, .top = y};
        part.cards = y + (hasTitle ? kHeadingHeight : kMargin / 2);
        part.rows = (section.count + m_columns - 1) / m_columns;
        y = part.cards + part.rows * rowStep();
        m_sections.push_back(part);
        m_hasTitle.push_back(hasTitle);
    }
    m_height = y;
}

int CardLayout::count() const
{
    return m_sections.empty() ? 0 : m_sections.back().first + m_sections.back().count;
}

const CardLayout::Part &CardLayout::partOf(int index) const
{
    const auto next = std::upper_bound(m_sections.begin(), m_sections.end(), index,
                                       [](int wanted, const Part &part) { return wanted < part.first; });
    return next == m_sections.begin() ? *next : *std::prev(next);
}

QRectF CardLayout::card(int index) const
{
    if (index < 0 || index >= count())
        return {};
    const Part &part = partOf(index);
    const int place = index - part.first;
    const qreal along = kMargin + (place % m_columns) * (m_card.width() + kGap);
    return {QPointF(m_runsFromTheRight ? m_width - along - m_card.width() : along,
                    part.cards + (place / m_columns) * rowStep()),
            m_card};
}

QRectF CardLayout::picture(int index) const
{
    return card(index).adjusted(0, 0, 0, -kTextHeight);
}

QRectF CardLayout::heading(int section) const
{
    const auto place = static_cast<size_t>(section);
    if (!m_hasTitle[place])
        return {};
    return {kMargin, m_sections[place].top, m_width - 2 * kMargin, kHeadingHeight};
}

std::vector<int> CardLayout::cardsIn(const QRectF &rect) const
{
    std::vector<int> found;
    auto part = std::lower_bound(
        m_sections.begin(), m_sections.end(), rect.top(),
        [this](const Part &candidate, qreal top) { return candidate.cards + candidate.rows * rowStep() < top; });
    for (; part != m_sections.end() && part->cards <= rect.bottom(); ++part) {
        const int firstRow = std::max(0, static_cast<int>((rect.top() - part->cards) / rowStep()));
        const int lastRow =
            std::min(part->rows - 1, static_cast<int>((rect.bottom() - part->cards) / rowStep()));
        const int end = std::min(part->count, (lastRow + 1) * m_columns);
        for (int place = firstRow * m_columns; place < end; ++place) {
            if (card(part->first + place).intersects(rect))
                found.push_back(part->first + place);
        }
    }
    return found;
}

int CardLayout::cardAt(const QPointF &point) const
{
    const std::vector<int> found = cardsIn(QRectF(point, QSizeF(0.01, 0.01)));
    return found.empty() ? -1 : found.front();
}

int CardLayout::moved(int index, int rows) const
{
    if (index < 0 || index >= count())
        return count() > 0 ? 0 : -1;
    const int column = (index - partOf(index).first) % m_columns;
    int at = index;
    for (; rows != 0; rows += rows > 0 ? -1 : 1) {
        auto part = static_cast<size_t>(&partOf(at) - m_sections.data());
        int row = (at - m_sections[part].first) / m_columns + (rows > 0 ? 1 : -1);
        if (row < 0 || row >= m_sections[part].rows) {
            if (rows > 0 ? part + 1 == m_sections.size() : part == 0)
                break;
            part += rows > 0 ? 1 : size_t(-1);
            row = rows > 0 ? 0 : m_sections[part].rows - 1;
        }
        at = m_sections[part].first + std::min(row * m_columns + column, m_sections[part].count - 1);
    }
    return at;
}
