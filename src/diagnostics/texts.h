#pragma once

#include <QCoreApplication>

// The context of this module's translated texts.
struct DiagnosticsTexts {
    Q_DECLARE_TR_FUNCTIONS(DiagnosticsTexts)
};
