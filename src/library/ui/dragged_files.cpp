#include "library/ui/dragged_files.h"

#include <QMimeData>
#include <QUrl>

QStringList localFiles(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    return paths;
}
