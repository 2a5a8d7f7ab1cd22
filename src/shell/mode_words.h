#pragma once

#include "settings/capture_settings.h"

#include <QtGlobal>
#include <array>

// What panel and settings say of each capture mode. The texts are for ShellTexts::tr.
struct ModeWords {
    CaptureMode mode;
    const char *label;
    const char *detail;
    const char *symbol;       // in the mode picker
    const char *presetSymbol; // of a preset of that mode
};

inline constexpr std::array<ModeWords, 6> kModeWords{{
    {CaptureMode::AllInOne, QT_TRANSLATE_NOOP("ShellTexts", "Region"),
     QT_TRANSLATE_NOOP("ShellTexts", "Drag a region or click a window to capture it."), "rectangle.dashed",
     "rectangle.dashed"},
    {CaptureMode::Screen, QT_TRANSLATE_NOOP("ShellTexts", "Screen"),
     QT_TRANSLATE_NOOP("ShellTexts", "Capture the whole screen under the cursor."), "rectangle.inset.filled",
     "camera.fill"},
    {CaptureMode::Scrolling, QT_TRANSLATE_NOOP("ShellTexts", "Scroll"),
     QT_TRANSLATE_NOOP("ShellTexts",
                       "Select a scrollable area; Lumenpost scrolls and stitches it into one tall image."),
     "arrow.up.and.down.text.horizontal", "arrow.up.and.down.text.horizontal"},
    {CaptureMode::Video, QT_TRANSLATE_NOOP("ShellTexts", "Video"),
     QT_TRANSLATE_NOOP("ShellTexts", "Record a region, window or the full screen."), "record.circle",
     "record.circle"},
    {CaptureMode::Steps, QT_TRANSLATE_NOOP("ShellTexts", "Steps"),
     QT_TRANSLATE_NOOP("ShellTexts", "Click through a task and Lumenpost turns each click into a numbered "
                                     "step-by-step guide."),
     "list.number", "list.number"},
    {CaptureMode::Text, QT_TRANSLATE_NOOP("ShellTexts", "Text"),
     QT_TRANSLATE_NOOP("ShellTexts", "Select an area and copy its text to the clipboard."), "text.viewfinder",
     "text.viewfinder"},
}};

inline const ModeWords &modeWords(CaptureMode mode)
{
    return kModeWords[static_cast<size_t>(mode)];
}
