#include "library/ui/window_parts.h"

#include "ui/tips.h"

#include <QComboBox>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QWheelEvent>

namespace WindowParts {

namespace {

class Picker : public QComboBox {
protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace

void Surface::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.fillRect(rect(), theme.surface);
    switch (m_edge) {
    case Edge::Left:
        Theme::fillHairline(painter, QRectF(0, 0, 1, height()), theme.hairline);
        break;
    case Edge::Right:
        Theme::fillHairline(painter, QRectF(width() - 1, 0, 1, height()), theme.hairline);
        break;
    case Edge::Bottom:
        Theme::fillHairline(painter, QRectF(0, height() - 1, width(), 1), theme.hairline);
        break;
    case Edge::Top:
        Theme::fillHairline(painter, QRectF(0, 0, width(), 1), theme.hairline);
        break;
    }
}

QLabel *label(Theme::Type type, QFont::Weight weight, bool isSecondary)
{
    auto *made = new QLabel;
    made->setTextFormat(Qt::PlainText);
    made->setFont(Theme::font(type, weight));
    if (isSecondary)
        made->setForegroundRole(QPalette::PlaceholderText);
    return made;
}

QLabel *note(const QString &text)
{
    QLabel *made = label(Theme::Type::Control, QFont::Normal, true);
    made->setText(text);
    made->setWordWrap(true);
    return made;
}

BarButton *button(const QString &symbol, const QString &text, const QString &tip, BarButton::Label where)
{
    auto *made = new BarButton(symbol, text, where);
    made->setAccessibleName(text);
    TipCenter::describe(made, {text, tip, {}});
    return made;
}

QComboBox *picker(const QString &name, const QStringList &choices)
{
    auto *made = new Picker;
    made->addItems(choices);
    made->setAccessibleName(name);
    return made;
}

QString bytesText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace WindowParts
