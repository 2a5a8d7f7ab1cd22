#pragma once

#include <QCoreApplication>

// What this module says to a person, under one name for translators.
struct StepsUiTexts {
    Q_DECLARE_TR_FUNCTIONS(StepsUiTexts)
};
