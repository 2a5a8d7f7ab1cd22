#pragma once

#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <functional>

class Library;

// Looks on a worker for captures older than `days` × 86400 seconds, sparing favourites, what is in a
// collection, and files whose date can't be read; there are none for days below 1. Main thread only.
void whenOutdated(Library &library, int days, const QDateTime &now, QObject *owner,
                  std::function<void(const QStringList &)> callback);
// Moves them to the Trash at once. The number that went.
int autoDelete(Library &library, int days, const QDateTime &now);
