#include "document/annotation.h"
#include "editor/stamp_picker.h"

#include <QAbstractButton>
#include <QSet>
#include <gtest/gtest.h>

TEST(StampPicker, PaintsEveryStampAsADrawingOfItsOwn)
{
    StampPicker picker({}, nullptr);
    QSet<QByteArray> drawings;
    qsizetype stamps = 0;
    for (auto *button : picker.findChildren<QAbstractButton *>()) {
        const QImage image = button->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QByteArray bits(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
        const QRgb ground = image.pixel(0, 0);
        int inked = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                inked += image.pixel(x, y) != ground ? 1 : 0;
        }
        EXPECT_GT(inked, 40) << button->accessibleName().toStdString();
        drawings.insert(bits);
        ++stamps;
    }
    EXPECT_EQ(stamps,
              StampLibrary::symbols().size() + StampLibrary::emoji().size() + StampLibrary::keys().size());
    EXPECT_EQ(drawings.size(), stamps);
}
