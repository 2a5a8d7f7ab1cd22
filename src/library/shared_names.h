#pragma once

#include <QString>

// The names of files, and of programs, are kept by the look at the folder, by the lists and by each part of
// the catalog; a text that is asked for here is the same memory for all of them. Texts that nobody else keeps
// any more are forgotten in time. For any thread.
QString sharedName(const QString &name);
