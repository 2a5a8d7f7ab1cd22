#include "platform/contracts/pasteboard_contract.h"

#include <QBuffer>

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PasteboardContract);

TEST_P(PasteboardContract, HandsOutTheBytesItWasGiven)
{
    QImage picture(5, 4, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(picture.save(&buffer, "PNG"));
    m_pasteboard->setFlavors({{"image/png", png}, {"com.example.objects", "{}"}});
    EXPECT_EQ(m_pasteboard->data("image/png"), png);
    EXPECT_EQ(m_pasteboard->data("com.example.objects"), "{}");
    EXPECT_TRUE(m_pasteboard->has("com.example.objects"));
    EXPECT_TRUE(m_pasteboard->hasImage());
    EXPECT_EQ(m_pasteboard->image().convertToFormat(QImage::Format_RGB32), picture);
    EXPECT_FALSE(m_pasteboard->has("image/tiff"));
}

TEST_P(PasteboardContract, ReplacesWhatWasThere)
{
    m_pasteboard->setFlavors({{"image/png", "x"}});
    m_pasteboard->setText("Grüße");
    EXPECT_EQ(m_pasteboard->text(), "Grüße");
    EXPECT_FALSE(m_pasteboard->has("image/png"));
    EXPECT_TRUE(m_pasteboard->image().isNull());
    m_pasteboard->setFile(QUrl::fromLocalFile("/home/user/A b.png"));
    EXPECT_EQ(m_pasteboard->data("text/uri-list").trimmed(), "file:///home/user/A%20b.png");
    m_pasteboard->clear();
    EXPECT_FALSE(m_pasteboard->has("text/uri-list"));
    EXPECT_FALSE(m_pasteboard->hasImage());
}

TEST_P(PasteboardContract, DropsWhatComesAfterSomethingNewer)
{
    const auto first = m_pasteboard->takeTurn();
    const auto second = m_pasteboard->takeTurn();
    const auto third = m_pasteboard->takeTurn();
    EXPECT_TRUE(m_pasteboard->placeText("second", second));
    EXPECT_FALSE(m_pasteboard->placeText("first", first));
    EXPECT_TRUE(m_pasteboard->placeFlavors({{"image/png", "third"}}, third));
    EXPECT_EQ(m_pasteboard->data("image/png"), "third");

    const auto overtaken = m_pasteboard->takeTurn();
    m_pasteboard->setText("copied at once");
    EXPECT_FALSE(m_pasteboard->placeFlavors({{"image/png", "late"}}, overtaken));
    EXPECT_EQ(m_pasteboard->text(), "copied at once");
    EXPECT_TRUE(m_pasteboard->placeText("asked for later", m_pasteboard->takeTurn()));
    EXPECT_EQ(m_pasteboard->text(), "asked for later");
}
