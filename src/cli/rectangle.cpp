#include "cli/rectangle.h"

#include <QRegularExpression>
#include <QString>

std::optional<QRectF> parseRectangle(const std::string &text)
{
    static const QRegularExpression form(QStringLiteral(
        "^(-?\\d+(?:\\.\\d+)?),(-?\\d+(?:\\.\\d+)?),(\\d+(?:\\.\\d+)?)[x×](\\d+(?:\\.\\d+)?)$"));
    const auto match = form.match(QString::fromStdString(text));
    if (!match.hasMatch())
        return std::nullopt;
    const QRectF rect(match.captured(1).toDouble(), match.captured(2).toDouble(),
                      match.captured(3).toDouble(), match.captured(4).toDouble());
    return rect.isEmpty() ? std::nullopt : std::optional(rect);
}

std::string isRectangle(const std::string &text)
{
    return parseRectangle(text) ? std::string() : "\"" + text + "\" is no rectangle of the form X,Y,WxH";
}

QJsonArray jsonOf(const QRectF &rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}
