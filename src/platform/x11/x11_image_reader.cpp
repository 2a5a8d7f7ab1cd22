#include "platform/x11/x11_image_reader.h"

#include "platform/texts.h"
#include "platform/x11/x11_connection.h"

#include <atomic>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

// Memory that this program and the server both see; it lives as long as a picture lies in it.
class X11ImageReader::Segment {
public:
    static std::shared_ptr<Segment> make(qsizetype bytes)
    {
        const int id = shmget(IPC_PRIVATE, std::size_t(bytes), IPC_CREAT | 0600);
        if (id < 0)
            return nullptr;
        void *address = shmat(id, nullptr, 0);
        if (address == reinterpret_cast<void *>(-1)) {
            shmctl(id, IPC_RMID, nullptr);
            return nullptr;
        }
        return std::shared_ptr<Segment>(new Segment(id, static_cast<uchar *>(address), bytes));
    }
    ~Segment()
    {
        markForRemoval();
        shmdt(m_address);
    }
    // From now on it goes with its last user, also when the program is killed.
    void markForRemoval()
    {
        if (!m_isMarked)
            shmctl(m_id, IPC_RMID, nullptr);
        m_isMarked = true;
    }
    int id() const { return m_id; }
    uchar *address() const { return m_address; }
    qsizetype bytes() const { return m_bytes; }

private:
    Segment(int id, uchar *address, qsizetype bytes) : m_id(id), m_address(address), m_bytes(bytes) {}

    int m_id;
    uchar *m_address;
    qsizetype m_bytes;
    bool m_isMarked = false;
};

namespace {

std::unexpected<Error> unreadable(const xcb_generic_error_t *error)
{
    // untranslated: for the log
    QString detail = QStringLiteral("The connection to the X server is closed.");
    if (error)
        detail = QStringLiteral("error %1 on request %2").arg(error->error_code).arg(error->major_code);
    return fail(PlatformTexts::tr("The picture could not be read from the screen."), detail);
}

std::unexpected<Error> unsupportedDepth(int depth)
{
    return fail(
        Error::Kind::Unavailable,
        PlatformTexts::tr(
            "This display uses a colour depth of %1 bits, which can't be captured: set it to 24 bits.")
            .arg(depth));
}

// The padding byte of a pixel of 24 bits may hold anything; opaque pictures promise 255.
void makeOpaque(uchar *pixels, qsizetype bytes)
{
    auto *words = reinterpret_cast<quint32 *>(pixels);
    for (qsizetype i = 0; i < bytes / 4; ++i)
        words[i] |= 0xff000000u;
}

std::optional<QImage::Format> formatOf(int depth)
{
    switch (depth) {
    case 15:
        return QImage::Format_RGB555;
    case 16:
        return QImage::Format_RGB16;
    case 24:
        return QImage::Format_RGB32;
    case 30:
        return QImage::Format_RGB30;
    case 32:
        return QImage::Format_ARGB32_Premultiplied;
    default:
        return std::nullopt;
    }
}

QImage finished(QImage image)
{
    switch (image.format()) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return image;
    default:
        return std::move(image).convertToFormat(QImage::Format_RGB32);
    }
}

} // namespace

X11ImageReader::X11ImageReader(const X11Connection &connection)
    : m_connection(connection), m_mayShare(connection.has(X11Extension::Shm))
{}

X11ImageReader::~X11ImageReader()
{
    trim();
}

void X11ImageReader::trim()
{
    if (m_segment)
        xcb_shm_detach(m_connection.xcb(), m_segmentId);
    m_segment.reset();
}

Result<int> X11ImageReader::bytesPerLine(int depth, int width) const
{
    for (auto it = xcb_setup_pixmap_formats_iterator(xcb_get_setup(m_connection.xcb())); it.rem;
         xcb_format_next(&it)) {
        if (it.data->depth == depth) {
            const int bits = width * it.data->bits_per_pixel;
            const int pad = it.data->scanline_pad;
            const bool isKnown = formatOf(depth) && it.data->bits_per_pixel == (depth > 16 ? 32 : 16);
            if (!isKnown)
                break;
            return (bits + pad - 1) / pad * pad / 8;
        }
    }
    return unsupportedDepth(depth);
}

Result<QImage> X11ImageReader::read(quint32 drawable, const QRect &rect)
{
    if (m_mayShare) {
        Result<QImage> image = readShared(drawable, rect);
        if (image || m_mayShare)
            return image;
    }
    return readCopied(drawable, rect);
}

bool X11ImageReader::reserve(qsizetype bytes)
{
    const bool isFree = m_segment && m_segment.use_count() == 1;
    std::atomic_thread_fence(std::memory_order_acquire); // whoever read the last picture is done with it
    if (isFree && m_segment->bytes() >= bytes)
        return true;
    trim();
    m_segment = Segment::make(bytes);
    if (!m_segment)
        return false;
    m_segmentId = xcb_generate_id(m_connection.xcb());
    return true;
}

Result<QImage> X11ImageReader::readShared(quint32 drawable, const QRect &rect)
{
    xcb_connection_t *xcb = m_connection.xcb();
    const quint32 before = m_segment ? m_segmentId : 0;
    // Room for the deepest format: the depth is only known with the answer.
    if (!reserve(qsizetype(rect.width()) * rect.height() * 4)) {
        m_mayShare = false;
        return unreadable(nullptr);
    }
    const bool isNew = m_segmentId != before;
    xcb_void_cookie_t attached{};
    if (isNew)
        attached = xcb_shm_attach_checked(xcb, m_segmentId, quint32(m_segment->id()), false);
    xcb_generic_error_t *error = nullptr;
    const XcbOwned<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(
        xcb,
        xcb_shm_get_image(xcb, drawable, qint16(rect.x()), qint16(rect.y()), quint16(rect.width()),
                          quint16(rect.height()), ~0u, XCB_IMAGE_FORMAT_Z_PIXMAP, m_segmentId, 0),
        &error));
    const XcbOwned<xcb_generic_error_t> ownedError(error);
    if (isNew) {
        const XcbOwned<xcb_generic_error_t> refused(xcb_request_check(xcb, attached));
        m_segment->markForRemoval();
        if (refused) { // a server on another machine, or one that may not read this memory
            m_segment.reset();
            m_mayShare = false;
            return unreadable(refused.get());
        }
    }
    if (!reply)
        return unreadable(error);
    const auto stride = bytesPerLine(reply->depth, rect.width());
    if (!stride)
        return std::unexpected(stride.error());
    if (reply->depth == 24)
        makeOpaque(m_segment->address(), qsizetype(*stride) * rect.height());
    auto *lease = new std::shared_ptr<Segment>(m_segment);
    return finished(QImage(
        m_segment->address(), rect.width(), rect.height(), *stride, *formatOf(reply->depth),
        [](void *held) { delete static_cast<std::shared_ptr<Segment> *>(held); }, lease));
}

Result<QImage> X11ImageReader::readCopied(quint32 drawable, const QRect &rect)
{
    xcb_connection_t *xcb = m_connection.xcb();
    xcb_generic_error_t *error = nullptr;
    const XcbOwned<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        xcb,
        xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, qint16(rect.x()), qint16(rect.y()),
                      quint16(rect.width()), quint16(rect.height()), ~0u),
        &error));
    const XcbOwned<xcb_generic_error_t> ownedError(error);
    if (!reply)
        return unreadable(error);
    const auto stride = bytesPerLine(reply->depth, rect.width());
    if (!stride)
        return std::unexpected(stride.error());
    if (qsizetype(*stride) * rect.height() > xcb_get_image_data_length(reply.get()))
        return unreadable(nullptr);
    uchar *pixels = xcb_get_image_data(reply.get());
    if (reply->depth == 24)
        makeOpaque(pixels, qsizetype(*stride) * rect.height());
    return finished(QImage(pixels, rect.width(), rect.height(), *stride, *formatOf(reply->depth)).copy());
}
