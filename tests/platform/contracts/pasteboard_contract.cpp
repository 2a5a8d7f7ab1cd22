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
