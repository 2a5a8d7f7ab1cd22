#pragma once

#include "artwork/fonts.h"
#include "document/annotation.h"

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTextLayout>
#include <optional>

class QPainter;

// A text laid out once, to be measured and painted: lines at line feeds, and wrapped at a width if one is
// given. Sizes are exact fractions of pixels: the letters are laid out at the nearest whole size and scaled.
class TextBlock {
public:
    enum class Alignment { Left, Centered };

    TextBlock(const QString &text, Fonts::Design design, double size, QFont::Weight weight = QFont::Bold);
    // Wrapped at `width` pixels.
    TextBlock(const QString &text, Fonts::Design design, double size, double width, Alignment alignment);
    // One pictograph.
    static TextBlock emoji(const QString &text, double size);

    // Width of the widest line (of the box when wrapped), height of all lines. An empty text has no width.
    QSizeF size() const { return m_size; }
    // Paints with the top left of the first line at `topLeft`, in the painter's coordinates.
    void paint(QPainter &painter, const QPointF &topLeft, const QColor &color) const;

private:
    TextBlock() = default;
    void layOut(const QString &text, const QFont &font, double size, std::optional<double> width,
                Alignment alignment);

    std::shared_ptr<QTextLayout> m_layout;
    double m_scale = 1;
    QSizeF m_size;
};

Fonts::Design designOf(TextFont font);
