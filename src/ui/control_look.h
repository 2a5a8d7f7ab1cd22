#pragma once

class QPainter;
class QRect;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionFrame;
class QStyleOptionSlider;
class QStyleOptionViewItem;

// How buttons, fields, check boxes, sliders and rows of lists look.
namespace ControlLook {

enum class Mark { Check, Radio };

constexpr int kCheckBoxSize = 16;
constexpr int kSliderKnob = 16;

void drawPushButton(const QStyleOptionButton &button, QPainter *painter);
// The symbol and the words of a push button, in its middle.
void drawIconAndLabel(const QStyleOptionButton &button, QPainter *painter);
void drawField(const QStyleOption &field, QPainter *painter);
void drawMark(const QStyleOption *option, QPainter *painter, Mark mark);
void drawSlider(const QStyleOptionSlider &slider, QPainter *painter, const QRect &groove, const QRect &handle);
void drawComboBox(const QStyleOption &box, QPainter *painter, const QRect &arrow);
void drawRow(const QStyleOption &row, QPainter *painter);

} // namespace ControlLook
