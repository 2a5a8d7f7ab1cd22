#pragma once

#include "base/result.h"

#include <QDateTime>

class Library;

// Moves captures older than `days` × 86400 seconds to the Trash, sparing favourites, what is in a collection,
// and files whose date can't be read. The number that went; days below 1 move nothing. Main thread only.
int autoDelete(Library &library, int days, const QDateTime &now);
