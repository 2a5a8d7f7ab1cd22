#pragma once

#include <QImage>
#include <QSize>
#include <cstddef>
#include <optional>

struct wl_buffer;
struct wl_shm;

// Memory that the compositor and this program both see, as it is wanted for one picture.
class SharedPicture {
public:
    struct Format {
        quint32 code = 0; // as wl_shm counts them
        QSize size;
        int stride = 0;
        bool operator==(const Format &) const = default;
    };

    // Null when there is not enough memory, or when the format isn't understood.
    static std::unique_ptr<SharedPicture> make(wl_shm *memory, const Format &format);
    static bool understands(quint32 code);
    ~SharedPicture();
    SharedPicture(const SharedPicture &) = delete;
    SharedPicture &operator=(const SharedPicture &) = delete;

    const Format &format() const { return m_format; }
    wl_buffer *buffer() const { return m_buffer; }
    uchar *bytes() { return static_cast<uchar *>(m_bytes); }
    // The bytes as they are now, not copied: good while this lives.
    QImage image() const;

private:
    explicit SharedPicture(const Format &format) : m_format(format) {}

    Format m_format;
    void *m_bytes = nullptr;
    size_t m_length = 0;
    wl_buffer *m_buffer = nullptr;
};
