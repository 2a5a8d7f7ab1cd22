#pragma once

#include "steps/guide_step.h"

class QApplication;

void print(const QString &line);
// Of pages on disk; STEPS of them, WIDTH pixels wide. Nothing when the disk is full.
std::optional<Guide> longGuide(const QString &folder);
qint64 mostMemory(); // of this process so far, in MB
int tellReview(QApplication &application);
