#include "recording/recording_recovery.h"

#include "base/log.h"
#include "recording/recording_place.h"
#include "recording/texts.h"

#include <QFileInfo>

RecordingRecovery::Outcome RecordingRecovery::run(const QString &notes, Movies &movies)
{
    Outcome outcome;
    const auto places = RecordingPlace::abandoned(notes);
    for (const auto &place : places) {
        const auto path = place->finish(movies, std::nullopt);
        if (path) {
            Log::info(QStringLiteral("Recording recovered: %1").arg(QFileInfo(*path).fileName()));
            outcome.films.append(*path);
        } else {
            Log::error(QStringLiteral("Recording could not be recovered: %1").arg(place->growing()),
                       path.error());
            outcome.errors.append(path.error());
        }
    }
    return outcome;
}

QString RecordingRecovery::notice(const Outcome &outcome)
{
    if (outcome.films.isEmpty())
        return {};
    return RecordingTexts::tr("%n recording(s) that broke off are in your Library now", nullptr,
                              int(outcome.films.size()));
}
