#pragma once

#include "base/result.h"

#include <QDateTime>
#include <QStringList>

class Library;

// The captures older than `days` × 86400 seconds, sparing favourites, what is in a collection, and files
// whose date can't be read; none for days below 1. Main thread only.
QStringList outdatedCaptures(Library &library, int days, const QDateTime &now);
// Moves them to the Trash. The number that went.
int autoDelete(Library &library, int days, const QDateTime &now);
