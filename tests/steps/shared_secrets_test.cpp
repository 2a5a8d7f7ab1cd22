#include "steps/shared_secrets.h"
#include "support/pictures.h"
#include "support/printers.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace {

constexpr QSize kSize(400, 200);
// Around the words, as a recogniser gives it.
const QRectF kBox(100 / 400.0, 1 - 100 / 200.0, 160 / 400.0, 20 / 200.0);

// Stripes in place of letters, at 100 to 260, 80 to 100.
QImage picture(int seed = 1)
{
    QImage image = filled(kSize, Qt::white);
    QPainter painter(&image);
    for (int x = 100; x < 260; x += 7)
        painter.fillRect(x + seed, 82 + (x * seed) % 5, 2 + (x / 7) % 4, 10 + seed,
                         QColor(20, 20, 40 * seed));
    return image;
}

QRectF pixels(const QRectF &box)
{
    return {box.x() * kSize.width(), (1 - box.y() - box.height()) * kSize.height(),
            box.width() * kSize.width(), box.height() * kSize.height()};
}

TEST(SharedSecrets, FindWhatAMenuLeavesOfThem)
{
    SharedSecrets secrets;
    secrets.learn(picture(), {kBox});
    QImage covered = picture();
    QPainter(&covered).fillRect(0, 50, 190, 150, QColor(230, 230, 230));
    EXPECT_TRUE(secrets.concern(kSize, {}));
    const QList<QRectF> rest = secrets.remains(covered, {});
    ASSERT_EQ(rest.size(), 1);
    EXPECT_NEAR(pixels(rest[0]).left(), 190, 8);
    EXPECT_NEAR(pixels(rest[0]).right(), 260, 8);

    QImage below = picture();
    QPainter(&below).fillRect(0, 90, 400, 100, QColor(230, 230, 230));
    EXPECT_EQ(secrets.remains(below, {}).size(), 1) << "the upper halves of letters can be read";
}

TEST(SharedSecrets, LeaveAloneWhatIsHiddenOrSomethingElse)
{
    SharedSecrets secrets;
    secrets.learn(picture(), {kBox});
    EXPECT_FALSE(secrets.concern(kSize, {kBox}));
    EXPECT_FALSE(secrets.concern(QSize(401, 200), {})) << "another window";
    EXPECT_TRUE(secrets.remains(picture(2), {}).isEmpty()) << "other words";
    EXPECT_TRUE(secrets.remains(filled(kSize, Qt::white), {}).isEmpty());
    EXPECT_TRUE(secrets.remains(QImage(), {}).isEmpty());
}

} // namespace
