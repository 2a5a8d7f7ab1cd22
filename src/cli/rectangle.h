#pragma once

#include <QJsonArray>
#include <QRectF>
#include <optional>
#include <string>

// "X,Y,WxH": numbers, the size above 0.
std::optional<QRectF> parseRectangle(const std::string &text);
// For the parser's check: the empty text when it is one, else what is wrong.
std::string isRectangle(const std::string &text);
// [x, y, width, height]
QJsonArray jsonOf(const QRectF &rect);
