#include "services/clipboard.h"

#include "document/image_files.h"
#include "platform/pasteboard.h"

#include <QUrl>

namespace {

QList<Pasteboard::Flavor> flavorsOf(const QImage &image)
{
    QList<Pasteboard::Flavor> flavors;
    for (const auto &[name, type] :
         {std::pair("image/png", ImageFiles::Type::Png), {"image/tiff", ImageFiles::Type::Tiff}}) {
        const QByteArray bytes = ImageFiles::encode(image, type);
        if (!bytes.isEmpty())
            flavors.append({QString::fromLatin1(name), bytes});
    }
    return flavors;
}

} // namespace

Clipboard::Clipboard(Pasteboard &pasteboard) : m_pasteboard(pasteboard) {}

QFuture<Result<void>> Clipboard::copy(const QImage &image)
{
    auto promise = std::make_shared<QPromise<Result<void>>>();
    promise->start();
    const int generation = ++m_generation;
    whenDone(runInBackground([image] { return flavorsOf(image); }), this,
             [this, generation, promise](const QList<Pasteboard::Flavor> &flavors) {
                 Result<void> done;
                 if (generation != m_generation)
                     done = cancelled();
                 else if (flavors.isEmpty())
                     done = fail(QStringLiteral("The picture could not be copied."));
                 else
                     m_pasteboard.setFlavors(flavors);
                 promise->addResult(done);
                 promise->finish();
             });
    return promise->future();
}

void Clipboard::copyFile(const QString &path)
{
    ++m_generation;
    m_pasteboard.setFile(QUrl::fromLocalFile(path));
}

void Clipboard::copyText(const QString &text)
{
    ++m_generation;
    m_pasteboard.setText(text);
}
