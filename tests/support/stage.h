#pragma once

#include "base/notice.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_platform.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/temporary_folder.h"

// A machine of fakes with a folder and settings of its own.
struct Stage {
    TemporaryFolder home;
    FakePlatform machine{home.path()};
    FakeClock clock;
    NoticeBoard notices;
    Defaults defaults{{}};
    AppSettings prefs{defaults, machine.secrets, machine.loginItem, machine.paths, notices};
};
