#include "platform/wayland/shared_picture.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

namespace {

// Little endian words there, as here.
QImage::Format imageFormat(quint32 code)
{
    switch (code) {
    case WL_SHM_FORMAT_ARGB8888:
    case WL_SHM_FORMAT_XRGB8888:
        return QImage::Format_RGB32;
    case WL_SHM_FORMAT_ABGR8888:
    case WL_SHM_FORMAT_XBGR8888:
        return QImage::Format_RGBX8888;
    case WL_SHM_FORMAT_ARGB2101010:
    case WL_SHM_FORMAT_XRGB2101010:
        return QImage::Format_RGB30;
    case WL_SHM_FORMAT_ABGR2101010:
    case WL_SHM_FORMAT_XBGR2101010:
        return QImage::Format_BGR30;
    case WL_SHM_FORMAT_BGR888:
        return QImage::Format_RGB888;
    case WL_SHM_FORMAT_RGB888:
        return QImage::Format_BGR888;
    default:
        return QImage::Format_Invalid;
    }
}

} // namespace

bool SharedPicture::understands(quint32 code)
{
    return imageFormat(code) != QImage::Format_Invalid;
}

std::unique_ptr<SharedPicture> SharedPicture::make(wl_shm *memory, const Format &format)
{
    if (!understands(format.code) || format.size.isEmpty() || format.stride <= 0)
        return nullptr;
    std::unique_ptr<SharedPicture> picture(new SharedPicture(format));
    picture->m_length = size_t(format.stride) * size_t(format.size.height());
    const int file = memfd_create("lumenpost-picture", MFD_CLOEXEC);
    if (file < 0)
        return nullptr;
    // Claimed now: what isn't there later ends the program where it reads.
    if (posix_fallocate(file, 0, off_t(picture->m_length)) == 0) {
        void *bytes = mmap(nullptr, picture->m_length, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (bytes != MAP_FAILED) {
            picture->m_bytes = bytes;
            wl_shm_pool *pool = wl_shm_create_pool(memory, file, int32_t(picture->m_length));
            picture->m_buffer = wl_shm_pool_create_buffer(pool, 0, format.size.width(), format.size.height(),
                                                          format.stride, format.code);
            wl_shm_pool_destroy(pool);
        }
    }
    close(file);
    return picture->m_buffer ? std::move(picture) : nullptr;
}

SharedPicture::~SharedPicture()
{
    if (m_buffer)
        wl_buffer_destroy(m_buffer);
    if (m_bytes)
        munmap(m_bytes, m_length);
}

QImage SharedPicture::image() const
{
    return {static_cast<const uchar *>(m_bytes), m_format.size.width(), m_format.size.height(),
            m_format.stride, imageFormat(m_format.code)};
}
