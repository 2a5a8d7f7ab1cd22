#include "library/batch/duplicates.h"

#include "document/image_files.h"
#include "support/pictures.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QPainter>
#include <QRandomGenerator>
#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <gtest/gtest.h>

namespace {

using Hashes = std::vector<quint64>;

QList<Duplicates::Hashed> named(const Hashes &hashes)
{
    QList<Duplicates::Hashed> files;
    for (size_t i = 0; i < hashes.size(); ++i)
        files.append({QString::number(i), hashes[i]});
    return files;
}

// The rule itself: compare each with each.
QList<QStringList> slowGroups(const Hashes &hashes, int threshold)
{
    std::vector<size_t> group(hashes.size());
    for (size_t i = 0; i < hashes.size(); ++i)
        group[i] = i;
    for (size_t i = 0; i < hashes.size(); ++i) {
        for (size_t j = i + 1; j < hashes.size(); ++j) {
            const size_t kept = std::min(group[i], group[j]);
            const size_t dropped = std::max(group[i], group[j]);
            if (std::popcount(hashes[i] ^ hashes[j]) <= threshold)
                std::replace(group.begin(), group.end(), dropped, kept);
        }
    }
    QList<QStringList> groups;
    for (size_t first = 0; first < hashes.size(); ++first) {
        QStringList files;
        for (size_t i = 0; i < hashes.size(); ++i) {
            if (group[i] == first)
                files.append(QString::number(i));
        }
        if (files.size() > 1)
            groups.append(files);
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const QStringList &a, const QStringList &b) { return a.size() > b.size(); });
    return groups;
}

QImage page(const QColor &block, int left)
{
    QImage image = filled({640, 480});
    QPainter painter(&image);
    painter.fillRect(left, 60, 200, 150, block);
    painter.fillRect(40, 300, 560, 60, QColor(40, 40, 60));
    return image;
}

} // namespace

TEST(Duplicates, HashesWhereLightFallsToTheRight)
{
    EXPECT_EQ(Duplicates::dHash(filled({90, 80})), quint64(0));
    EXPECT_FALSE(Duplicates::dHash({}));
    // Light on the left: every pixel is lighter than its right neighbour.
    QImage falling({9, 8}, QImage::Format_RGB32);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 9; ++x)
            falling.setPixel(x, y, qRgb(250 - 20 * x, 250 - 20 * x, 250 - 20 * x));
    }
    EXPECT_EQ(Duplicates::dHash(falling), ~quint64(0));
    EXPECT_EQ(Duplicates::dHash(falling.mirrored(true, false)), quint64(0));
    // The first comparison of the first row is the top bit, the last of the last row bit 0.
    QImage corners = filled({9, 8}, Qt::black);
    corners.setPixel(0, 0, qRgb(255, 255, 255));
    corners.setPixel(7, 7, qRgb(255, 255, 255));
    EXPECT_EQ(Duplicates::dHash(corners), quint64(1) << 63 | 1);
}

TEST(Duplicates, GroupsWhatDiffersInFourBitsAndChainsOfIt)
{
    EXPECT_TRUE(Duplicates::groups({}).isEmpty());
    EXPECT_TRUE(Duplicates::groups(named({7})).isEmpty());
    EXPECT_EQ(Duplicates::groups(named({0, 0b1111})), (QList<QStringList>{{"0", "1"}}));
    EXPECT_TRUE(Duplicates::groups(named({0, 0b11111})).isEmpty());
    EXPECT_EQ(Duplicates::groups(named({0, 0b11111, 0b11})), (QList<QStringList>{{"0", "1", "2"}}));
    EXPECT_EQ(Duplicates::groups(named({5, quint64(1) << 60 | 0xff00, 5, 5, quint64(1) << 60 | 0xff00})),
              (QList<QStringList>{{"0", "2", "3"}, {"1", "4"}}));
}

TEST(Duplicates, GroupsAsComparingEachWithEachDoes)
{
    QRandomGenerator random(42);
    const auto anything = [&] { return random.generate64(); };
    // Neighbours of few centres, and hashes that are alike in most of their bits, as plain pictures are.
    const auto clustered = [&] {
        quint64 hash = 0x0f0f0f0f0f0f0f0full * static_cast<quint64>(random.bounded(9));
        for (int i = random.bounded(6); i > 0; --i)
            hash ^= quint64(1) << random.bounded(64);
        return hash;
    };
    const auto sparse = [&] {
        quint64 hash = 0;
        for (int i = random.bounded(12); i > 0; --i)
            hash |= quint64(1) << random.bounded(24);
        return hash;
    };
    const std::array<std::function<quint64()>, 3> kinds{anything, clustered, sparse};
    for (const auto &next : kinds) {
        for (const int threshold : {0, 1, 4}) {
            Hashes hashes(700);
            std::generate(hashes.begin(), hashes.end(), next);
            EXPECT_TRUE(Duplicates::groups(named(hashes), threshold) == slowGroups(hashes, threshold))
                << threshold;
        }
    }
}

TEST(Duplicates, ScansPicturesAndReadsChangedOnesAnew)
{
    const TemporaryFolder folder;
    const QString cache = folder.path("cache/hashes");
    QStringList paths;
    for (const auto &[name, image] : std::initializer_list<std::pair<const char *, QImage>>{
             {"a.png", page(Qt::red, 20)},
             {"b.jpg", page(Qt::red, 22)},
             {"c.png", page(Qt::blue, 400)},
         }) {
        paths.append(folder.path(name));
        ASSERT_TRUE(ImageFiles::write(image, paths.last()));
    }
    for (const char *name : {"film.gif", "film.mov"}) {
        paths.append(folder.path(name));
        ASSERT_TRUE(QFile::copy(paths[0], paths.last()));
    }
    QFile broken(folder.path("broken.png"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.close();
    paths.append(broken.fileName());
    const QList<QStringList> expected{{paths[0], paths[1]}};
    EXPECT_EQ(*Duplicates::scan(paths, cache), expected);

    // A changed file is read anew.
    ASSERT_TRUE(ImageFiles::write(page(Qt::red, 21), paths[2]));
    EXPECT_EQ(*Duplicates::scan(paths, cache), (QList<QStringList>{{paths[0], paths[1], paths[2]}}));

    // A broken cache is an empty one.
    QFile kept(cache);
    ASSERT_TRUE(kept.open(QIODevice::ReadWrite));
    ASSERT_TRUE(kept.resize(kept.size() / 2));
    kept.close();
    EXPECT_EQ(Duplicates::scan(paths, cache)->size(), 1);

    const auto stopped = Duplicates::scan(paths, {}, [](int done, int) { return done < 2; });
    ASSERT_FALSE(stopped);
    EXPECT_TRUE(stopped.error().isCancelled());
}

TEST(Duplicates, TrustsTheCacheOfAFileOfTheSameSizeAndDate)
{
    const TemporaryFolder folder;
    const QString cache = folder.path("hashes");
    const QStringList paths{folder.path("a.png"), folder.path("b.png")};
    for (const QString &path : paths)
        ASSERT_TRUE(ImageFiles::write(page(Qt::red, 20), path));
    EXPECT_EQ(Duplicates::scan(paths, cache)->size(), 1);
    // Other bytes under the same size and date: only a scan that reads them would notice.
    QFile file(paths[1]);
    const QDateTime date = QFileInfo(file).lastModified();
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(QByteArray(static_cast<qsizetype>(file.size()), 'x'));
    file.flush();
    ASSERT_TRUE(file.setFileTime(date, QFile::FileModificationTime));
    EXPECT_EQ(Duplicates::scan(paths, cache)->size(), 1);
    EXPECT_EQ(Duplicates::scan(paths, folder.path("none"))->size(), 0);
    ASSERT_TRUE(file.setFileTime(date.addSecs(1), QFile::FileModificationTime));
    EXPECT_EQ(Duplicates::scan(paths, cache)->size(), 0) << "of another date";
}

TEST(Duplicates, SortsAGroupByDateWhateverTheNames)
{
    const TemporaryFolder folder;
    QStringList group;
    for (const int days : {5, 1, 9}) {
        QFile file(folder.path(QString::number(days)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addDays(-days), QFile::FileModificationTime));
        group.append(file.fileName());
    }
    group.append(folder.path("gone"));
    QList<QStringList> groups{group};
    Duplicates::sortNewestFirst(groups);
    EXPECT_EQ(groups[0], (QStringList{group[1], group[0], group[2], group[3]}));
}
