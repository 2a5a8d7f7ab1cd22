#pragma once

#include <memory>

class Cameras;
class Movies;
class ScreenCasts;
class SoundOutput;
class SoundSources;
class SpeechEngine;

// What reads and writes films, hears and plays sound, behind light objects: the module with the libraries
// that they need is opened at their first use. Without the module each use fails with a sentence that says
// so.
std::unique_ptr<Movies> makeMovies();
std::unique_ptr<SoundSources> makeSoundSources();
std::unique_ptr<SoundOutput> makeSoundOutput();
// What takes in the streams of desktops that give their screens as such.
std::unique_ptr<ScreenCasts> makeScreenCasts();
// The same for cameras and speech, which are modules of their own.
std::unique_ptr<Cameras> makeCameras();
std::unique_ptr<SpeechEngine> makeSpeechEngine();
