// Guesses what a mosaic hides, as an attacker who knows the program, the font, the place and the candidates
// would: makes many mosaics of every candidate, learns where they differ and how their noise hangs together,
// and takes the candidate that is most likely. Prints the hits, and what chance gives at most (its mean and
// three standard deviations).
//
//     bench_pixelation [FAMILY [PIXELS…]]

#include "document/pixelation.h"

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <vector>

namespace {

constexpr int kCandidates = 20;
constexpr int kLearnedOfEach = 30;
constexpr int kTriesOfEach = 5;
constexpr size_t kMostFeatures = 100;

using Values = std::vector<double>;

struct Look {
    QString family;
    int pixels;
    QColor paper;
    QColor pen;
};

QStringList codes()
{
    QStringList result;
    for (int i = 0; i < kCandidates; ++i)
        result << QString::number((i * 48271 + 11317) % 9000000 + 1000000);
    return result;
}

QImage written(const QString &code, const Look &look)
{
    QFont font(look.family);
    font.setPixelSize(look.pixels);
    const QFontMetrics metrics(font);
    QImage image(metrics.horizontalAdvance("0000000") + 4 * look.pixels, 3 * look.pixels + 240,
                 QImage::Format_RGB32);
    image.fill(look.paper);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(look.pen);
    painter.drawText(2 * look.pixels - 5, 2 * look.pixels + 3, code);
    return image;
}

// What is published: the blocks of the rows of the text, of one mosaic whose noise no other shares. A mark
// far below the text makes it another picture.
Values published(QImage image, int serial)
{
    image.setPixel(3, image.height() - 2, qRgb(128, 128, serial % 128));
    image.setPixel(43, image.height() - 2, qRgb(128, 128, serial / 128));
    const QImage mosaic = pixelated(image);
    const double side = pixelationBlock(mosaic.size());
    Values blocks;
    for (double y = mosaic.height() - side / 2; y > 0; y -= side)
        if (y < mosaic.height() - 200)
            for (double x = side / 2; x < mosaic.width(); x += side)
                blocks.push_back(qGray(mosaic.pixel(static_cast<int>(x), static_cast<int>(y))));
    return blocks;
}

class Attacker {
public:
    explicit Attacker(const std::vector<std::vector<Values>> &learned)
    {
        chooseFeatures(learned);
        const size_t size = m_features.size();
        m_factor.assign(size, Values(size, 0));
        double count = 0;
        for (const auto &samples : learned) {
            Values mean(size, 0);
            for (const Values &sample : samples)
                for (size_t k = 0; k < size; ++k)
                    mean[k] += sample[m_features[k]] / static_cast<double>(samples.size());
            for (const Values &sample : samples)
                for (size_t p = 0; p < size; ++p)
                    for (size_t q = 0; q <= p; ++q)
                        m_factor[p][q] +=
                            (sample[m_features[p]] - mean[p]) * (sample[m_features[q]] - mean[q]);
            count += static_cast<double>(samples.size()) - 1;
            m_means.push_back(mean);
        }
        factorise(count);
        for (Values &mean : m_means)
            mean = whitened(mean);
    }

    int guess(const Values &seen) const
    {
        Values chosen;
        for (const size_t feature : m_features)
            chosen.push_back(seen[feature]);
        const Values white = whitened(chosen);
        const auto distance = [&](const Values &mean) {
            double sum = 0;
            for (size_t k = 0; k < white.size(); ++k)
                sum += (white[k] - mean[k]) * (white[k] - mean[k]);
            return sum;
        };
        return static_cast<int>(std::ranges::min_element(m_means, {}, distance) - m_means.begin());
    }

private:
    // The blocks in which the candidates differ most, against how much one candidate's differ among
    // themselves.
    void chooseFeatures(const std::vector<std::vector<Values>> &learned)
    {
        const size_t all = learned[0][0].size();
        Values ratios(all);
        for (size_t k = 0; k < all; ++k) {
            double within = 0.3; // of rounding to whole colours
            double sum = 0;
            double squares = 0;
            for (const auto &samples : learned) {
                double mean = 0;
                for (const Values &sample : samples)
                    mean += sample[k] / static_cast<double>(samples.size());
                for (const Values &sample : samples)
                    within += (sample[k] - mean) * (sample[k] - mean) /
                              static_cast<double>(learned.size() * samples.size());
                sum += mean;
                squares += mean * mean;
            }
            const double n = static_cast<double>(learned.size());
            ratios[k] = (squares / n - sum / n * sum / n) / within;
        }
        m_features.resize(all);
        std::iota(m_features.begin(), m_features.end(), size_t(0));
        std::ranges::sort(m_features, std::greater(), [&](size_t k) { return ratios[k]; });
        m_features.resize(std::min(all, kMostFeatures));
    }
    // Cholesky.
    void factorise(double count)
    {
        for (size_t p = 0; p < m_factor.size(); ++p)
            for (size_t q = 0; q <= p; ++q) {
                double rest = m_factor[p][q] / count + (p == q ? 0.3 : 0);
                for (size_t k = 0; k < q; ++k)
                    rest -= m_factor[p][k] * m_factor[q][k];
                m_factor[p][q] = p == q ? std::sqrt(std::max(rest, 1e-9)) : rest / m_factor[q][q];
            }
    }
    Values whitened(const Values &blocks) const
    {
        Values result(blocks.size());
        for (size_t p = 0; p < blocks.size(); ++p) {
            double rest = blocks[p];
            for (size_t k = 0; k < p; ++k)
                rest -= m_factor[p][k] * result[k];
            result[p] = rest / m_factor[p][p];
        }
        return result;
    }

    std::vector<size_t> m_features;
    std::vector<Values> m_means;
    std::vector<Values> m_factor; // lower triangle
};

Values meanOf(const QImage &image, int pictures, int &serial)
{
    Values mean;
    for (int i = 0; i < pictures; ++i) {
        const Values one = published(image, serial++);
        mean.resize(one.size(), 0);
        for (size_t k = 0; k < one.size(); ++k)
            mean[k] += one[k] / pictures;
    }
    return mean;
}

void attack(const Look &look)
{
    std::vector<QImage> images;
    for (const QString &code : codes())
        images.push_back(written(code, look));
    int serial = 0;
    std::vector<std::vector<Values>> learned;
    for (const QImage &image : images) {
        auto &samples = learned.emplace_back();
        for (int i = 0; i < kLearnedOfEach; ++i)
            samples.push_back(published(image, serial++));
    }
    const Attacker attacker(learned);
    std::printf("%-16s %4d px on %s:", qUtf8Printable(look.family), look.pixels,
                qUtf8Printable(look.paper.name()));
    for (const int pictures : {1, 20}) {
        int hits = 0;
        for (size_t i = 0; i < images.size(); ++i)
            for (int k = 0; k < kTriesOfEach; ++k)
                hits += attacker.guess(meanOf(images[i], pictures, serial)) == static_cast<int>(i);
        const double tries = kCandidates * kTriesOfEach;
        const double chance = 1.0 / kCandidates;
        std::printf("  %d of %.0f from %d (chance at most %.1f)", hits, tries, pictures,
                    tries * chance + 3 * std::sqrt(tries * chance * (1 - chance)));
    }
    std::printf("\n");
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QString family = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString("DejaVu Sans");
    QList<int> sizes; // of letters, in pixels of the picture: twice as many as points at double density
    for (int i = 2; i < argc; ++i)
        sizes << std::atoi(argv[i]);
    for (const int pixels : sizes.isEmpty() ? QList{12, 14, 16, 24, 36, 48, 60, 90, 120, 180, 240} : sizes)
        for (const bool isDark : {false, true})
            attack({family, pixels, isDark ? QColor(28, 30, 36) : QColor(Qt::white),
                    isDark ? QColor(225, 225, 230) : QColor(30, 30, 35)});
}
