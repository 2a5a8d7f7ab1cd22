#pragma once

#include "base/result.h"

#include <QFuture>
#include <QImage>
#include <QList>
#include <QRectF>
#include <QString>

// Boxes are fractions of the image, origin at the lower left.
struct RecognizedLine {
    QString text;
    QRectF box;
    QList<QRectF> characters; // one box a UTF-16 code unit of `text`; empty boxes for blanks
    double confidence = 0;    // 0 to 1

    // The box around the characters [from, from + length); the line's box when they have none.
    QRectF boxOf(qsizetype from, qsizetype length) const;
};

// Recognition of text in pictures, on this machine.
class TextEngine {
public:
    virtual ~TextEngine() = default;
    // Lines in reading order. `languages` are locale names such as "de_DE", the preferred first; those
    // without data are skipped. Error::Kind::Unavailable when there is no language data at all.
    virtual QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                             const QStringList &languages) = 0;
};
