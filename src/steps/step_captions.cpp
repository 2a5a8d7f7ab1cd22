#include "steps/step_captions.h"

#include "steps/texts.h"

namespace StepCaptions {

namespace {

constexpr qsizetype kLongestLabel = 60;
constexpr qsizetype kCutLabel = 57;

QString cleaned(const std::optional<QString> &text)
{
    QString label = text.value_or(QString());
    label.replace('\n', ' ');
    return label.trimmed();
}

// Cut between signs as a person counts them, so that no half of an emoji is left.
QString shortened(const QString &label)
{
    if (label.size() <= kLongestLabel)
        return label;
    qsizetype end = kCutLabel;
    while (end > 0 && (label[end].isLowSurrogate() || label[end].isMark() || label[end] == QChar(0x200d) ||
                       label[end - 1] == QChar(0x200d)))
        --end;
    return label.first(end) + QChar(0x2026);
}

QString generic(const std::optional<QString> &application)
{
    return application ? StepsTexts::tr("Click in %1").arg(*application) : StepsTexts::tr("Click here");
}

QString worded(const QString &role, const QString &label)
{
    if (role == QLatin1String("AXMenuBarItem") || role == QLatin1String("AXPopUpButton"))
        return StepsTexts::tr("Open the “%1” menu").arg(label);
    if (role == QLatin1String("AXMenuItem"))
        return StepsTexts::tr("Choose “%1”").arg(label);
    if (role == QLatin1String("AXCheckBox") || role == QLatin1String("AXSwitch"))
        return StepsTexts::tr("Toggle “%1”").arg(label);
    if (role == QLatin1String("AXRadioButton") || role == QLatin1String("AXTab") ||
        role == QLatin1String("AXTabGroup"))
        return StepsTexts::tr("Select “%1”").arg(label);
    if (role == QLatin1String("AXLink"))
        return StepsTexts::tr("Click the “%1” link").arg(label);
    return StepsTexts::tr("Click “%1”").arg(label);
}

QString firstLabel(std::initializer_list<const std::optional<QString> *> candidates)
{
    for (const auto *candidate : candidates) {
        if (const QString label = cleaned(*candidate); !label.isEmpty())
            return label;
    }
    return {};
}

} // namespace

bool isTextInput(const ClickedElement &element)
{
    const QString role = element.role.value_or(QString());
    return role == QLatin1String("AXTextField") || role == QLatin1String("AXTextArea") ||
           role == QLatin1String("AXSearchField") || role == QLatin1String("AXComboBox");
}

QString label(const ClickedElement &element)
{
    if (isTextInput(element))
        return firstLabel({&element.title, &element.description, &element.placeholder});
    const QString own = firstLabel({&element.title, &element.description});
    const bool isNamedByValue =
        element.role == QLatin1String("AXStaticText") || element.role == QLatin1String("AXCell");
    return own.isEmpty() && isNamedByValue ? cleaned(element.value) : own;
}

QString caption(const std::optional<ClickedElement> &element, const std::optional<QString> &application)
{
    if (!element)
        return generic(application);
    const QString words = shortened(label(*element));
    if (isTextInput(*element))
        return words.isEmpty() ? StepsTexts::tr("Click the text field")
                               : StepsTexts::tr("Click the “%1” field").arg(words);
    return words.isEmpty() ? generic(application) : worded(element->role.value_or(QString()), words);
}

} // namespace StepCaptions
