#pragma once

#include "fakes/fake_desktop.h"
#include "fakes/fake_films.h"
#include "fakes/fake_hot_keys.h"
#include "fakes/fake_input_monitor.h"
#include "fakes/fake_presses.h"
#include "fakes/fake_recognition.h"
#include "fakes/fake_screens.h"
#include "platform/platform.h"

// A whole machine of fakes, its folders under `folder`. The references stay good as long as `platform`, which
// may be moved away.
class FakePlatform {
    template <typename Fake, typename Port, typename... Arguments>
    static Fake &make(std::unique_ptr<Port> &port, Arguments &&...arguments)
    {
        auto fake = std::make_unique<Fake>(std::forward<Arguments>(arguments)...);
        Fake &reference = *fake;
        port = std::move(fake);
        return reference;
    }

public:
    explicit FakePlatform(const QString &folder)
        : paths(make<FakePaths>(platform.paths, folder)),
          screens(make<FakeScreens>(platform.screens)),
          pictures(make<FakeScreenPictures>(platform.pictures)),
          films(make<FakeScreenFilms>(platform.films)),
          soundSources(make<FakeSoundSources>(platform.soundSources)),
          soundOutput(make<FakeSoundOutput>(platform.soundOutput)),
          cameras(make<FakeCameras>(platform.cameras)),
          movies(make<FakeMovies>(platform.movies)),
          speech(make<FakeSpeechEngine>(platform.speech)),
          pointer(make<FakePointerControl>(platform.pointer)),
          hotKeys(make<FakeHotKeys>(platform.hotKeys)),
          inputMonitors(make<FakeInputMonitors>(platform.inputMonitors)),
          presses(make<FakePressPictures>(platform.presses)),
          elements(make<FakeAccessibleElements>(platform.elements)),
          pasteboard(make<FakePasteboard>(platform.pasteboard)),
          workspace(make<FakeWorkspace>(platform.workspace)),
          trash(make<FakeTrash>(platform.trash, folder + QStringLiteral("/Trash"))),
          secrets(make<FakeSecrets>(platform.secrets)),
          loginItem(make<FakeLoginItem>(platform.loginItem)),
          sounds(make<FakeSounds>(platform.sounds)),
          permissions(make<FakePermissions>(platform.permissions)),
          text(make<FakeTextEngine>(platform.text)),
          faces(make<FakeFaceEngine>(platform.faces)),
          http(make<FakeHttp>(platform.http))
    {}

    Platform platform;
    FakePaths &paths;
    FakeScreens &screens;
    FakeScreenPictures &pictures;
    FakeScreenFilms &films;
    FakeSoundSources &soundSources;
    FakeSoundOutput &soundOutput;
    FakeCameras &cameras;
    FakeMovies &movies;
    FakeSpeechEngine &speech;
    FakePointerControl &pointer;
    FakeHotKeys &hotKeys;
    FakeInputMonitors &inputMonitors;
    FakePressPictures &presses;
    FakeAccessibleElements &elements;
    FakePasteboard &pasteboard;
    FakeWorkspace &workspace;
    FakeTrash &trash;
    FakeSecrets &secrets;
    FakeLoginItem &loginItem;
    FakeSounds &sounds;
    FakePermissions &permissions;
    FakeTextEngine &text;
    FakeFaceEngine &faces;
    FakeHttp &http;
};
