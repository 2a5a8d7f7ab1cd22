#include "platform/wayland/kwin_pictures.h"

#include "platform/texts.h"
#include "platform/wayland/pipe_bytes.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <algorithm>
#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kPatience = 5000; // milliseconds

bool isSolid(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [](QRgb pixel) { return qAlpha(pixel) != 255; }))
            return false;
    }
    return true;
}

Result<QImage> imageOf(const QVariantMap &told, int file)
{
    const QSize size(told.value(QStringLiteral("width")).toInt(),
                     told.value(QStringLiteral("height")).toInt());
    const int stride = told.value(QStringLiteral("stride")).toInt();
    const auto format = static_cast<QImage::Format>(told.value(QStringLiteral("format")).toInt());
    const bool isSound = !size.isEmpty() && stride >= size.width() * 4 && format > QImage::Format_Mono &&
                         format < QImage::NImageFormats && QImage::toPixelFormat(format).bitsPerPixel() == 32;
    if (!isSound) {
        close(file);
        return fail(PlatformTexts::tr("The desktop refused a picture of the screen."),
                    QStringLiteral("format %1").arg(int(format)));
    }
    const QByteArray bytes = PipeBytes::receive(file, qsizetype(stride) * size.height());
    if (bytes.size() < qsizetype(stride) * size.height())
        return fail(PlatformTexts::tr("The desktop refused a picture of the screen."),
                    QStringLiteral("cut off"));
    const QImage image(reinterpret_cast<const uchar *>(bytes.constData()), size.width(), size.height(),
                       stride, format);
    const bool isOpaque = !image.hasAlphaChannel() || isSolid(image);
    return image.convertToFormat(isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied)
        .copy();
}

Result<QImage> shoot(const QString &method, const QString &what, QVariantMap options, Pointer pointer)
{
    options[QStringLiteral("include-cursor")] = pointer == Pointer::Shown;
    options[QStringLiteral("native-resolution")] = true;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return fail(PlatformTexts::tr("There are too many open files."));
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.kde.KWin"),
                                                       QStringLiteral("/org/kde/KWin/ScreenShot2"),
                                                       QStringLiteral("org.kde.KWin.ScreenShot2"), method);
    call.setArguments({what, options, QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))});
    close(ends[1]); // the message has one of its own
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, kPatience);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return imageOf(qdbus_cast<QVariantMap>(reply.arguments().value(0)), ends[0]);
    close(ends[0]);
    if (reply.errorName().endsWith(QLatin1String("NoAuthorized"))) {
        return fail(
            Error::Kind::Denied,
            PlatformTexts::tr("Plasma gives pictures of the screen only to installed programs: install "
                              "the package of Lumenpost, and start it from there."),
            reply.errorMessage());
    }
    if (reply.errorName().contains(QLatin1String("InvalidWindow")) ||
        reply.errorName().contains(QLatin1String("InvalidScreen")))
        return fail(Error::Kind::NotFound, PlatformTexts::tr("That window is no longer available."));
    return fail(PlatformTexts::tr("The desktop refused a picture of the screen."), reply.errorMessage());
}

} // namespace

bool KWinPictures::isOffered()
{
    const QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(QStringLiteral("org.kde.KWin")).value();
}

Result<QImage> KWinPictures::screen(const QString &name, Pointer pointer)
{
    return shoot(QStringLiteral("CaptureScreen"), name, {}, pointer);
}

Result<QImage> KWinPictures::window(const QString &handle, Pointer pointer, WindowPart part)
{
    return shoot(QStringLiteral("CaptureWindow"), handle,
                 {{QStringLiteral("include-decoration"), part == WindowPart::Framed},
                  {QStringLiteral("include-shadow"), false}},
                 pointer);
}
