#include "document/stamps.h"

#include "artwork/symbols.h"
#include "base/geometry.h"
#include "document/shapes.h"
#include "document/soft_shadow.h"
#include "document/text_block.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <optional>

namespace {

const QColor kShadowColor = QColor::fromRgbF(0, 0, 0, 0.35f);

void drawSymbol(const QString &name, const QRectF &rect, const QColor &color, QPainter &painter)
{
    const QSizeF ink = Symbols::ink(name).size();
    if (ink.isEmpty())
        return;
    const QSizeF size = ink.scaled(rect.size(), Qt::KeepAspectRatio);
    const QRectF target(centered(size, rect.center()), size);

    const double scale = std::sqrt(std::abs(painter.deviceTransform().determinant()));
    const QSize pixels = (size * scale).toSize().expandedTo({1, 1});
    const Symbols::Palette palette{color, name.contains(".fill") ? QColor(Qt::white) : QColor()};
    const QImage picture = Symbols::inkImage(name, pixels, palette);

    const auto paint = [&](QPainter &p) {
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.drawImage(target, picture);
    };
    SoftShadow{3, kShadowColor, {}}.paint(painter, target, paint);
    paint(painter);
}

TextBlock emojiBlock(const QString &emoji, const QRectF &rect)
{
    return TextBlock::emoji(emoji, rect.height() * 0.78);
}

TextBlock legendBlock(const QString &legend, const QRectF &rect)
{
    return TextBlock(legend, Fonts::Design::Rounded, rect.height() * (legend.size() < 3 ? 0.5 : 0.34));
}

void drawEmoji(const QString &emoji, const QRectF &rect, QPainter &painter)
{
    const TextBlock block = emojiBlock(emoji, rect);
    block.paint(painter, centered(block.size(), rect.center()), Qt::black);
}

void drawKey(const QString &legend, const QRectF &rect, QPainter &painter)
{
    const double h = rect.height();
    const QPainterPath cap = Shapes::roundedRect(rect, h * 0.18, h * 0.18);
    SoftShadow{2, kShadowColor, {0, h * 0.05}}.paint(painter, rect,
                                                     [&](QPainter &p) { p.fillPath(cap, Qt::white); });
    painter.fillPath(cap, QColor::fromRgbF(0.98f, 0.98f, 0.98f));
    painter.strokePath(cap, QPen(QColor::fromRgbF(0.7f, 0.7f, 0.7f), std::max(h * 0.03, 1.0)));
    const TextBlock block = legendBlock(legend, rect);
    block.paint(painter, centered(block.size(), rect.center()), QColor::fromRgbF(0.15f, 0.15f, 0.15f));
}

} // namespace

void drawStamp(const Annotation &annotation, QPainter &painter)
{
    const QRectF rect = annotation.rect();
    const QString &value = annotation.text;
    if (rect.isEmpty())
        return;
    if (value.startsWith("sym:"))
        drawSymbol(value.mid(4), rect, annotation.color, painter);
    else if (value.startsWith("emoji:"))
        drawEmoji(value.mid(6), rect, painter);
    else if (value.startsWith("key:"))
        drawKey(value.mid(4), rect, painter);
}

QRectF stampInk(const Annotation &annotation)
{
    const QRectF rect = annotation.rect();
    const double edge = rect.height() * 0.1; // half a stroke and the offset of a key's shadow
    const QRectF all = rect.adjusted(-edge, -edge, edge, edge);
    std::optional<TextBlock> text;
    if (annotation.text.startsWith("emoji:"))
        text = emojiBlock(annotation.text.mid(6), rect);
    else if (annotation.text.startsWith("key:"))
        text = legendBlock(annotation.text.mid(4), rect);
    if (!text || rect.isEmpty())
        return all;
    const double over = rect.height() * 0.2; // letters reach a little beyond their measured box
    return all |
           QRectF(centered(text->size(), rect.center()), text->size()).adjusted(-over, -over, over, over);
}
