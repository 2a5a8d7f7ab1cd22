#pragma once

#include "base/result.h"
#include "platform/text_engine.h"
#include "services/sensitive_text.h"

#include <QFuture>
#include <QImage>
#include <QList>
#include <QRectF>
#include <QStringList>

class FaceEngine;

// Reads text and faces out of pictures, on this machine. Boxes are fractions of the picture with the origin
// at the lower left; they are not clipped. Works on threads of its own; any number of pictures may be under
// way.
class TextRecognizer {
public:
    enum class Boxes {
        AllText,   // one box a line
        Sensitive, // one box for each private stretch of a line, wide enough to hide it
    };

    // Both outlive the recogniser.
    TextRecognizer(TextEngine &text, FaceEngine &faces, TextLanguages languages = userLanguages());

    // The languages of the user's locale.
    static QStringList userLanguages();

    // Which kinds beyond the ten patterns are private from now on; all at first.
    void setFurtherKinds(SensitiveText::FurtherKinds kinds) { m_further = kinds; }

    QFuture<Result<QList<RecognizedLine>>> lines(const QImage &image);
    // The lines joined by line feeds; empty for a picture without text.
    QFuture<Result<QString>> text(const QImage &image);
    QFuture<Result<QList<QRectF>>> boxes(const QImage &image, Boxes which);
    // Each face grown by a tenth of its size on every side, so that hair and chin are in it.
    QFuture<Result<QList<QRectF>>> faces(const QImage &image);

private:
    TextEngine &m_text;
    FaceEngine &m_faces;
    TextLanguages m_languages;
    SensitiveText::FurtherKinds m_further = SensitiveText::kAllFurtherKinds;
};

QString textOf(const QList<RecognizedLine> &lines);
// `imageSize` in pixels: boxes of private text are padded by what a letter's box may err.
QList<QRectF> boxesOf(const QList<RecognizedLine> &lines, TextRecognizer::Boxes which, QSize imageSize,
                      SensitiveText::FurtherKinds further = SensitiveText::kAllFurtherKinds);
