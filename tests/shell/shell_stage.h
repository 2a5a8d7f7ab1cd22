#pragma once

#include "base/clock.h"
#include "base/notice.h"
#include "fakes/fake_desktop_parts.h"
#include "fakes/fake_platform.h"
#include "library/library.h"
#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "shell/settings_parts.h"
#include "support/temporary_folder.h"

#include <QImage>
#include <QTest>
#include <gmock/gmock.h>

// A machine of fakes with settings, presets and a Library on it.
struct ShellWorld : testing::Test {
    SettingsParts settingsParts()
    {
        return {prefs, settings, presets, library, fakes.paths, fakes.permissions, parts, holders,
                fakes.inputMonitors, fakes.sounds, fakes.workspace, notices,
                [this](const KeyCombo &combo) { return problems.value(combo.display()); }};
    }
    QString addCapture(const QString &name)
    {
        library.ensureDirectory();
        QImage picture(40, 30, QImage::Format_RGB32);
        picture.fill(Qt::red);
        const QString path = library.folder() + '/' + name;
        EXPECT_TRUE(picture.save(path));
        return path;
    }

    TemporaryFolder folder;
    FakePlatform fakes{folder.path()};
    FakeDesktopParts parts;
    FakeShortcutHolders holders;
    Clock clock;
    NoticeBoard notices;
    Defaults defaults{{}};
    AppSettings prefs{defaults, fakes.secrets, fakes.loginItem, fakes.paths, notices};
    CaptureSettings settings{defaults};
    CapturePresetStore presets{defaults, settings};
    Library library{prefs, fakes.trash, clock};
    QHash<QString, QString> problems; // of registering, by the combination's display
};
