#pragma once

#include "fakes/fake_desktop_parts.h"
#include "library/library.h"
#include "settings/capture_preset_store.h"
#include "settings/capture_settings.h"
#include "shell/settings_parts.h"
#include "support/stage.h"

// A Library of pictures and presets, and what the panel and the settings are made of.
struct ShellStage : Stage {
    SettingsParts settingsParts()
    {
        return {prefs,
                settings,
                presets,
                library,
                machine.paths,
                machine.permissions,
                parts,
                holders,
                machine.inputMonitors,
                machine.sounds,
                machine.workspace,
                notices,
                [this](const KeyCombo &combo) { return problems.value(combo.display()); }};
    }
    // The path of a new picture in the Library; empty if it can't be written.
    QString addCapture(const QString &name, const QSize &size = {40, 30}, const QColor &color = Qt::red)
    {
        library.ensureDirectory();
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(color);
        const QString path = library.folder() + '/' + name;
        return picture.save(path) ? path : QString();
    }

    FakeDesktopParts parts;
    FakeShortcutHolders holders;
    CaptureSettings settings{defaults};
    CapturePresetStore presets{defaults, settings};
    Library library{prefs, machine.trash, clock};
    QHash<QString, QString> problems; // of registering, by the combination's display
};
