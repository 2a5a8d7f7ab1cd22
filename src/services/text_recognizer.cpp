#include "services/text_recognizer.h"

#include "document/opaque.h"
#include "platform/face_engine.h"
#include "services/sensitive_lines.h"

#include <QLocale>

namespace {

// Wide enough to hide the letters: a letter's box may lack some pixels of its ink, and some fonts reach
// farther up and down than the usual ones whose lines the boxes stand for.
QRectF padded(const QRectF &box, QSize imageSize)
{
    constexpr double kLetterBoxError = 2;
    const double height = box.height() * imageSize.height();
    const double dx = std::max(kLetterBoxError, height / 12) / std::max(imageSize.width(), 1);
    const double dy = std::max(kLetterBoxError, height / 10) / std::max(imageSize.height(), 1);
    return box.adjusted(-dx, -dy, dx, dy);
}

// Padding that stays off the lines above and below.
QRectF keptOffNeighbours(QRectF box, const QRectF &own, const QList<RecognizedLine> &lines)
{
    // Boxes count from below: the bottom of a rectangle is its upper edge.
    for (const RecognizedLine &line : lines) {
        if (line.box.left() >= box.right() || line.box.right() <= box.left())
            continue;
        if (line.box.center().y() > own.bottom())
            box.setBottom(std::min(box.bottom(), std::max(own.bottom(), line.box.top())));
        else if (line.box.center().y() < own.top())
            box.setTop(std::max(box.top(), std::min(own.top(), line.box.bottom())));
    }
    return box;
}

template <typename From, typename Function>
auto mapped(QFuture<Result<From>> future, Function function)
{
    using To = std::invoke_result_t<Function, const From &>;
    return future.then(QtFuture::Launch::Sync,
                       [function = std::move(function)](Result<From> result) -> Result<To> {
                           if (!result)
                               return std::unexpected(result.error());
                           return function(*result);
                       });
}

} // namespace

QString textOf(const QList<RecognizedLine> &lines)
{
    QStringList texts;
    for (const RecognizedLine &line : lines)
        texts.append(line.text);
    return texts.join('\n');
}

QList<QRectF> boxesOf(const QList<RecognizedLine> &lines, TextRecognizer::Boxes which, QSize imageSize,
                      SensitiveText::FurtherKinds further)
{
    QList<QRectF> boxes;
    switch (which) {
    case TextRecognizer::Boxes::AllText:
        for (const RecognizedLine &line : lines)
            boxes.append(line.box);
        break;
    case TextRecognizer::Boxes::Sensitive:
        const auto matches = SensitiveText::matchesInReadLines(lines, further);
        for (qsizetype i = 0; i < lines.size(); ++i)
            for (const auto &match : matches[i]) {
                const QRectF box = lines[i].boxOf(match.start, match.length);
                boxes.append(keptOffNeighbours(padded(box, imageSize), box, lines));
            }
        break;
    }
    return boxes;
}

TextRecognizer::TextRecognizer(TextEngine &text, FaceEngine &faces, TextLanguages languages)
    : m_text(text), m_faces(faces), m_languages(std::move(languages))
{}

QStringList TextRecognizer::userLanguages()
{
    QStringList languages{QLocale::system().name()};
    languages += QLocale::system().uiLanguages();
    languages.removeDuplicates();
    return languages;
}

QFuture<Result<QList<RecognizedLine>>> TextRecognizer::lines(const QImage &image)
{
    return m_text.recognize(opaque(image), m_languages);
}

QFuture<Result<QString>> TextRecognizer::text(const QImage &image)
{
    return mapped(lines(image), textOf);
}

QFuture<Result<QList<QRectF>>> TextRecognizer::boxes(const QImage &image, Boxes which)
{
    return mapped(lines(image),
                  [which, size = image.size(), further = m_further](const QList<RecognizedLine> &lines) {
                      return boxesOf(lines, which, size, further);
                  });
}

QFuture<Result<QList<QRectF>>> TextRecognizer::faces(const QImage &image)
{
    return mapped(m_faces.detect(image), [](const QList<QRectF> &faces) {
        QList<QRectF> grown;
        for (const QRectF &face : faces) {
            const double dx = face.width() / 10;
            const double dy = face.height() / 10;
            grown.append(face.adjusted(-dx, -dy, dx, dy));
        }
        return grown;
    });
}
