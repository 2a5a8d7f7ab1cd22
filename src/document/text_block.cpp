#include "document/text_block.h"

#include <QPainter>
#include <QTextLine>
#include <QTextOption>
#include <algorithm>
#include <cmath>

namespace {

// Larger letters are laid out at this size and scaled; their proportions don't change any more.
constexpr double kLargestLayout = 256;
// More letters than one picture can show; bounds the layout of a broken or hostile text.
constexpr qsizetype kLongestText = 20000;

} // namespace

Fonts::Design designOf(TextFont font)
{
    switch (font) {
    case TextFont::System:
        return Fonts::Design::System;
    case TextFont::Rounded:
        return Fonts::Design::Rounded;
    case TextFont::Serif:
        return Fonts::Design::Serif;
    case TextFont::Mono:
        return Fonts::Design::Mono;
    case TextFont::Marker:
        return Fonts::Design::Marker;
    }
    return Fonts::Design::System;
}

TextBlock::TextBlock(const QString &text, Fonts::Design design, double size, QFont::Weight weight)
{
    layOut(text, Fonts::font(design, std::min(size, kLargestLayout), weight), size, {}, Alignment::Left);
}

TextBlock::TextBlock(const QString &text, Fonts::Design design, double size, double width,
                     Alignment alignment)
{
    layOut(text, Fonts::font(design, std::min(size, kLargestLayout)), size, width, alignment);
}

TextBlock TextBlock::emoji(const QString &text, double size)
{
    TextBlock block;
    block.layOut(text, Fonts::emoji(std::min(size, kLargestLayout)), size, {}, Alignment::Left);
    return block;
}

void TextBlock::layOut(const QString &text, const QFont &font, double size, std::optional<double> width,
                       Alignment alignment)
{
    m_scale = std::max(size, 0.01) / font.pixelSize();
    QString lines = text.left(kLongestText);
    lines.replace("\r\n", "\n");
    lines.replace('\n', QChar::LineSeparator);

    m_layout = std::make_shared<QTextLayout>(lines, font);
    QTextOption option;
    option.setAlignment(alignment == Alignment::Centered ? Qt::AlignHCenter : Qt::AlignLeft);
    option.setWrapMode(width ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    if (!width)
        option.setFlags(QTextOption::IncludeTrailingSpaces);
    m_layout->setTextOption(option);
    m_layout->setCacheEnabled(true);

    const double lineWidth = width ? std::max(*width / m_scale, 1.0) : 1e6;
    double y = 0;
    double widest = 0;
    m_layout->beginLayout();
    for (QTextLine line = m_layout->createLine(); line.isValid(); line = m_layout->createLine()) {
        line.setLineWidth(lineWidth);
        line.setPosition({0, y});
        y += line.height();
        widest = std::max(widest, line.naturalTextWidth());
    }
    m_layout->endLayout();
    m_size = QSizeF(width ? *width : widest * m_scale, y * m_scale);
}

void TextBlock::paint(QPainter &painter, const QPointF &topLeft, const QColor &color) const
{
    painter.save();
    painter.translate(topLeft);
    painter.scale(m_scale, m_scale);
    painter.setPen(color);
    m_layout->draw(&painter, QPointF(0, 0));
    painter.restore();
}
