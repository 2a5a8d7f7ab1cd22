#pragma once

#include "base/result.h"

#include <QString>
#include <chrono>
#include <optional>

struct AVIOContext;

// A film on disk while it is recorded: fragments that are whole as soon as they are written, behind a table
// of contents without entries and a hole in which the real one finds room at the end. QuickTime file format,
// ISO/IEC 14496-12.
class FilmFile {
public:
    static Result<std::unique_ptr<FilmFile>> create(const QString &path);
    ~FilmFile();
    FilmFile(const FilmFile &) = delete;
    FilmFile &operator=(const FilmFile &) = delete;

    // Where a muxer writes.
    AVIOContext *output() { return m_output; }
    // The muxer has written its header.
    Result<void> endHeader();
    // What was written so far is whole.
    void keep();
    // Gives back what was written after the last keep().
    void dropTorn();
    // Why a write failed; empty when none did.
    QString failure() const { return m_failure; }

private:
    explicit FilmFile(int descriptor);
    static int write(void *self, std::uint8_t *bytes, int count);
    bool append(const std::uint8_t *bytes, qsizetype count);

    int m_file;
    AVIOContext *m_output = nullptr;
    QByteArray m_header; // until it is complete
    bool m_isHeader = true;
    std::int64_t m_size = 0;
    std::int64_t m_kept = 0;
    std::int64_t m_synced = 0; // on its way to the disk
    QString m_failure;
};

// Makes the ordinary film `target` of a recorded one, as Movies::finish tells.
Result<void> finishFilm(const QString &recorded, const QString &target,
                        std::optional<std::chrono::microseconds> end);
