#include "editor/annotation_description.h"
#include "support/printers.h"

#include <QSet>
#include <gmock/gmock.h>

namespace {

Annotation object(ToolKind kind, QColor color = QColor(255, 59, 48))
{
    Annotation made;
    made.kind = kind;
    made.color = color;
    made.end = {30, 40};
    return made;
}

} // namespace

TEST(AnnotationDescription, TellsKindAndColour)
{
    EXPECT_EQ(describe(object(ToolKind::Arrow)), "red arrow");
    EXPECT_EQ(describe(object(ToolKind::Rectangle, QColor(0, 122, 255))), "blue box");
    EXPECT_EQ(describe(object(ToolKind::Measure)), "Measurement 50 px  (30 × 40)");
    Annotation step = object(ToolKind::Step, QColor(40, 205, 65));
    step.number = 28;
    EXPECT_EQ(describe(step), "Step 28, green");
    step.style = 1;
    EXPECT_EQ(describe(step), "Step AB, green");
    Annotation stamp = object(ToolKind::Stamp);
    stamp.text = "key:⌘";
    EXPECT_EQ(describe(stamp), "Stamp ⌘ key");
    for (const QStringList &values : {StampLibrary::symbols(), StampLibrary::emoji()}) {
        QSet<QString> words;
        for (const QString &value : values) {
            stamp.text = value;
            words.insert(describe(stamp));
            EXPECT_FALSE(describe(stamp).contains(value))
                << "words, not the name of a drawing: " << value.toStdString();
        }
        EXPECT_EQ(words.size(), values.size()) << "no two stamps share their words";
    }
    stamp.text = "sym:checkmark.circle.fill";
    EXPECT_EQ(statusWords(stamp), "Stamp: check mark");
    EXPECT_EQ(statusWords(object(ToolKind::Blur)), "Blur");
    Annotation callout = object(ToolKind::Callout);
    EXPECT_EQ(describe(callout), "Callout: empty");
    callout.text = "Due in March";
    EXPECT_EQ(describe(callout), "Callout: Due in March");
}

TEST(AnnotationDescription, NamesColoursAsPeopleDo)
{
    EXPECT_EQ(spokenColor(Qt::black), "black");
    EXPECT_EQ(spokenColor(Qt::white), "white");
    EXPECT_EQ(spokenColor(QColor(128, 128, 128)), "gray");
    EXPECT_EQ(spokenColor(QColor(255, 149, 0)), "orange");
    EXPECT_EQ(spokenColor(QColor(255, 204, 0)), "yellow");
    EXPECT_EQ(spokenColor(QColor(175, 82, 222)), "purple");
    EXPECT_EQ(spokenColor(QColor(115, 97, 250)), "purple");
    EXPECT_EQ(spokenColor(QColor(0, 80, 0)), "dark green");
    EXPECT_EQ(spokenColor(QColor(120, 70, 10)), "brown");
}
