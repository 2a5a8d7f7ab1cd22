#pragma once

#include <QtGlobal>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

// Cuts sound at its pauses, so that a recogniser gets one utterance at a time. What is loud is told by its
// energy above that of the quietest moments of late.
class Utterances {
public:
    // `utter` gets an utterance with a little silence around it, and where it begins, in samples.
    Utterances(int rate, std::function<void(std::span<const qint16>, std::int64_t start)> utter);

    void add(std::span<const qint16> samples);
    void end();

private:
    void takeFrame();
    void utterNow();

    std::size_t m_frame; // samples in 10 ms
    std::function<void(std::span<const qint16>, std::int64_t)> m_utter;
    std::vector<qint16> m_samples; // from m_start on
    std::int64_t m_start = 0;
    std::size_t m_seen = 0; // of m_samples
    double m_floor = 0;     // loudness of silence, in decibels
    bool m_hasFloor = false;
    bool m_isSpeaking = false;
    int m_quiet = 0; // frames
    int m_loud = 0;
};
