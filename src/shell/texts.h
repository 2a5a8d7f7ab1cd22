#pragma once

#include <QCoreApplication>

// What this module says to a person, under one name for translators.
struct ShellTexts {
    Q_DECLARE_TR_FUNCTIONS(ShellTexts)
};
