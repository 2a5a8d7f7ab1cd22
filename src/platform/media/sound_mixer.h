#pragma once

#include "platform/media/av.h"

#include <functional>
#include <map>
#include <span>
#include <vector>

// Adds the sounds of several tracks, each frame at its time, and gives them on as one.
class SoundMixer {
public:
    // `receive` gets interleaved samples without gaps, from the time 0 on; false from it ends the work.
    SoundMixer(int rate, int channels, std::function<bool(std::span<const float>)> receive);

    // A decoded frame of a track whose first sample belongs at `time` (seconds); what lies before 0 or from
    // `end` on is dropped. False when the receiver has had enough.
    bool add(int track, const AVFrame &frame, double time, double end);
    // Nothing more comes of the track.
    void finish(int track);
    // All tracks are to last until `end`; gives the rest on.
    bool end(double end);

private:
    struct Track {
        AvResampler resampler;
        std::int64_t next = 0; // sample after the last
        bool isDone = false;
        int rate = 0;
        int format = -1;
        int channels = 0;
    };

    AVFrame *resampled(Track &track, const AVFrame &frame);
    bool give(std::int64_t until);

    int m_rate;
    int m_channels;
    std::function<bool(std::span<const float>)> m_receive;
    std::map<int, Track> m_tracks;
    std::vector<float> m_mix; // from m_given on
    std::int64_t m_given = 0; // samples
    AvFrame m_converted;
};
