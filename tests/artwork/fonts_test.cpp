#include "artwork/fonts.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

QImage written(const QFont &font, const QString &text)
{
    QImage image(120, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(image.rect(), Qt::AlignCenter, text);
    return image;
}

bool isColorful(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (QColor(image.pixel(x, y)).saturationF() > 0.5)
                return true;
        }
    }
    return false;
}

} // namespace

TEST(Fonts, EveryDesignHasLettersOfItsOwn)
{
    using Fonts::Design;
    const QList designs{Design::System, Design::Rounded, Design::Serif, Design::Mono, Design::Marker};
    for (qsizetype i = 0; i < designs.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j)
            EXPECT_NE(written(Fonts::font(designs[i], 40), "Rg"), written(Fonts::font(designs[j], 40), "Rg"));
    }
    const QFontMetricsF mono(Fonts::font(Design::Mono, 40));
    EXPECT_DOUBLE_EQ(mono.horizontalAdvance("iii"), mono.horizontalAdvance("WWW"));
}

TEST(Fonts, WritesEmojiInColourAndDigitsAsLetters)
{
    using Fonts::Design;
    for (const Design design :
         {Design::System, Design::Rounded, Design::Serif, Design::Mono, Design::Marker}) {
        const QFont font = Fonts::font(design, 40);
        for (const char *emoji : {"👍", "🎉", "🚀", "✅"})
            EXPECT_TRUE(isColorful(written(font, emoji))) << emoji;
        EXPECT_FALSE(isColorful(written(font, "1 2 3 # *")));
    }
    for (const char *emoji : {"👍", "✅", "❌", "⚠️", "🔥", "🎉", "💡", "🐛", "❓", "⭐️", "🚀"})
        EXPECT_TRUE(isColorful(written(Fonts::emoji(60), emoji))) << emoji;
}
