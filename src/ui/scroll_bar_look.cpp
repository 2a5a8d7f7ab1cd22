#include "ui/scroll_bar_look.h"

#include "ui/style_painting.h"
#include "ui/theme.h"

#include <QStyleOption>

using namespace StylePainting;

namespace ScrollBarLook {

namespace {

constexpr int kShortest = 28; // can still be grasped

} // namespace

QRect part(const QStyleOptionSlider &bar, QStyle::SubControl which)
{
    const bool horizontal = bar.orientation == Qt::Horizontal;
    const int length = horizontal ? bar.rect.width() : bar.rect.height();
    const int range = bar.maximum - bar.minimum;
    int slider =
        range > 0 ? static_cast<int>(qint64(bar.pageStep) * length / (qint64(range) + bar.pageStep)) : length;
    slider = qBound(qMin(kShortest, length), slider, length);
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - slider, bar.upsideDown);
    const auto span = [&](int from, int to) {
        const QRect rect = horizontal
                               ? QRect(bar.rect.left() + from, bar.rect.top(), to - from, bar.rect.height())
                               : QRect(bar.rect.left(), bar.rect.top() + from, bar.rect.width(), to - from);
        return QStyle::visualRect(bar.direction, bar.rect, rect);
    };
    switch (which) {
    case QStyle::SC_ScrollBarSlider:
        return span(start, start + slider);
    case QStyle::SC_ScrollBarSubPage:
        return span(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return span(start + slider, length);
    case QStyle::SC_ScrollBarGroove:
        return bar.rect;
    default:
        return {};
    }
}

void draw(const QStyleOptionSlider &bar, QPainter *painter)
{
    if (bar.maximum <= bar.minimum)
        return;
    const auto &t = Theme::tokens(bar.palette);
    QColor color = t.text;
    color.setAlphaF(isOn(&bar, QStyle::State_Sunken)      ? 0.5f
                    : isOn(&bar, QStyle::State_MouseOver) ? 0.36f
                                                          : 0.22f);
    const QRect handle = part(bar, QStyle::SC_ScrollBarSlider).adjusted(2, 2, -2, -2);
    fillRounded(painter, handle, qMin(handle.width(), handle.height()) / 2.0, color);
}

} // namespace ScrollBarLook
