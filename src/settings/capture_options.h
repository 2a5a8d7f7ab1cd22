#pragma once

#include <QJsonObject>
#include <optional>

// The options frozen for one capture; presets store them.
struct CaptureOptions {
    bool editor = true;      // open the editor afterwards
    bool clipboard = false;  // copy to the clipboard
    bool cursor = false;     // include the pointer
    bool delay = false;      // use the five-second delay
    bool backdrop = false;   // put a backdrop behind the capture
    bool systemAudio = true; // record system audio
    bool microphone = false; // record the microphone
    bool showClicks = false; // show click ripples
    bool showKeys = false;   // show key badges
    bool webcam = false;     // show the webcam bubble

    bool operator==(const CaptureOptions &) const = default;

    QJsonObject toJson() const;
    // Strict: nothing unless all ten keys are there as booleans.
    static std::optional<CaptureOptions> fromJson(const QJsonObject &object);
};
