#pragma once

#include <QImage>

// Takes the lines out of a picture's ink that go through or under letters, so that the letters stand apart as
// others do. Frames and rules that touch no letter stay: they part columns.
void takeOutStruckLines(QImage &ink);
