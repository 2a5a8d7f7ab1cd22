#include "platform/media/media_movies.h"
#include "platform/media/pipewire_casts.h"
#include "platform/media/pulse_output.h"
#include "platform/media/pulse_sources.h"

extern "C" {
#include <libavutil/log.h>
}

// The entries of the loadable module.
extern "C" Q_DECL_EXPORT Movies *lumenpost_movies()
{
    av_log_set_level(AV_LOG_QUIET); // its remarks would mix with our own words
    return new MediaMovies;
}

extern "C" Q_DECL_EXPORT SoundSources *lumenpost_sound_sources()
{
    return new PulseSources;
}

extern "C" Q_DECL_EXPORT SoundOutput *lumenpost_sound_output()
{
    return new PulseOutput;
}

extern "C" Q_DECL_EXPORT ScreenCasts *lumenpost_screen_casts()
{
    return new PipeWireCasts;
}
