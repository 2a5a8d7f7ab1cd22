#include "platform/desktop/qt_pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace {

QClipboard *clipboard()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QGuiApplication::clipboard()
                                                                         : nullptr;
}

// The content that is there, or an empty one.
const QMimeData &content()
{
    static const QMimeData nothing;
    const QClipboard *board = clipboard();
    const QMimeData *data = board ? board->mimeData() : nullptr;
    return data ? *data : nothing;
}

void setContent(std::unique_ptr<QMimeData> data)
{
    if (QClipboard *board = clipboard())
        board->setMimeData(data.release());
}

// Formats of pictures, best first, as their owner offers them.
QStringList imageFormats(const QMimeData &data)
{
    return data.formats().filter(QStringLiteral("image/"));
}

} // namespace

QtPasteboard::QtPasteboard(std::function<bool()> hasManager) : m_hasManager(std::move(hasManager))
{
    if (QClipboard *board = clipboard())
        QObject::connect(board, &QClipboard::dataChanged, &m_listener, [this] { noteChange(); });
}

void QtPasteboard::clear()
{
    if (QClipboard *board = clipboard())
        board->clear();
}

void QtPasteboard::setFlavors(const QList<Flavor> &flavors)
{
    auto data = std::make_unique<QMimeData>();
    for (const auto &[type, bytes] : flavors)
        data->setData(type, bytes);
    setContent(std::move(data));
}

void QtPasteboard::setText(const QString &text)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    setContent(std::move(data));
}

void QtPasteboard::setFile(const QUrl &file)
{
    auto data = std::make_unique<QMimeData>();
    data->setUrls({file});
    setContent(std::move(data));
}

bool QtPasteboard::has(const QString &mimeType) const
{
    return content().hasFormat(mimeType);
}

QByteArray QtPasteboard::data(const QString &mimeType) const
{
    return content().data(mimeType);
}

QString QtPasteboard::text() const
{
    return content().text();
}

bool QtPasteboard::hasImage() const
{
    return content().hasImage() || !imageFormats(content()).isEmpty();
}

QImage QtPasteboard::image() const
{
    const QMimeData &data = content();
    if (data.hasImage())
        return qvariant_cast<QImage>(data.imageData());
    for (const QString &format : imageFormats(data)) {
        const QImage image = QImage::fromData(data.data(format));
        if (!image.isNull())
            return image;
    }
    return {};
}

QList<Pasteboard::Flavor> QtPasteboard::lostAtQuit() const
{
    const QClipboard *board = clipboard();
    if (!board || !board->ownsClipboard() || !board->mimeData() || m_hasManager())
        return {};
    QList<Flavor> flavors;
    for (const QString &format : board->mimeData()->formats()) {
        const QByteArray bytes = board->mimeData()->data(format);
        if (!bytes.isEmpty())
            flavors.append({format, bytes});
    }
    return flavors;
}
