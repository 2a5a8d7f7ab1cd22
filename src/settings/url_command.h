#pragma once

#include "settings/capture_settings.h"

#include <QString>
#include <QUrl>
#include <optional>
#include <variant>

// What a command link asks for: "lumenpost://capture/region" and the like, by which scripts and other programs
// use this one. The earlier product's scheme "tidegrasp" is understood too.
namespace URLCommand {

struct Capture {
    CaptureMode mode;
    bool operator==(const Capture &) const = default;
};
// Names are compared without regard to case.
struct Preset {
    QString name;
    bool operator==(const Preset &) const = default;
};
struct Open {
    QUrl file;
    bool operator==(const Open &) const = default;
};
// A capture in the panel's current mode.
struct CapturePanelMode {
    bool operator==(const CapturePanelMode &) const = default;
};
// A capture in three seconds.
struct Delayed {
    bool operator==(const Delayed &) const = default;
};
// Starts or stops a recording.
struct Record {
    bool operator==(const Record &) const = default;
};
struct Library {
    bool operator==(const Library &) const = default;
};
struct PinLast {
    bool operator==(const PinLast &) const = default;
};

using Command = std::variant<Capture, Preset, Open, CapturePanelMode, Delayed, Record, Library, PinLast>;

// Whether the word is a link of ours, understood or not.
bool isLink(const QString &word);
// Nothing for a link that isn't understood.
std::optional<Command> parse(const QUrl &url);
// The link without its query, which may name files: what the log may hold.
QString withoutQuery(const QUrl &url);

} // namespace URLCommand
