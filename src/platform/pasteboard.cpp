#include "platform/pasteboard.h"

bool Pasteboard::placeFlavors(const QList<Flavor> &flavors, const Turn &turn)
{
    if (turn.m_order < m_newest)
        return false;
    setFlavors(flavors);
    m_newest = turn.m_order;
    return true;
}

bool Pasteboard::placeText(const QString &text, const Turn &turn)
{
    if (turn.m_order < m_newest)
        return false;
    setText(text);
    m_newest = turn.m_order;
    return true;
}

bool Pasteboard::placeFile(const QUrl &file, const Turn &turn)
{
    if (turn.m_order < m_newest)
        return false;
    setFile(file);
    m_newest = turn.m_order;
    return true;
}
