#include "library/clipboard.h"

#include "document/image_files.h"
#include "platform/pasteboard.h"

QFuture<Result<void>> Clipboard::copy(Pasteboard &pasteboard, const QImage &image, QObject *owner)
{
    auto promise = std::make_shared<QPromise<Result<void>>>();
    promise->start();
    const auto encode = [image] {
        QList<Pasteboard::Flavor> flavors;
        const QByteArray png = ImageFiles::encode(image, ImageFiles::Type::Png);
        if (!png.isEmpty())
            flavors.append({QStringLiteral("image/png"), png});
        const QByteArray tiff = ImageFiles::encode(image, ImageFiles::Type::Tiff);
        if (!tiff.isEmpty())
            flavors.append({QStringLiteral("image/tiff"), tiff});
        return flavors;
    };
    whenDone(
        runInBackground(encode), owner, [&pasteboard, promise](const QList<Pasteboard::Flavor> &flavors) {
            if (flavors.isEmpty()) {
                promise->addResult(Result<void>(fail(QStringLiteral("The picture could not be copied."))));
            } else {
                pasteboard.setFlavors(flavors);
                promise->addResult(Result<void>{});
            }
            promise->finish();
        });
    return promise->future();
}

void Clipboard::copyFile(Pasteboard &pasteboard, const QString &path)
{
    pasteboard.clear();
    pasteboard.setFile(QUrl::fromLocalFile(path));
}
