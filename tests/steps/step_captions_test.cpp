#include "steps/step_captions.h"
#include "support/printers.h"

#include <gtest/gtest.h>

namespace {

const QString kLongest(60, 'a');

struct Case {
    const char *name;
    std::optional<ClickedElement> element;
    std::optional<QString> application;
    QString caption;
};

class Captions : public testing::TestWithParam<Case> {};

TEST_P(Captions, SayWhatWasClickedAndNothingThatWasTyped)
{
    EXPECT_EQ(StepCaptions::caption(GetParam().element, GetParam().application), GetParam().caption);
}

std::optional<ClickedElement> titled(const QString &role, const QString &title)
{
    return ClickedElement{.role = role, .title = title};
}

const Case kCases[] = {
    {"NoElement", {}, "Safari", "Click in Safari"},
    {"NothingKnown", {}, {}, "Click here"},
    {"EmptyApplication", {}, "", "Click in "},
    {"NoRole", ClickedElement{.title = "Send"}, {}, "Click “Send”"},
    {"Button", titled("AXButton", "Send"), "Mail", "Click “Send”"},
    {"MenuBarItem", titled("AXMenuBarItem", "File"), {}, "Open the “File” menu"},
    {"MenuItem", titled("AXMenuItem", "Save As…"), {}, "Choose “Save As…”"},
    {"PopUpButton", titled("AXPopUpButton", "Size"), {}, "Open the “Size” menu"},
    {"CheckBox", titled("AXCheckBox", "Bold"), {}, "Toggle “Bold”"},
    {"Switch", titled("AXSwitch", "Wi-Fi"), {}, "Toggle “Wi-Fi”"},
    {"RadioButton", titled("AXRadioButton", "Express"), {}, "Select “Express”"},
    {"TabGroup", titled("AXTabGroup", "Views"), {}, "Select “Views”"},
    {"Link", titled("AXLink", "Terms"), {}, "Click the “Terms” link"},
    {"PlaceholderNamesAField",
     ClickedElement{.role = "AXTextField", .placeholder = "Search"},
     {},
     "Click the “Search” field"},
    {"ValueNeverNamesAField", ClickedElement{.role = "AXTextField", .value = "hunter2"}, "Mail",
     "Click the text field"},
    {"DescriptionAfterTitle",
     ClickedElement{.role = "AXComboBox", .title = " ", .description = "City"},
     {},
     "Click the “City” field"},
    {"TwoLines", titled("AXButton", "  Save\nall "), {}, "Click “Save all”"},
    {"StaticTextByValue", ClickedElement{.role = "AXStaticText", .value = "Inbox"}, {}, "Click “Inbox”"},
    {"ButtonNotByValue", ClickedElement{.role = "AXButton", .value = "1"}, "Mail", "Click in Mail"},
    {"LongestStays", titled("AXButton", kLongest), {}, "Click “" + kLongest + "”"},
    {"LongerIsCut", titled("AXButton", kLongest + "a"), {}, "Click “" + kLongest.first(57) + "…”"},
    {"EmojiIsNotHalved",
     titled("AXButton", QString(56, 'a') + "😀" + QString(9, 'b')),
     {},
     "Click “" + QString(56, 'a') + "…”"},
};
INSTANTIATE_TEST_SUITE_P(Table, Captions, testing::ValuesIn(kCases),
                         [](const auto &info) { return info.param.name; });

} // namespace
