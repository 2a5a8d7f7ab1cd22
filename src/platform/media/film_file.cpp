#include "platform/media/film_file.h"

#include "base/atomic_file.h"
#include "platform/media/av.h"
#include "platform/texts.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kBufferSize = 1 << 16;
// Room for the table of contents: about 800 bytes for each second in which something moves, so 40 minutes of
// that, and hours otherwise.
constexpr std::int64_t kHole = 2 << 20;
// A film of this size is copied in a moment, and loses the hole by it.
constexpr std::int64_t kSmall = 24 << 20;
constexpr int kSoundFrame = 1024; // samples of a packet of AAC
constexpr int kBoxHeader = 8;
constexpr int kLongBoxHeader = 16;

QByteArray boxHeader(std::int64_t size, const char *type)
{
    QByteArray header(4, Qt::Uninitialized);
    qToBigEndian(quint32(size), header.data());
    return header + type;
}

std::unexpected<Error> cannotFinish(const QString &detail)
{
    return fail(PlatformTexts::tr("The recording couldn't be finished."), detail);
}

std::unexpected<Error> cannotFinish(int error)
{
    return cannotFinish(avReason(error));
}

// The descriptor of an open file, closed at the end.
class Descriptor {
public:
    Descriptor(const QString &path, int flags)
        : m_descriptor(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0644))
    {}
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    explicit operator bool() const { return m_descriptor >= 0; }
    bool sync() const { return fsync(m_descriptor) == 0; }
    bool write(std::int64_t at, const QByteArray &bytes) const
    {
        qsizetype done = 0;
        while (done < bytes.size()) {
            const ssize_t count =
                pwrite(m_descriptor, bytes.constData() + done, std::size_t(bytes.size() - done), at + done);
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return false;
            done += count;
        }
        return true;
    }
    QByteArray read(std::int64_t at, qsizetype count) const
    {
        QByteArray bytes(count, Qt::Uninitialized);
        const ssize_t got = pread(m_descriptor, bytes.data(), std::size_t(count), at);
        bytes.truncate(std::max<ssize_t>(got, 0));
        return bytes;
    }

private:
    int m_descriptor;
};

Result<AvInput> openRecorded(const QString &path)
{
    AVFormatContext *opened = nullptr;
    if (const int error = avformat_open_input(&opened, avUrl(path).constData(), nullptr, nullptr); error < 0)
        return cannotFinish(error);
    AvInput input(opened);
    if (input->nb_streams == 0)
        return cannotFinish(QStringLiteral("no streams"));
    return input;
}

// Output tracks like those of the input.
Result<void> copyTracks(const AVFormatContext &input, AVFormatContext &output)
{
    for (unsigned i = 0; i < input.nb_streams; ++i) {
        AVStream *track = avformat_new_stream(&output, nullptr);
        if (!track)
            return cannotFinish(AVERROR(ENOMEM));
        if (const int error = avcodec_parameters_copy(track->codecpar, input.streams[i]->codecpar); error < 0)
            return cannotFinish(error);
        track->time_base = input.streams[i]->time_base;
        track->disposition = input.streams[i]->disposition;
        if (track->codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
            track->codecpar->frame_size = kSoundFrame;
    }
    return {};
}

std::int64_t inUnits(std::chrono::microseconds time, const AVStream &track)
{
    return av_rescale_q(time.count(), AVRational{1, 1'000'000}, track.time_base);
}

bool isPicture(const AVStream &track)
{
    return track.codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
}

struct Sample {
    std::int64_t place = 0; // in the file
    std::int64_t time = 0;  // in units of the track
    std::int64_t duration = 0;
    int size = 0;
    unsigned track = 0;
    bool isKey = false;
};

// Every sample in the order of the file, without reading it.
Result<std::vector<Sample>> samplesOf(AVFormatContext &input, std::optional<std::chrono::microseconds> end)
{
    for (unsigned i = 0; i < input.nb_streams; ++i)
        input.streams[i]->discard = AVDISCARD_ALL;
    const AvPacket packet(av_packet_alloc());
    while (av_read_frame(&input, packet.get()) >= 0) // passes over all fragments
        av_packet_unref(packet.get());
    std::vector<Sample> samples;
    std::chrono::microseconds last{0};
    for (unsigned i = 0; i < input.nb_streams; ++i) {
        AVStream &track = *input.streams[i];
        const int count = avformat_index_get_entries_count(&track);
        for (int k = 0; k < count; ++k) {
            const AVIndexEntry *entry = avformat_index_get_entry(&track, k);
            samples.push_back({entry->pos, entry->timestamp, 0, entry->size, i,
                               (entry->flags & AVINDEX_KEYFRAME) != 0 || !isPicture(track)});
            if (k > 0)
                samples[samples.size() - 2].duration = entry->timestamp - samples[samples.size() - 2].time;
        }
        if (count == 0)
            continue;
        Sample &final = samples.back();
        final.duration = isPicture(track) ? av_rescale_q(1, AVRational{1, 30}, track.time_base) : kSoundFrame;
        last = std::max(last, std::chrono::microseconds(av_rescale_q(
                                  final.time + final.duration, track.time_base, AVRational{1, 1'000'000})));
    }
    // The last picture stays as long as the film lasts.
    for (unsigned i = 0; i < input.nb_streams; ++i) {
        const auto final = std::find_if(samples.rbegin(), samples.rend(),
                                        [i](const Sample &sample) { return sample.track == i; });
        if (isPicture(*input.streams[i]) && final != samples.rend())
            final->duration =
                std::max(final->duration, inUnits(end.value_or(last), *input.streams[i]) - final->time);
    }
    if (samples.empty())
        return cannotFinish(QStringLiteral("no samples"));
    std::stable_sort(samples.begin(), samples.end(),
                     [](const Sample &a, const Sample &b) { return a.place < b.place; });
    return samples;
}

// Takes the table of contents that the muxer writes, and forgets the rest.
class TableSink {
public:
    TableSink()
        : m_output(avio_alloc_context(static_cast<unsigned char *>(av_malloc(kBufferSize)), kBufferSize, 1,
                                      this, nullptr, &TableSink::write, &TableSink::seek))
    {}
    ~TableSink()
    {
        av_freep(&m_output->buffer);
        avio_context_free(&m_output);
    }
    TableSink(const TableSink &) = delete;
    TableSink &operator=(const TableSink &) = delete;

    AVIOContext *output() { return m_output; }
    void takeFrom(std::int64_t place) { m_from = place; }
    const QByteArray &table() const { return m_table; }

private:
    static int write(void *self, std::uint8_t *bytes, int count)
    {
        auto &sink = *static_cast<TableSink *>(self);
        if (sink.m_from && sink.m_place >= *sink.m_from) {
            const auto at = qsizetype(sink.m_place - *sink.m_from);
            if (sink.m_table.size() < at + count)
                sink.m_table.resize(at + count);
            std::memcpy(sink.m_table.data() + at, bytes, std::size_t(count));
        }
        sink.m_place += count;
        return count;
    }
    static std::int64_t seek(void *self, std::int64_t offset, int whence)
    {
        auto &sink = *static_cast<TableSink *>(self);
        if (whence != SEEK_SET)
            return -1;
        return sink.m_place = offset;
    }

    AVIOContext *m_output;
    std::int64_t m_place = 0;
    std::optional<std::int64_t> m_from;
    QByteArray m_table;
};

// The "moov" box for the samples where they lie.
Result<QByteArray> tableOfContents(const AVFormatContext &input, const std::vector<Sample> &samples)
{
    AVFormatContext *allocated = nullptr;
    if (const int error = avformat_alloc_output_context2(&allocated, nullptr, "mov", nullptr); error < 0)
        return cannotFinish(error);
    const AvOutput output(allocated);
    if (const auto copied = copyTracks(input, *output); !copied)
        return std::unexpected(copied.error());
    TableSink sink;
    output->pb = sink.output();
    if (const int error = avformat_write_header(output.get(), nullptr); error < 0)
        return cannotFinish(error);
    int largest = 0;
    for (const Sample &sample : samples)
        largest = std::max(largest, sample.size);
    const QByteArray zeros(largest + AV_INPUT_BUFFER_PADDING_SIZE, '\0');
    const AvPacket packet(av_packet_alloc());
    for (const Sample &sample : samples) {
        if (sample.place < avio_tell(output->pb))
            return cannotFinish(QStringLiteral("samples overlap"));
        avio_seek(output->pb, sample.place, SEEK_SET);
        packet->data = reinterpret_cast<std::uint8_t *>(const_cast<char *>(zeros.constData()));
        packet->size = sample.size;
        packet->pts = packet->dts = sample.time;
        packet->duration = sample.duration;
        packet->stream_index = int(sample.track);
        packet->flags = sample.isKey ? AV_PKT_FLAG_KEY : 0;
        av_packet_rescale_ts(packet.get(), input.streams[sample.track]->time_base,
                             output->streams[sample.track]->time_base);
        if (const int error = av_write_frame(output.get(), packet.get()); error < 0)
            return cannotFinish(error);
    }
    avio_flush(output->pb);
    sink.takeFrom(avio_tell(output->pb));
    if (const int error = av_write_trailer(output.get()); error < 0)
        return cannotFinish(error);
    avio_flush(output->pb);
    if (sink.table().size() < kBoxHeader || sink.table().mid(4, 4) != "moov")
        return cannotFinish(QStringLiteral("no table of contents"));
    return sink.table();
}

// Puts the table into the hole. Until the last four bytes the file stays the fragmented film that it is; they
// make the hole end at once, so that the table and one box around all fragments become visible.
Result<void> finishInPlace(const QString &path, std::optional<std::chrono::microseconds> end)
{
    const Descriptor file(path, O_RDWR);
    if (!file)
        return cannotFinish(qt_error_string());
    const std::int64_t size = QFileInfo(path).size();
    const QByteArray first = file.read(0, kBoxHeader);
    const std::int64_t hole = first.size() == kBoxHeader ? qFromBigEndian<quint32>(first.constData()) : 0;
    if (hole < kBoxHeader || file.read(hole, kBoxHeader) != boxHeader(kHole, "free"))
        return cannotFinish(QStringLiteral("no hole"));
    const auto input = openRecorded(path);
    if (!input)
        return std::unexpected(input.error());
    const auto samples = samplesOf(**input, end);
    if (!samples)
        return std::unexpected(samples.error());
    const auto table = tableOfContents(**input, *samples);
    if (!table)
        return std::unexpected(table.error());
    const std::int64_t rest = kHole - kBoxHeader - table->size() - kLongBoxHeader;
    if (rest < kBoxHeader)
        return cannotFinish(QStringLiteral("the hole is too small"));
    const std::int64_t media = hole + kHole - kLongBoxHeader;
    QByteArray mediaHeader = boxHeader(1, "mdat");
    mediaHeader.resize(kLongBoxHeader);
    qToBigEndian(quint64(size - media), mediaHeader.data() + kBoxHeader);
    const bool isPrepared = file.write(hole + kBoxHeader, *table + boxHeader(rest, "free")) &&
                            file.write(media, mediaHeader) && file.sync();
    if (!isPrepared || !file.write(hole, boxHeader(kBoxHeader, "free").left(4)) || !file.sync())
        return cannotFinish(qt_error_string());
    return {};
}

// A film without hole and fragments.
Result<void> copyFinished(const QString &path, const QString &copy,
                          std::optional<std::chrono::microseconds> end)
{
    const auto scanned = openRecorded(path);
    if (!scanned)
        return std::unexpected(scanned.error());
    const auto samples = samplesOf(**scanned, end);
    if (!samples)
        return std::unexpected(samples.error());
    const Descriptor from(path, O_RDONLY);
    AVFormatContext *allocated = nullptr;
    const QByteArray url = avUrl(copy);
    if (const int error = avformat_alloc_output_context2(&allocated, nullptr, "mov", url.constData());
        error < 0)
        return cannotFinish(error);
    const AvOutput output(allocated);
    if (const auto copied = copyTracks(**scanned, *output); !copied)
        return copied;
    AVDictionary *options = nullptr;
    av_dict_set(&options, "movflags", "faststart", 0);
    int error = avio_open(&output->pb, url.constData(), AVIO_FLAG_WRITE);
    if (error >= 0)
        error = avformat_write_header(output.get(), &options);
    av_dict_free(&options);
    const AvPacket packet(av_packet_alloc());
    for (const Sample &sample : *samples) {
        if (error < 0)
            break;
        QByteArray bytes = from.read(sample.place, sample.size);
        if (bytes.size() < sample.size)
            break; // the last one is torn
        bytes.append(AV_INPUT_BUFFER_PADDING_SIZE, '\0');
        packet->data = reinterpret_cast<std::uint8_t *>(bytes.data());
        packet->size = sample.size;
        packet->pts = packet->dts = sample.time;
        packet->duration = sample.duration;
        packet->stream_index = int(sample.track);
        packet->flags = sample.isKey ? AV_PKT_FLAG_KEY : 0;
        av_packet_rescale_ts(packet.get(), (*scanned)->streams[sample.track]->time_base,
                             output->streams[sample.track]->time_base);
        error = av_write_frame(output.get(), packet.get());
    }
    if (error >= 0)
        error = av_write_trailer(output.get());
    if (output->pb) {
        avio_flush(output->pb);
        error = error < 0 ? error : output->pb->error;
        const int closed = avio_closep(&output->pb);
        error = error < 0 ? error : closed;
    }
    if (error < 0)
        return cannotFinish(error);
    const Descriptor written(copy, O_RDONLY);
    if (!written || !written.sync())
        return cannotFinish(qt_error_string());
    return {};
}

Result<void> moveTo(const QString &from, const QString &target)
{
    const auto moved = AtomicFile::moveWithoutReplacing(from, target);
    if (!moved)
        return std::unexpected(moved.error());
    if (!*moved)
        return fail(PlatformTexts::tr("There is a file named %1 already.").arg(QFileInfo(target).fileName()));
    return {};
}

} // namespace

Result<void> finishFilm(const QString &recorded, const QString &target,
                        std::optional<std::chrono::microseconds> end)
{
    const QFileInfo info(recorded);
    if (!info.exists())
        return cannotFinish(QStringLiteral("the file is gone"));
    if (info.size() <= kSmall) {
        const QString copy = recorded + QStringLiteral(".finished.mov");
        if (copyFinished(recorded, copy, end)) {
            const auto moved = moveTo(copy, target);
            if (!moved)
                QFile::remove(copy);
            else
                QFile::remove(recorded);
            return moved;
        }
        QFile::remove(copy);
    }
    // Where there is no room for a copy, or it would take long.
    const auto finished = finishInPlace(recorded, end);
    if (!finished && info.size() > kSmall) {
        const QString copy = recorded + QStringLiteral(".finished.mov");
        if (copyFinished(recorded, copy, end) && moveTo(copy, target)) {
            QFile::remove(recorded);
            return {};
        }
        QFile::remove(copy);
    }
    if (const auto readable = openRecorded(recorded); !readable)
        return std::unexpected(readable.error());
    return moveTo(recorded, target);
}

Result<std::unique_ptr<FilmFile>> FilmFile::create(const QString &path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file < 0)
        return fail(
            PlatformTexts::tr("Couldn't write %1: %2.").arg(QFileInfo(path).fileName(), qt_error_string()));
    return std::unique_ptr<FilmFile>(new FilmFile(file));
}

FilmFile::FilmFile(int descriptor)
    : m_file(descriptor),
      m_output(avio_alloc_context(static_cast<unsigned char *>(av_malloc(kBufferSize)), kBufferSize, 1, this,
                                  nullptr, &FilmFile::write, nullptr))
{}

FilmFile::~FilmFile()
{
    av_freep(&m_output->buffer);
    avio_context_free(&m_output);
    ::close(m_file);
}

int FilmFile::write(void *self, std::uint8_t *bytes, int count)
{
    auto &file = *static_cast<FilmFile *>(self);
    if (file.m_isHeader) {
        file.m_header.append(reinterpret_cast<const char *>(bytes), count);
        return count;
    }
    return file.append(bytes, count) ? count : AVERROR(EIO);
}

bool FilmFile::append(const std::uint8_t *bytes, qsizetype count)
{
    while (count > 0) {
        const ssize_t written = pwrite(m_file, bytes, std::size_t(count), m_size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            m_failure = qt_error_string();
            return false;
        }
        bytes += written;
        count -= written;
        m_size += written;
    }
    return true;
}

Result<void> FilmFile::endHeader()
{
    avio_flush(m_output);
    m_isHeader = false;
    const qsizetype typeBox =
        m_header.size() < kBoxHeader ? 0 : qsizetype(qFromBigEndian<quint32>(m_header.constData()));
    const auto put = [this](const QByteArray &bytes) {
        return append(reinterpret_cast<const std::uint8_t *>(bytes.constData()), bytes.size());
    };
    bool isWritten = typeBox > 0 && put(m_header.left(typeBox)) && put(boxHeader(kHole, "free"));
    if (isWritten) {
        m_size += kHole - kBoxHeader;
        isWritten = put(m_header.mid(typeBox));
    }
    if (!isWritten)
        return fail(PlatformTexts::tr("The film couldn't be written: %1.").arg(m_failure));
    keep();
    return {};
}

void FilmFile::keep()
{
    // The disk works while the film runs, so that there is little left to wait for at its end.
    if (m_size > m_synced)
        sync_file_range(m_file, m_synced, m_size - m_synced, SYNC_FILE_RANGE_WRITE);
    m_synced = m_size;
    m_kept = m_size;
}

void FilmFile::dropTorn()
{
    if (m_kept < m_size && ftruncate(m_file, m_kept) == 0)
        m_size = m_kept;
}
