#pragma once

#include <QProxyStyle>

// Draws the toolkit's own controls (buttons, fields, menus, sliders, scroll bars, check marks, lists) from
// the theme.
class ThemeStyle : public QProxyStyle {
    Q_OBJECT
public:
    ThemeStyle();

    // With reduced motion nothing fades or slides: SH_Widget_Animation_Duration is 0.
    void setReducesMotion(bool reduces) { m_reducesMotion = reduces; }

    void polish(QWidget *widget) override;
    void unpolish(QWidget *widget) override;
    using QProxyStyle::polish;
    using QProxyStyle::unpolish;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl subControl,
                         const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override;

private:
    bool m_reducesMotion = false;
};

// How long a widget's own animations take: `milliseconds`, or 0 with reduced motion.
int motionDuration(const QWidget *widget, int milliseconds);
