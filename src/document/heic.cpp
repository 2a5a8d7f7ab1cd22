#include "document/heic.h"

#include "base/loadable.h"
#include "document/texts.h"

namespace {

using EncodeFunction = bool (*)(const QImage &, double, QByteArray *, QString *);
using DecodeFunction = bool (*)(const QByteArray &, QImage *, QString *);
using SizeFunction = bool (*)(const QByteArray &, QSize *);

constexpr auto kModule = "document_heic";

} // namespace

bool Heic::isHeic(const QByteArray &head)
{
    if (head.size() < 12 || head.mid(4, 4) != "ftyp")
        return false;
    const QByteArray brand = head.mid(8, 4);
    return brand == "heic" || brand == "heix" || brand == "mif1" || brand == "msf1" || brand == "heim" ||
           brand == "heis";
}

Result<QByteArray> Heic::encode(const QImage &image, double quality)
{
    const auto function = Loadable::function<EncodeFunction>(QLatin1String(kModule), "lumenpost_heic_encode");
    if (!function)
        return std::unexpected(function.error());
    QByteArray bytes;
    QString reason;
    if (!(*function)(image, quality, &bytes, &reason))
        return fail(DocumentTexts::tr("The picture could not be written as HEIC: %1.").arg(reason));
    return bytes;
}

Result<QImage> Heic::decode(const QByteArray &bytes)
{
    const auto function = Loadable::function<DecodeFunction>(QLatin1String(kModule), "lumenpost_heic_decode");
    if (!function)
        return std::unexpected(function.error());
    QImage image;
    QString reason;
    if (!(*function)(bytes, &image, &reason))
        return fail(Error::Kind::Invalid, DocumentTexts::tr("The HEIC picture is damaged."), reason);
    return image;
}

Result<QSize> Heic::pixelSize(const QByteArray &bytes)
{
    const auto function = Loadable::function<SizeFunction>(QLatin1String(kModule), "lumenpost_heic_size");
    if (!function)
        return std::unexpected(function.error());
    QSize size;
    if (!(*function)(bytes, &size))
        return fail(Error::Kind::Invalid, DocumentTexts::tr("The HEIC picture is damaged."));
    return size;
}
