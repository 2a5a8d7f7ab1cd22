#pragma once

// Puts the program's words into the user's language: English as a Linux user says it, and over it the first
// language of the desktop that there is a translation for. LUMENPOST_LANGUAGE names another one. Call once,
// after the application object was made.
void installTranslations();

// Whether the user's language needs no more than the words as they stand in the source.
bool speaksEnglish();
