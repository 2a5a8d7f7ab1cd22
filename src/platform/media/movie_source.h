#pragma once

#include "platform/media/av.h"
#include "platform/movies.h"

// One open film file: what is in it, and its packets decoded.
class MovieSource {
public:
    // Which parts will be decoded.
    enum class Parts { Pictures, Sound, Both };

    // A sentence that says why a film can't be played.
    static Result<std::unique_ptr<MovieSource>> open(const QString &path, Parts parts);

    const MovieInfo &info() const { return m_info; }
    AVFormatContext &input() const { return *m_input; }
    AVStream &pictures() const { return *m_input->streams[m_pictures]; } // with pictures only
    bool hasPictures() const { return m_pictures >= 0; }
    const std::vector<int> &soundTracks() const { return m_soundTracks; } // indices of streams
    // Of the film within the times that its packets tell, in seconds.
    double start() const { return m_start; }
    // Quarter turns clockwise that a picture is to be shown with, 0 to 3.
    int turns() const { return m_turns; }

    struct Decoded {
        int stream = -1;          // -1 at the end
        AVFrame *frame = nullptr; // until the next call
        double time = 0;          // seconds from the film's beginning
    };
    // The next picture or piece of sound, in the order of the file; what is broken is passed over.
    Decoded next();
    // So that the next picture is one at or before that time.
    void seek(double seconds);

private:
    MovieSource() = default;
    Result<void> look(const QString &path, Parts parts);
    Result<void> openDecoder(int stream);
    void measureDuration();
    double timeOf(const AVFrame &frame, int stream);

    AvInput m_input;
    std::vector<AvCodec> m_decoders; // by stream; empty for what isn't decoded
    std::vector<double> m_nextTimes; // by stream: where one without a time belongs
    MovieInfo m_info;
    int m_pictures = -1;
    std::vector<int> m_soundTracks;
    int m_turns = 0;
    double m_start = 0; // of the file's own time
    AvPacket m_packet;
    AvFrame m_frame;
    int m_draining = -1; // stream whose decoder still holds frames, after the end of the file
    int m_pending = -1;  // stream whose decoder may have more of the last packet
    bool m_isAtEnd = false;
};
