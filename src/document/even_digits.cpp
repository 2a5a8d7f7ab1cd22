#include "document/even_digits.h"

#include <algorithm>

namespace {

TextBlock block(const QString &text, double size)
{
    return TextBlock(text, Fonts::Design::System, size, QFont::DemiBold);
}

} // namespace

EvenDigits::EvenDigits(const QString &text, double size)
{
    double digit = 0;
    for (char c = '0'; c <= '9'; ++c)
        digit = std::max(digit, block(QString(QLatin1Char(c)), size).size().width());
    qsizetype i = 0;
    while (i < text.size()) {
        qsizetype end = i + 1;
        if (!text[i].isDigit()) {
            while (end < text.size() && !text[end].isDigit())
                ++end;
        }
        const TextBlock part = block(text.mid(i, end - i), size);
        const double width = text[i].isDigit() ? digit : part.size().width();
        m_parts.append({m_size.width() + (width - part.size().width()) / 2, part});
        m_size = {m_size.width() + width, std::max(m_size.height(), part.size().height())};
        i = end;
    }
}

void EvenDigits::paint(QPainter &painter, const QPointF &topLeft, const QColor &color) const
{
    for (const auto &[x, part] : m_parts)
        part.paint(painter, topLeft + QPointF(x, 0), color);
}
