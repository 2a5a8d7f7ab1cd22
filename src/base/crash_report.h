#pragma once

#include <QString>

// What is left of a crash: a text file with the signal and the calls that led there, for the user to send in.
namespace CrashReport {

// The folder of the reports among the program's state.
QString folderIn(const QString &state);

// From now on a fatal signal writes "Lumenpost <start of the session>.txt" there and then takes its usual course,
// so that the desktop's own collector of crashes still sees it. Keeps the newest twenty. For the main thread, once.
void install(const QString &folder, const QString &version);

} // namespace CrashReport
