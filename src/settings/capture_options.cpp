#include "settings/capture_options.h"

#include "base/json.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<const char *, bool CaptureOptions::*>, 10> kFields{{
    {"editor", &CaptureOptions::editor},
    {"clipboard", &CaptureOptions::clipboard},
    {"cursor", &CaptureOptions::cursor},
    {"delay", &CaptureOptions::delay},
    {"backdrop", &CaptureOptions::backdrop},
    {"systemAudio", &CaptureOptions::systemAudio},
    {"microphone", &CaptureOptions::microphone},
    {"showClicks", &CaptureOptions::showClicks},
    {"showKeys", &CaptureOptions::showKeys},
    {"webcam", &CaptureOptions::webcam},
}};

} // namespace

QJsonObject CaptureOptions::toJson() const
{
    QJsonObject object;
    for (const auto &[key, field] : kFields)
        object.insert(QLatin1String(key), this->*field);
    return object;
}

std::optional<CaptureOptions> CaptureOptions::fromJson(const QJsonObject &object)
{
    CaptureOptions options;
    for (const auto &[key, field] : kFields) {
        const auto value = Json::boolean(object, key);
        if (!value)
            return std::nullopt;
        options.*field = *value;
    }
    return options;
}
