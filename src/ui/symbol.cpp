#include "ui/symbol.h"

#include "artwork/symbols.h"
#include "ui/theme.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>

namespace {

class SymbolEngine : public QIconEngine {
public:
    SymbolEngine(const QString &name, const QColor &ink) : m_name(name), m_ink(ink) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        if (m_ink.isValid())
            return drawSymbol(*painter, rect, m_name, m_ink);
        const auto &t = Theme::tokens(QApplication::palette());
        QColor color = state == QIcon::On ? t.accentText : t.text;
        if (mode == QIcon::Disabled)
            color = t.disabled;
        else if (mode == QIcon::Selected)
            color = t.onAccent;
        drawSymbol(*painter, rect, m_name, color);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal) override
    {
        return pixmap(size, mode, state); // `size` is in device pixels
    }
    QIconEngine *clone() const override { return new SymbolEngine(m_name, m_ink); }
    QString key() const override { return QStringLiteral("symbol"); }

private:
    QString m_name;
    QColor m_ink;
};

} // namespace

void drawSymbol(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color)
{
    Symbols::paint(painter, rect, name, color);
}

QIcon symbolIcon(const QString &name, const QColor &ink)
{
    return Symbols::exists(name) ? QIcon(new SymbolEngine(name, ink)) : QIcon();
}

SymbolLabel::SymbolLabel(const QString &name, int size, QWidget *parent)
    : QWidget(parent), m_name(name), m_size(size)
{
    setFixedSize(size, size);
}

void SymbolLabel::setSymbol(const QString &name)
{
    m_name = name;
    update();
}

void SymbolLabel::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void SymbolLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawSymbol(painter, rect(), m_name, m_color.isValid() ? m_color : Theme::tokens(this).text);
}
