#include "platform/media/picture_copy.h"

#include <QtEndian>

namespace {

constexpr double kSame = 1e-6;
constexpr int kKeyPicture = 5; // kinds of units
constexpr int kSequenceSet = 7;
constexpr int kPictureSet = 8;
constexpr qsizetype kSetsBegin = 5; // in the film's header of parameter sets
constexpr int kMostSets = 31;

int kindOf(const QByteArray &unit)
{
    return unit.isEmpty() ? -1 : unit[0] & 0x1f;
}

// The id of a parameter set: an Exp-Golomb number, after three bytes in a set for sequences.
int idOf(const QByteArray &unit)
{
    qsizetype bit = (kindOf(unit) == kSequenceSet ? 4 : 1) * qsizetype(8);
    const auto next = [&] {
        const int value = bit / 8 < unit.size() ? unit[bit / 8] >> (7 - bit % 8) & 1 : 1;
        ++bit;
        return value;
    };
    int zeros = 0;
    while (zeros < 8 && next() == 0)
        ++zeros;
    int value = 1;
    for (int i = 0; i < zeros; ++i)
        value = value * 2 + next();
    return value - 1;
}

// Between start codes.
QList<QByteArray> unitsOf(const QByteArray &bytes)
{
    static const QByteArray kCode("\0\0\1", 3);
    QList<QByteArray> units;
    qsizetype at = bytes.indexOf(kCode);
    while (at >= 0) {
        const qsizetype begin = at + kCode.size();
        at = bytes.indexOf(kCode, begin);
        qsizetype end = at < 0 ? bytes.size() : at;
        while (end > begin && at >= 0 && bytes[end - 1] == 0)
            --end;
        units.append(bytes.mid(begin, end - begin));
    }
    return units;
}

struct Sets {
    QList<QByteArray> sequences;
    QList<QByteArray> pictures;
    QByteArray rest; // after them
};

std::optional<Sets> setsIn(const QByteArray &header)
{
    Sets sets;
    qsizetype at = kSetsBegin;
    const auto take = [&](QList<QByteArray> &list, int mask) {
        if (at >= header.size())
            return false;
        const int count = header[at++] & mask;
        for (int i = 0; i < count; ++i) {
            if (at + 2 > header.size())
                return false;
            const auto length = qFromBigEndian<quint16>(header.constData() + at);
            at += 2;
            if (length == 0 || at + length > header.size())
                return false;
            list.append(header.mid(at, length));
            at += length;
        }
        return true;
    };
    if (!take(sets.sequences, 0x1f) || !take(sets.pictures, 0xff))
        return std::nullopt;
    sets.rest = header.mid(at);
    return sets;
}

QByteArray headerOf(const AVCodecParameters &parameters)
{
    return {reinterpret_cast<const char *>(parameters.extradata), parameters.extradata_size};
}

template <typename Number>
void append(QByteArray &bytes, Number number)
{
    const Number big = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char *>(&big), sizeof big);
}

// Units with lengths of four bytes before them.
bool holdsKeyPicture(const AVPacket &packet)
{
    for (qsizetype at = 0; at + 5 <= packet.size;) {
        if ((packet.data[at + 4] & 0x1f) == kKeyPicture)
            return true;
        at += 4 + qsizetype(qFromBigEndian<quint32>(packet.data + at));
    }
    return false;
}

} // namespace

std::unique_ptr<PictureCopy> PictureCopy::of(const QString &path, double from, double to)
{
    auto source = MovieSource::open(path, MovieSource::Parts::Pictures);
    if (!source)
        return nullptr;
    std::unique_ptr<PictureCopy> copy(new PictureCopy);
    copy->m_source = std::move(*source);
    copy->m_packet.reset(av_packet_alloc());
    copy->m_end = to;
    if (!copy->isFit() || !copy->findBegin(from))
        return nullptr;
    return copy;
}

bool PictureCopy::isFit() const
{
    const AVCodecParameters &film = parameters();
    const QByteArray header = headerOf(film);
    if (film.codec_id != AV_CODEC_ID_H264 || film.video_delay != 0 || film.format != AV_PIX_FMT_YUV420P ||
        film.width % 2 != 0 || film.height % 2 != 0 ||
        (film.field_order != AV_FIELD_PROGRESSIVE && film.field_order != AV_FIELD_UNKNOWN))
        return false;
    constexpr int kLengthOfFour = 3;
    if (header.size() <= kSetsBegin || header[0] != 1 || (header[4] & 3) != kLengthOfFour)
        return false;
    const auto sets = setsIn(header);
    return sets && !sets->sequences.isEmpty() && sets->sequences.size() < kMostSets;
}

bool PictureCopy::findBegin(double from)
{
    m_source->seek(from);
    while (read()) {
        const bool isKey = (m_packet->flags & AV_PKT_FLAG_KEY) != 0 && holdsKeyPicture(*m_packet);
        if (isKey && m_time >= from - kSame) {
            m_begin = std::max(m_time, from);
            m_isReady = true;
            return m_time < m_end - kSame;
        }
    }
    return false;
}

bool PictureCopy::read()
{
    const AVStream &stream = m_source->pictures();
    while (av_read_frame(&m_source->input(), m_packet.get()) >= 0) {
        if (m_packet->stream_index == stream.index) {
            const double before = m_time;
            m_time = double(m_packet->pts) * av_q2d(stream.time_base) - m_source->start();
            m_isBroken |=
                m_packet->pts == AV_NOPTS_VALUE || m_packet->dts != m_packet->pts || m_time <= before;
            return !m_isBroken;
        }
        av_packet_unref(m_packet.get());
    }
    return false;
}

AVPacket *PictureCopy::next()
{
    if (!std::exchange(m_isReady, false)) {
        av_packet_unref(m_packet.get());
        if (!read())
            return nullptr;
    }
    return m_time < m_end - kSame ? m_packet.get() : nullptr;
}

int PictureCopy::freeId() const
{
    const Sets sets = setsIn(headerOf(parameters())).value_or(Sets());
    QSet<int> taken;
    for (const QByteArray &unit : sets.sequences + sets.pictures)
        taken.insert(idOf(unit));
    int id = 0;
    while (taken.contains(id))
        ++id;
    return id;
}

QByteArray PictureCopy::parameterSetsWith(const QByteArray &encoders) const
{
    QByteArray header = headerOf(parameters());
    Sets sets = setsIn(header).value_or(Sets());
    for (const QByteArray &unit : unitsOf(encoders)) {
        if (kindOf(unit) == kSequenceSet) {
            sets.sequences.append(unit);
            header[3] = char(std::max(quint8(header[3]), quint8(unit[3]))); // the level that both need
        } else if (kindOf(unit) == kPictureSet) {
            sets.pictures.append(unit);
        }
    }
    QByteArray merged = header.left(kSetsBegin);
    merged.append(char(0xe0 | sets.sequences.size()));
    const auto put = [&merged](const QList<QByteArray> &list) {
        for (const QByteArray &unit : list) {
            append(merged, quint16(unit.size()));
            merged += unit;
        }
    };
    put(sets.sequences);
    merged.append(char(sets.pictures.size()));
    put(sets.pictures);
    return merged + sets.rest;
}

QByteArray PictureCopy::withLengths(const QByteArray &units)
{
    QByteArray result;
    for (const QByteArray &unit : unitsOf(units)) {
        append(result, quint32(unit.size()));
        result += unit;
    }
    return result;
}
