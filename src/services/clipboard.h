#pragma once

#include "base/async.h"

#include <QImage>
#include <QObject>

class Pasteboard;

// Puts pictures and files on the clipboard. Main thread only; encoding runs beside it. The last call wins,
// also when an earlier picture is still being encoded.
class Clipboard : public QObject {
    Q_OBJECT
public:
    explicit Clipboard(Pasteboard &pasteboard);

    // As PNG and TIFF, best first; a flavour whose encoding fails is left out. Finished once the clipboard
    // has it; Error::Kind::Cancelled when something else was copied meanwhile.
    QFuture<Result<void>> copy(const QImage &image);
    // The file itself, so that a paste elsewhere gets it.
    void copyFile(const QString &path);
    void copyText(const QString &text);

private:
    Pasteboard &m_pasteboard;
    int m_generation = 0; // counts copies
};
