#pragma once

#include "document/text_block.h"

#include <QList>
#include <QString>
#include <utility>

class QPainter;

// A line of text with all digits as wide as the widest, so that it doesn't tremble while its numbers change.
class EvenDigits {
public:
    EvenDigits(const QString &text, double size);
    QSizeF size() const { return m_size; }
    void paint(QPainter &painter, const QPointF &topLeft, const QColor &color) const;

private:
    QList<std::pair<double, TextBlock>> m_parts; // with the offset of each
    QSizeF m_size{0, 0};
};
