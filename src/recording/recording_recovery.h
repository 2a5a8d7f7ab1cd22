#pragma once

#include "base/result.h"

#include <QString>
#include <QStringList>

class Movies;

// Films that broke off with the program, or with the machine: made whole at the next start.
namespace RecordingRecovery {

struct Outcome {
    QStringList films; // that are whole now
    QList<Error> errors;
};

// Blocks: for a worker thread. Films that another process is recording are left alone.
Outcome run(const QString &notes, Movies &movies);

// The notice about what was found; empty when nothing was.
QString notice(const Outcome &outcome);

} // namespace RecordingRecovery
