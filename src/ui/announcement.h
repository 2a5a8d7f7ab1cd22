#pragma once

#include <QString>

class QWidget;

// Has assistive technology say something that no control shows by itself: a size while it is dragged, what a
// command has done. Said in the name of the widget; nothing happens where nobody listens.
void announce(QWidget *source, const QString &words);
