#pragma once

class QAccessibleInterface;
class SegmentedPicker;

// A picker as a group of radio buttons, or as a list of tabs, with its segments as children.
QAccessibleInterface *makePickerAccessible(SegmentedPicker *picker);
// Tells once that another segment is current now.
void tellOfChoice(SegmentedPicker *picker, int before);
