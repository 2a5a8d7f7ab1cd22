#pragma once

#include <QStringList>

class QMimeData;

// The paths of the files of this machine among what is dragged or on the clipboard.
QStringList localFiles(const QMimeData *data);
