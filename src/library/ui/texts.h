#pragma once

#include <QCoreApplication>

// What this module says to a person, under one name for translators.
struct LibraryUiTexts {
    Q_DECLARE_TR_FUNCTIONS(LibraryUiTexts)
};
