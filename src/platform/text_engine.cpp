#include "platform/text_engine.h"

QRectF RecognizedLine::boxOf(qsizetype from, qsizetype length) const
{
    QRectF united;
    for (qsizetype i = std::max<qsizetype>(from, 0); i < std::min(from + length, characters.size()); ++i)
        united = united.isEmpty() ? characters[i] : united.united(characters[i]);
    return united.isEmpty() ? box : united;
}
