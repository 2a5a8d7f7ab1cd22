#include "steps/drawn_label.h"

#include "services/sensitive_text.h"
#include "steps/step_captions.h"

#include <QStringList>

namespace DrawnLabel {

namespace {

// A drawn label stands in a control; what is larger in native pixels holds more than one.
constexpr int kLongest = 60;
constexpr QSize kLargestLabelled(480, 160);
constexpr QSize kSmallestLabelled(8, 8);
constexpr double kSureReading = 0.6;
// Half of a menu's row, with some of its neighbours, in points.
constexpr double kHalfRow = 16;
// Blanks wider than this many heights of the letters part a row's words from its shortcut.
constexpr double kColumnGap = 1.5;

bool mayHaveDrawnLabel(const AccessibleElement &found, QSize window)
{
    const ClickedElement &element = found.element;
    // What a list shows is what was chosen in it.
    const bool isValue = element.role == QLatin1String("AXPopUpButton");
    return element.role && !isValue && !StepCaptions::isTextInput(element) &&
           StepCaptions::label(element).isEmpty() && found.frame.width() <= kLargestLabelled.width() &&
           found.frame.height() <= kLargestLabelled.height() &&
           found.frame.width() >= kSmallestLabelled.width() &&
           found.frame.height() >= kSmallestLabelled.height() && found.frame.width() < window.width();
}

bool isWords(const QString &text)
{
    const auto letters = std::ranges::count_if(text, [](QChar sign) { return sign.isLetter(); });
    return letters >= 2 && letters * 2 >= text.size() && text.size() <= kLongest;
}

// What stands before the first wide gap, behind signs that are no words, such as a check mark.
QString firstColumn(const RecognizedLine &line, double aspect)
{
    const double gap = line.box.height() * kColumnGap / aspect; // a fraction of the width
    qsizetype begin = 0;
    qsizetype end = 0;
    double right = -1;
    for (qsizetype i = 0; i < std::min(line.text.size(), line.characters.size()); ++i) {
        const QRectF &box = line.characters[i];
        if (line.text[i].isSpace() || box.isEmpty())
            continue;
        if (right >= 0 && box.left() - right > gap) {
            if (isWords(line.text.mid(begin, end - begin)))
                break;
            begin = i;
        }
        right = box.right();
        end = i + 1;
    }
    return line.text.mid(begin, end - begin).trimmed();
}

} // namespace

std::optional<Place> placeOf(const std::optional<AccessibleElement> &element, const ClickTarget &target,
                             double scale, QSize window)
{
    if (element && element->element.role) {
        return mayHaveDrawnLabel(*element, window)
                   ? std::optional(Place{element->frame, std::nullopt, element->element})
                   : std::nullopt;
    }
    if (!target.isPopup)
        return std::nullopt;
    const int half = int(kHalfRow * scale);
    const QRect menu = target.visible.isEmpty() ? target.window : target.visible;
    const QRect row = QRect(menu.left(), target.at.y() - half, menu.width(), 2 * half) & menu;
    if (row.isEmpty())
        return std::nullopt;
    ClickedElement entry;
    entry.role = QStringLiteral("AXMenuItem");
    return Place{row, target.at.y() - row.top(), entry};
}

QString wordsOf(const QList<RecognizedLine> &lines, const Place &place)
{
    QList<RecognizedLine> read;
    for (const RecognizedLine &line : lines) {
        const double at = place.row ? 1 - double(*place.row) / place.rect.height() : line.box.center().y();
        if (line.confidence >= kSureReading && at >= line.box.top() && at <= line.box.bottom())
            read.append(line);
    }
    QString text;
    if (place.row) {
        // A mark, the words and the shortcut may have come as lines of their own.
        std::ranges::sort(read, {}, [](const RecognizedLine &line) { return line.box.left(); });
        const double aspect = double(place.rect.width()) / std::max(place.rect.height(), 1);
        for (qsizetype i = 0; i < read.size() && !isWords(text); ++i)
            text = firstColumn(read[i], aspect);
    } else {
        QStringList texts;
        for (const RecognizedLine &line : read)
            texts.append(line.text.trimmed());
        text = texts.join(QLatin1Char(' '));
    }
    return isWords(text) && SensitiveText::matchesInReadLine(text).isEmpty() ? text : QString();
}

} // namespace DrawnLabel
