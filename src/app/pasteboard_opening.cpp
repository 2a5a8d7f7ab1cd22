#include "app/pasteboard_opening.h"

#include "app/texts.h"
#include "platform/pasteboard.h"

#include <QUrl>

Result<void> PasteboardOpening::open() const
{
    QStringList files;
    const QList<QByteArray> lines = m_pasteboard.data(QStringLiteral("text/uri-list")).split('\n');
    for (const QByteArray &line : lines) {
        const QUrl url = QUrl::fromEncoded(line.trimmed());
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    for (const QString &file : files)
        m_actions.openFile(file);
    if (!files.isEmpty())
        return {};
    const QImage image = m_pasteboard.image();
    if (image.isNull())
        return fail(Error::Kind::NotFound,
                    AppTexts::tr("Lumenpost couldn't read an image from the selection."));
    m_actions.openImage(image);
    return {};
}
