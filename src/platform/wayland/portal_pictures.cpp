#include "platform/wayland/portal_pictures.h"

#include "platform/texts.h"
#include "platform/wayland/portal_request.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QUrl>
#include <algorithm>

namespace {

bool isBlack(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [](QRgb pixel) { return (pixel & 0xffffff) != 0; }))
            return false;
    }
    return true;
}

} // namespace

bool PortalPictures::isOffered()
{
    const QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
    // The first who asks it for something may be the one who starts it.
    return bus &&
           (bus->isServiceRegistered(name).value() || bus->activatableServiceNames().value().contains(name));
}

Result<QImage> PortalPictures::desktop(std::chrono::milliseconds patience)
{
    const auto answer =
        PortalRequest::ask(QStringLiteral("org.freedesktop.portal.Screenshot"), QStringLiteral("Screenshot"),
                           {QString()}, {{QStringLiteral("interactive"), false}}, patience);
    if (!answer)
        return std::unexpected(answer.error());
    const QString path = QUrl(answer->value(QStringLiteral("uri")).toString()).toLocalFile();
    const QImage image = QImage(path).convertToFormat(QImage::Format_RGB32);
    // It is ours, and one path may be shared by all users, or others pile up in the home folder.
    QFile::remove(path);
    if (image.isNull())
        return fail(PlatformTexts::tr("The desktop refused a picture of the screen."));
    if (isBlack(image))
        return fail(PlatformTexts::tr("The desktop gave a picture that is all black."));
    return image;
}

Result<QImage> PortalPictures::screenOf(const QImage &desktop, const QList<Screen> &screens,
                                        const Screen &screen)
{
    QRectF all;
    for (const Screen &each : screens)
        all |= each.frame();
    if (all.isEmpty())
        return fail(Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."));
    const double scale = desktop.width() / all.width();
    const QRectF part((screen.origin() - all.topLeft()) * scale, screen.frame().size() * scale);
    const QImage cut = desktop.copy(part.toRect());
    return cut.size() == screen.native.size()
               ? cut
               : cut.scaled(screen.native.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
