#pragma once

#include "platform/media/movie_source.h"

#include <QByteArray>
#include <QSet>

// The pictures of a part of a film that another film may take over as they are, packet by packet: from the
// first picture in it that needs none before it. Only films whose pictures follow each other in the order in
// which they are shown; what comes before that picture has to be encoded anew, with parameter sets under an
// id of its own.
class PictureCopy {
public:
    // Null when all of the part has to be encoded anew.
    static std::unique_ptr<PictureCopy> of(const QString &path, double from, double to);

    double begin() const { return m_begin; } // seconds from the film's beginning
    const AVCodecParameters &parameters() const { return *m_source->pictures().codecpar; }
    // An id that none of the film's parameter sets has.
    int freeId() const;
    // The film's parameter sets and those of the encoder that makes what comes before.
    QByteArray parameterSetsWith(const QByteArray &encoders) const;
    // As they stand in this film: each unit with its length before it instead of a start code.
    static QByteArray withLengths(const QByteArray &units);

    // Null after the last one of the part; good until the next call.
    AVPacket *next();
    // Of the packet that next() gave.
    double time() const { return m_time; }
    // The film wasn't what it seemed: it can't be taken over after all.
    bool isBroken() const { return m_isBroken; }

private:
    PictureCopy() = default;
    bool isFit() const;
    bool findBegin(double from);
    bool read();

    std::unique_ptr<MovieSource> m_source;
    AvPacket m_packet;
    double m_begin = 0;
    double m_end = 0;
    double m_time = -1;
    bool m_isReady = false; // a packet was read that next() is to give
    bool m_isBroken = false;
};
