#include "editor/object_clipboard.h"

#include "base/async.h"
#include "document/editor_document.h"
#include "document/image_files.h"
#include "editor/finished_image.h"
#include "platform/pasteboard.h"

#include <QFileInfo>
#include <QImageReader>
#include <QUrl>

namespace ObjectClipboard {

namespace {

const QString kFiles = QStringLiteral("text/uri-list");
const QString kPng = QStringLiteral("image/png");
constexpr double kCascade = 24; // image pixels between a copy and its original

// Copied last, in any document of this process.
QList<Annotation> &objects()
{
    static QList<Annotation> copied;
    return copied;
}

// Counts the copies, so that a picture that is late knows that its time is over.
int &generation()
{
    static int copies = 0;
    return copies;
}

// The first local file of the pasteboard, if it has the name of a picture.
QString pictureFile(const Pasteboard &pasteboard)
{
    if (!pasteboard.has(kFiles))
        return {};
    for (const QByteArray &line : pasteboard.data(kFiles).split('\n')) {
        const QUrl url = QUrl::fromEncoded(line.trimmed());
        if (!url.isLocalFile())
            continue;
        const QByteArray suffix = QFileInfo(url.toLocalFile()).suffix().toLower().toUtf8();
        const bool isKnown = suffix == "heic" || QImageReader::supportedImageFormats().contains(suffix);
        return isKnown ? url.toLocalFile() : QString();
    }
    return {};
}

void pasteObjects(EditorDocument &document, const std::optional<QPointF> &point)
{
    QList<Annotation> copies = objects();
    for (Annotation &copy : copies) {
        const QPointF by = point ? *point - copy.bounds().center() : QPointF(kCascade, kCascade);
        copy.offset(by.x(), by.y());
    }
    document.addCopies(copies);
    for (Annotation &original : objects())
        original.offset(kCascade, kCascade); // the next paste cascades instead of stacking
}

} // namespace

QFuture<void> copy(const EditorDocument &document, Pasteboard &pasteboard, QObject *owner)
{
    const auto object = document.selected();
    if (!object)
        return QtFuture::makeReadyFuture();
    objects() = {*object};
    pasteboard.setFlavors({{kMarker, QByteArray()}});
    const QRect area =
        object->bounds().intersected(document.imageBounds()).toAlignedRect() & document.base().rect();
    if (area.isEmpty())
        return QtFuture::makeReadyFuture();

    const auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    const auto encoded = runInBackground([finished = FinishedImage(document), area] {
        return ImageFiles::encode(finished.flattened().copy(area), ImageFiles::Type::Png);
    });
    whenDone(encoded, owner, [&pasteboard, promise, mine = ++generation()](const QByteArray &png) {
        if (mine == generation() && pasteboard.has(kMarker) && !png.isEmpty())
            pasteboard.setFlavors({{kMarker, QByteArray()}, {kPng, png}});
        promise->finish();
    });
    return promise->future();
}

bool canPaste(const Pasteboard &pasteboard)
{
    return pasteboard.has(kMarker) || pasteboard.hasImage() || !pictureFile(pasteboard).isEmpty();
}

void paste(EditorDocument &document, Pasteboard &pasteboard, const std::optional<QPointF> &point)
{
    if (pasteboard.has(kMarker)) {
        if (!objects().isEmpty())
            pasteObjects(document, point);
        return;
    }
    const auto add = [&document, point](const Result<QImage> &image) {
        if (image)
            document.addImageObject(*image, point);
    };
    // A file manager's copy is the file itself; others offer its picture beside it.
    if (pasteboard.has(kPng))
        whenDone(runInBackground([png = pasteboard.data(kPng)] { return ImageFiles::decode(png); }),
                 &document, add);
    else if (pasteboard.hasImage())
        document.addImageObject(pasteboard.image(), point);
    else if (const QString file = pictureFile(pasteboard); !file.isEmpty())
        whenDone(runInBackground([file] { return ImageFiles::read(file); }), &document, add);
}

} // namespace ObjectClipboard
