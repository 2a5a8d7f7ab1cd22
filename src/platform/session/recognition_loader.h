#pragma once

#include <memory>

class FaceEngine;
class TextEngine;

// The recognisers behind light objects: the module with the libraries that they need is opened at their first
// use. Without the module each use fails with a sentence that says so.
std::unique_ptr<TextEngine> makeTextEngine();
std::unique_ptr<FaceEngine> makeFaceEngine();
