#pragma once

#include "base/result.h"
#include "library/batch/progress.h"

#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class Paths;

// Look-alike pictures, found by a difference hash. Callable from any thread.
namespace Duplicates {

// Bits in which the hashes of look-alikes differ at most.
constexpr int kLikeness = 4;

// 64 bits: whether each pixel of 9 × 8 is lighter than its right neighbour, row by row, the first in the top
// bit. Nothing for no picture.
std::optional<quint64> dHash(const QImage &image);

struct Hashed {
    QString path;
    quint64 hash = 0;
};
// Groups of at least two, the largest first, those of equal size in the order of their first files; within a
// group the files in the given order. Two files whose hashes differ in at most `threshold` bits share a
// group, and so do chains of such files.
QList<QStringList> groups(const QList<Hashed> &files, int threshold = kLikeness);

// Hashes all images among the files (films are left out, and so is what can't be read) and groups them.
// What was found is kept in `cacheFile` with each file's size and date, so that the next scan reads only what
// is new. An empty name keeps nothing. Fails only by being cancelled.
Result<QList<QStringList>> scan(const QStringList &paths, const QString &cacheFile,
                                const Progress &progress = {});

// Where the program keeps the hashes: among its caches, which nobody synchronises.
QString cacheFile(const Paths &paths);

// Sorts each group by modification date; one that can't be read counts as the oldest.
void sortNewestFirst(QList<QStringList> &groups);

} // namespace Duplicates
