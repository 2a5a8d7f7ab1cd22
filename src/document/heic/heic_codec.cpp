#include <QByteArray>
#include <QImage>
#include <QString>
#include <cstring>
#include <libheif/heif.h>
#include <memory>

// The functions that the HEIC loader looks up by name. Failures give a reason in plain words.

namespace {

template <auto Release>
struct Releaser {
    template <typename T>
    void operator()(T *object) const
    {
        Release(object);
    }
};
using Context = std::unique_ptr<heif_context, Releaser<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Releaser<heif_image_handle_release>>;
using Picture = std::unique_ptr<heif_image, Releaser<heif_image_release>>;
using EncoderHandle = std::unique_ptr<heif_encoder, Releaser<heif_encoder_release>>;

// A picture of a screen beyond this could not be held in memory anyway.
constexpr qint64 kMostPixels = 400'000'000;

bool failed(const heif_error &error, QString *reason)
{
    if (error.code == heif_error_Ok)
        return false;
    *reason = QString::fromUtf8(error.message).toLower();
    return true;
}

heif_error appendBytes(heif_context *, const void *data, size_t size, void *target)
{
    static_cast<QByteArray *>(target)->append(static_cast<const char *>(data), static_cast<qsizetype>(size));
    return {heif_error_Ok, heif_suberror_Unspecified, "ok"};
}

Picture picture(const QImage &source, QString *reason)
{
    const bool hasAlpha = source.hasAlphaChannel();
    const QImage image = source.convertToFormat(hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    const heif_chroma chroma = hasAlpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB;
    heif_image *raw = nullptr;
    if (failed(heif_image_create(image.width(), image.height(), heif_colorspace_RGB, chroma, &raw), reason))
        return nullptr;
    Picture result(raw);
    if (failed(heif_image_add_plane(raw, heif_channel_interleaved, image.width(), image.height(), 8), reason))
        return nullptr;
    int stride = 0;
    uint8_t *plane = heif_image_get_plane(raw, heif_channel_interleaved, &stride);
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(plane + static_cast<size_t>(y) * stride, image.constScanLine(y),
                    static_cast<size_t>(image.width()) * (hasAlpha ? 4 : 3));
    return result;
}

Handle primaryImage(const Context &context, const QByteArray &bytes, QString *reason)
{
    if (failed(heif_context_read_from_memory_without_copy(context.get(), bytes.constData(),
                                                          static_cast<size_t>(bytes.size()), nullptr),
               reason))
        return nullptr;
    heif_image_handle *raw = nullptr;
    if (failed(heif_context_get_primary_image_handle(context.get(), &raw), reason))
        return nullptr;
    return Handle(raw);
}

} // namespace

extern "C" Q_DECL_EXPORT bool lumenpost_heic_encode(const QImage &image, double quality, QByteArray *bytes,
                                                    QString *reason)
{
    const Context context(heif_context_alloc());
    heif_encoder *rawEncoder = nullptr;
    if (failed(heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &rawEncoder),
               reason))
        return false;
    const EncoderHandle encoder(rawEncoder);
    heif_encoder_set_lossy_quality(rawEncoder, static_cast<int>(quality * 100 + 0.5));
    // Slower presets take up to ten seconds for a large screen; full chroma keeps coloured text sharp.
    heif_encoder_set_parameter_string(rawEncoder, "preset", "ultrafast");
    heif_encoder_set_parameter_string(rawEncoder, "chroma", "444");
    const Picture source = picture(image, reason);
    if (!source)
        return false;
    heif_image_handle *rawHandle = nullptr;
    const heif_error encoded =
        heif_context_encode_image(context.get(), source.get(), rawEncoder, nullptr, &rawHandle);
    const Handle handle(rawHandle);
    if (failed(encoded, reason))
        return false;
    heif_writer writer{1, appendBytes};
    return !failed(heif_context_write(context.get(), &writer, bytes), reason);
}

extern "C" Q_DECL_EXPORT bool lumenpost_heic_size(const QByteArray &bytes, QSize *size)
{
    const Context context(heif_context_alloc());
    QString reason;
    const Handle handle = primaryImage(context, bytes, &reason);
    if (!handle)
        return false;
    *size = QSize(heif_image_handle_get_width(handle.get()), heif_image_handle_get_height(handle.get()));
    return !size->isEmpty();
}

extern "C" Q_DECL_EXPORT bool lumenpost_heic_decode(const QByteArray &bytes, QImage *image, QString *reason)
{
    const Context context(heif_context_alloc());
    const Handle handle = primaryImage(context, bytes, reason);
    if (!handle)
        return false;
    const int width = heif_image_handle_get_width(handle.get());
    const int height = heif_image_handle_get_height(handle.get());
    if (width <= 0 || height <= 0 || qint64(width) * height > kMostPixels) {
        *reason = QStringLiteral("unusable size %1 × %2").arg(width).arg(height);
        return false;
    }
    const bool hasAlpha = heif_image_handle_has_alpha_channel(handle.get());
    heif_image *raw = nullptr;
    const heif_chroma chroma = hasAlpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB;
    if (failed(heif_decode_image(handle.get(), &raw, heif_colorspace_RGB, chroma, nullptr), reason))
        return false;
    const Picture decoded(raw);
    int stride = 0;
    const uint8_t *plane = heif_image_get_plane_readonly(raw, heif_channel_interleaved, &stride);
    if (!plane) {
        *reason = QStringLiteral("no picture inside");
        return false;
    }
    const QImage view(plane, heif_image_get_width(raw, heif_channel_interleaved),
                      heif_image_get_height(raw, heif_channel_interleaved), stride,
                      hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    *image = view.convertToFormat(hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return !image->isNull();
}
