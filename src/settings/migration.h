#pragma once

#include "base/result.h"

#include <QFuture>

class Defaults;
class Paths;
class Secrets;

// Carries over what a user had when this program was published under another name.
namespace Migration {

inline constexpr const char *kOldService = "com.oakfenrow.tidegrasp";
inline constexpr const char *kDoneKey = "migratedFromTidegrasp";

struct Outcome {
    bool hasMigrated = false; // there was something to carry over
    // The API key takes as long as the store of passwords does. Ends without an event loop too.
    QFuture<Result<void>> key;
};

// Settings, API key, the folder of captures and its hidden data, once for each user. What this program has
// already is never overwritten; a folder that can't be moved stays where it is, and stays in use. To be called
// before the settings are read. Main thread only; `secrets` outlives the work.
Outcome runIfNeeded(Defaults &defaults, Secrets &secrets, const Paths &paths);

// Whether that would carry something over.
bool isDue(const Defaults &defaults, const Paths &paths);

} // namespace Migration
