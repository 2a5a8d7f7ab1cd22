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

// What a picture is read in: locale names such as "de_DE" or names of language data such as "deu", the
// preferred first.
struct TextLanguages {
    enum class Others {
        WhereSeen, // lines in another language whose data is installed are read in that
        Never,     // and a preferred one without data is an error
    };
    TextLanguages() = default;
    TextLanguages(std::initializer_list<QString> names) : preferred(names) {}
    TextLanguages(QStringList names, Others which = Others::WhereSeen)
        : preferred(std::move(names)), others(which)
    {}

    QStringList preferred;
    Others others = Others::WhereSeen;
};

// Recognition of text in pictures, on this machine.
class TextEngine {
public:
    virtual ~TextEngine() = default;
    // Lines in reading order. Error::Kind::Unavailable when there is no language data at all.
    virtual QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                             const TextLanguages &languages) = 0;
};
