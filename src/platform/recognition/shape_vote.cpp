#include "platform/recognition/shape_vote.h"

#include <array>
#include <opencv2/imgproc.hpp>

namespace {

// A character's ink brought to one size, so that shapes which fell differently on the grid of pixels compare.
constexpr int kShapeSide = 16;

struct Shape {
    QSize size;
    int below = 0;                                       // how far it reaches under the baseline
    std::array<float, kShapeSide * kShapeSide> values{}; // of zero mean and unit length
};

Shape shapeOf(const QImage &ink, const QRect &cell, int baseline)
{
    Shape shape{cell.size(), cell.bottom() + 1 - baseline, {}};
    const cv::Mat map(ink.height(), ink.width(), CV_8UC1, const_cast<uchar *>(ink.constBits()),
                      size_t(ink.bytesPerLine()));
    cv::Mat scaled;
    map(cv::Rect(cell.x(), cell.y(), cell.width(), cell.height())).convertTo(scaled, CV_32F);
    cv::resize(scaled, scaled, cv::Size(kShapeSide, kShapeSide), 0, 0, cv::INTER_AREA);
    cv::GaussianBlur(scaled, scaled, {}, 0.8);
    scaled -= cv::mean(scaled);
    const double length = std::max(1e-3, cv::norm(scaled));
    std::copy_n(scaled.ptr<float>(), shape.values.size(), shape.values.begin());
    for (float &value : shape.values)
        value = float(value / length);
    return shape;
}

double likeness(const Shape &a, const Shape &b)
{
    double sum = 0;
    for (size_t i = 0; i < a.values.size(); ++i)
        sum += double(a.values[i]) * b.values[i];
    return sum;
}

// Whether they can be one character of one font at one size.
bool haveOneSize(const Shape &a, const Shape &b)
{
    const int slack = std::max(a.size.height(), b.size.height()) > 24 ? 2 : 1;
    return std::abs(a.size.width() - b.size.width()) <= slack &&
           std::abs(a.size.height() - b.size.height()) <= slack && std::abs(a.below - b.below) <= slack;
}

// Readings that stand for one another when a shape is seen alone. In fixed-width fonts a capital I differs
// from a small L, in most others it doesn't: there only the sense of a word tells them apart.
constexpr std::array<QStringView, 13> kConfusable{u"0OoQD@©°", u"1l|][", u"5Ss$§", u"8B&", u"2Zz",
                                                  u"6Gb",      u"9gq",   u"cC¢",   u"vV",  u"wW",
                                                  u"xX",       u"fF£",   u"J]j)"};
constexpr std::array<QStringView, 4> kConfusableInColumns{u"1lILi|", u"JI", u"uU", u"kK"};

bool areConfusable(const QString &a, const QString &b, bool isFixedWidth)
{
    const auto holdsBoth = [&](QStringView set) { return set.contains(a[0]) && set.contains(b[0]); };
    return std::ranges::any_of(kConfusable, holdsBoth) ||
           (isFixedWidth && std::ranges::any_of(kConfusableInColumns, holdsBoth));
}

// Others need no say.
bool canBeConfused(const QString &text)
{
    const auto holdsIt = [&](QStringView set) { return set.contains(text[0]); };
    return text.size() == 1 &&
           (std::ranges::any_of(kConfusable, holdsIt) || std::ranges::any_of(kConfusableInColumns, holdsIt));
}

bool isSureMark(const ReadSign &sign)
{
    return !sign.text[0].isLetterOrNumber() && sign.confidence >= kSureOfSign;
}

// A sign with what its shape is compared by.
struct Evidence {
    size_t line;
    size_t sign;
    Shape shape;
    double weight; // most in a word or a number, least among mixed signs
    bool isSettled; // in a word or a number, or a mark that the reader is sure of
};

std::vector<Evidence> evidenceOf(const QImage &ink, const std::vector<ReadLine> &lines)
{
    std::vector<Evidence> all;
    for (size_t l = 0; l < lines.size(); ++l) {
        const ReadLine &line = lines[l];
        for (const Run &run : runsOf(line.signs)) {
            for (size_t s = run.from; s < run.to; ++s) {
                const ReadSign &sign = line.signs[s];
                if (!sign.isAlone || !canBeConfused(sign.text))
                    continue;
                const double weight = std::max(0.05, sign.confidence) * (run.isPlain()    ? 3
                                                                         : run.turns <= 1 ? 1
                                                                                          : 0.5);
                all.push_back({l, s, shapeOf(ink, line.cells[size_t(sign.cell)], line.baseline), weight,
                               run.isPlain() || isSureMark(sign)});
            }
        }
    }
    return all;
}

constexpr double kFaintLikeness = 0.85;  // below, shapes say nothing of each other
constexpr double kLikenessScale = 0.025; // how fast a neighbour's say fades with its unlikeness
constexpr double kClearMajority = 1.2;

} // namespace

void voteByShape(const QImage &ink, std::vector<ReadLine> &lines)
{
    const std::vector<Evidence> all = evidenceOf(ink, lines);
    std::vector<std::pair<size_t, QString>> changes;
    for (size_t i = 0; i < all.size(); ++i) {
        const Evidence &one = all[i];
        if (one.isSettled)
            continue;
        const ReadLine &line = lines[one.line];
        const QString &own = line.signs[one.sign].text;
        QHash<QString, double> votes{{own, one.weight}};
        for (size_t j = 0; j < all.size(); ++j) {
            if (i == j || !haveOneSize(one.shape, all[j].shape))
                continue;
            const QString &other = lines[all[j].line].signs[all[j].sign].text;
            const bool isFixedWidth = line.pitch > 0 && lines[all[j].line].pitch > 0;
            if (other != own && !areConfusable(own, other, isFixedWidth))
                continue;
            const double alike = likeness(one.shape, all[j].shape);
            if (alike > kFaintLikeness)
                votes[other] += all[j].weight * std::exp((alike - 1) / kLikenessScale);
        }
        const auto best = std::max_element(votes.begin(), votes.end());
        if (best.key() != own && best.value() > kClearMajority * votes[own])
            changes.emplace_back(i, best.key());
    }
    for (const auto &[index, text] : changes)
        lines[all[index].line].signs[all[index].sign].text = text;
}
