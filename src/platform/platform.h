#pragma once

#include <memory>

class AccessibleElements;
class Cameras;
class CommandKeys;
class DesktopActivation;
class DesktopAppearance;
class DesktopParts;
class FaceEngine;
class HotKeys;
class Http;
class InputMonitors;
class LoginItem;
class Movies;
class Pasteboard;
class Paths;
class Permissions;
class PressPictures;
class PointerControl;
class ScreenFilms;
class ScreenPictures;
class Screens;
class Secrets;
class SoundOutput;
class SoundSources;
class ShortcutHolders;
class Sounds;
class SpeechEngine;
class TextEngine;
class Trash;
class Workspace;

// All ports of one session, owned in one place and handed down as references.
struct Platform {
    Platform();
    Platform(Platform &&) noexcept;
    Platform &operator=(Platform &&) noexcept;
    ~Platform();

    std::unique_ptr<Paths> paths;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<ScreenPictures> pictures;
    std::unique_ptr<ScreenFilms> films;
    std::unique_ptr<PointerControl> pointer;
    std::unique_ptr<PressPictures> presses;
    std::unique_ptr<AccessibleElements> elements;
    std::unique_ptr<HotKeys> hotKeys;
    std::unique_ptr<InputMonitors> inputMonitors;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<Trash> trash;
    std::unique_ptr<Secrets> secrets;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<Sounds> sounds;
    std::unique_ptr<SoundSources> soundSources;
    std::unique_ptr<SoundOutput> soundOutput;
    std::unique_ptr<Cameras> cameras;
    std::unique_ptr<Movies> movies;
    std::unique_ptr<Permissions> permissions;
    std::unique_ptr<SpeechEngine> speech;
    std::unique_ptr<TextEngine> text;
    std::unique_ptr<FaceEngine> faces;
    std::unique_ptr<Http> http;
    std::unique_ptr<DesktopActivation> activation;
    std::unique_ptr<DesktopAppearance> appearance;
    std::unique_ptr<DesktopParts> parts;
    std::unique_ptr<ShortcutHolders> shortcutHolders;
    std::unique_ptr<CommandKeys> commandKeys;
};
