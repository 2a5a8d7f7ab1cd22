#include "library/clipboard.h"

#include "document/image_files.h"
#include "library/texts.h"
#include "platform/pasteboard.h"

namespace {

Result<void> place(Pasteboard &pasteboard, const QList<Pasteboard::Flavor> &flavors,
                   const Pasteboard::Turn &turn)
{
    if (flavors.isEmpty())
        return fail(LibraryTexts::tr("The picture could not be copied."));
    if (!pasteboard.placeFlavors(flavors, turn))
        return cancelled();
    return {};
}

} // namespace

QList<Pasteboard::Flavor> Clipboard::encoded(const QImage &image)
{
    QList<Pasteboard::Flavor> flavors;
    const QByteArray png = ImageFiles::encode(image, ImageFiles::Type::Png);
    if (!png.isEmpty())
        flavors.append({QStringLiteral("image/png"), png});
    const QByteArray tiff = ImageFiles::encode(image, ImageFiles::Type::Tiff);
    if (!tiff.isEmpty())
        flavors.append({QStringLiteral("image/tiff"), tiff});
    return flavors;
}

QFuture<Result<void>> Clipboard::copy(Pasteboard &pasteboard, const std::function<QImage()> &makeImage,
                                      QObject *owner)
{
    auto promise = std::make_shared<QPromise<Result<void>>>();
    promise->start();
    whenDone(runInBackground([makeImage] { return encoded(makeImage()); }), owner,
             [&pasteboard, promise, turn = pasteboard.takeTurn()](const QList<Pasteboard::Flavor> &flavors) {
                 promise->addResult(place(pasteboard, flavors, turn));
                 promise->finish();
             });
    return promise->future();
}

QFuture<Result<void>> Clipboard::copy(Pasteboard &pasteboard, const QImage &image, QObject *owner)
{
    return copy(pasteboard, [image] { return image; }, owner);
}

void Clipboard::copyFile(Pasteboard &pasteboard, const QString &path)
{
    pasteboard.setFile(QUrl::fromLocalFile(path));
}
