#include "ui/theme.h"

#include <QPainter>
#include <gmock/gmock.h>

namespace {

double channel(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) +
           0.0722 * channel(color.blueF());
}

// Contrast ratio of WCAG 2.1, with `front` laid over `back`.
double contrast(const QColor &front, const QColor &back)
{
    const double a = front.alphaF();
    const QColor mixed = QColor::fromRgbF(front.redF() * a + back.redF() * (1 - a),
                                          front.greenF() * a + back.greenF() * (1 - a),
                                          front.blueF() * a + back.blueF() * (1 - a));
    const double first = luminance(mixed), second = luminance(back);
    return (qMax(first, second) + 0.05) / (qMin(first, second) + 0.05);
}

QColor over(const QColor &wash, const QColor &back)
{
    const float a = wash.alphaF();
    return QColor::fromRgbF(wash.redF() * a + back.redF() * (1 - a),
                            wash.greenF() * a + back.greenF() * (1 - a),
                            wash.blueF() * a + back.blueF() * (1 - a));
}

class ThemeContrast : public testing::TestWithParam<const Theme::Tokens *> {};

} // namespace

TEST_P(ThemeContrast, TextCanBeReadOnEverySurface)
{
    const Theme::Tokens &t = *GetParam();
    for (const QColor &back : {t.window, t.surface, t.raised}) {
        EXPECT_GE(contrast(t.text, back), 7) << back.name().toStdString();
        EXPECT_GE(contrast(t.secondary, back), 4.5) << back.name().toStdString();
        EXPECT_GE(contrast(t.accentText, back), 4.5) << back.name().toStdString();
    }
    EXPECT_GE(contrast(t.accentText, over(t.accentWash, t.surface)), 4.5);
    EXPECT_GE(contrast(t.onAccent, t.accentFill), 4.5);
    for (const QColor &mark : {t.success, t.warning, t.danger})
        EXPECT_GE(contrast(mark, t.surface), 3) << mark.name().toStdString();
}

TEST_P(ThemeContrast, APaletteTellsWhichSetItWasMadeOf)
{
    EXPECT_EQ(&Theme::tokens(Theme::palette(*GetParam())), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Both, ThemeContrast, testing::Values(&Theme::light(), &Theme::dark()));

TEST(TabularText, TakesTheSameWidthForEveryNumberOfAsManyDigits)
{
    const QFont font = Theme::font(Theme::Type::Control);
    EXPECT_EQ(Theme::tabularWidth(font, "1111 px"), Theme::tabularWidth(font, "8888 px"));
    EXPECT_GT(Theme::tabularWidth(font, "11111"), Theme::tabularWidth(font, "8888"));
}
