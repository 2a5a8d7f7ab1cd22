#pragma once

#include <QColor>
#include <QIcon>
#include <QString>
#include <QWidget>

class QPainter;
class QRectF;

// Draws the named symbol centred in the rectangle, at its own proportions, in one colour. Crisp at any scale
// of the painter. An unknown name draws nothing.
void drawSymbol(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color);

// An icon that takes its colour from the theme each time it is painted: the text colour, grey when disabled,
// the accent when it is on. With an ink it always has that.
QIcon symbolIcon(const QString &name, const QColor &ink = {});

// A symbol in the text colour of its palette, or in a colour of its own.
class SymbolLabel : public QWidget {
    Q_OBJECT
public:
    explicit SymbolLabel(const QString &name, int size, QWidget *parent = nullptr);
    void setSymbol(const QString &name);
    void setColor(const QColor &color);
    QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_name;
    int m_size;
    QColor m_color;
};
