#pragma once

#include <QCoreApplication>

// What this module says to a person, under one name for translators.
struct StepsTexts {
    Q_DECLARE_TR_FUNCTIONS(StepsTexts)
};
