#include "platform/recognition/weave.h"

namespace {

struct Word {
    size_t from;
    size_t to;
    double left;
    double right;
};

std::vector<Word> wordsOf(const std::vector<ReadSign> &signs)
{
    std::vector<Word> words;
    for (size_t i = 0; i < signs.size(); ++i) {
        if (words.empty() || signs[i].blankBefore)
            words.push_back({i, i, signs[i].box.left(), signs[i].box.right()});
        words.back().to = i + 1;
        words.back().right = std::max(words.back().right, signs[i].box.right());
    }
    return words;
}

// What both readings have between two common blanks.
struct Stretch {
    std::vector<ReadSign> first;
    std::vector<ReadSign> second;
};

std::vector<Stretch> stretchesOf(const std::vector<ReadSign> &first, const std::vector<ReadSign> &second)
{
    const std::vector<Word> a = wordsOf(first);
    const std::vector<Word> b = wordsOf(second);
    std::vector<Stretch> stretches;
    double end = 0;
    const auto begins = [&](const Word &word) {
        // Boxes of neighbours may touch; a word that lies in the stretch by its half is of it.
        return stretches.empty() || (word.left + word.right) / 2 > end;
    };
    for (size_t i = 0, k = 0; i < a.size() || k < b.size();) {
        const bool isFirst = k == b.size() || (i < a.size() && a[i].left <= b[k].left);
        const Word &word = isFirst ? a[i++] : b[k++];
        if (begins(word)) {
            stretches.emplace_back();
            end = word.right;
        }
        end = std::max(end, word.right);
        auto &signs = isFirst ? stretches.back().first : stretches.back().second;
        const auto &source = isFirst ? first : second;
        signs.insert(signs.end(), source.begin() + long(word.from), source.begin() + long(word.to));
    }
    return stretches;
}

void append(std::vector<ReadSign> &signs, const std::vector<ReadSign> &more)
{
    signs.insert(signs.end(), more.begin(), more.end());
}

// Boxes of signs are rough: what only one reading has is a part of what stands before it.
std::vector<Stretch> paired(const std::vector<Stretch> &all)
{
    std::vector<Stretch> pairs;
    for (const Stretch &stretch : all) {
        const bool isWhole = !stretch.first.empty() && !stretch.second.empty();
        const bool isOpen = !pairs.empty() && (pairs.back().first.empty() || pairs.back().second.empty());
        if (pairs.empty() || (isWhole && !isOpen)) {
            pairs.push_back(stretch);
            continue;
        }
        append(pairs.back().first, stretch.first);
        append(pairs.back().second, stretch.second);
    }
    return pairs;
}

bool isOfWords(const std::vector<ReadSign> &signs)
{
    int letters = 0;
    for (const Run &run : runsOf(signs)) {
        if (run.digits > 0 || run.turns > 0)
            return false;
        letters += run.letters;
    }
    return 2 * letters > int(signs.size());
}

double certaintyOf(const std::vector<ReadSign> &signs)
{
    double sum = 0;
    for (const ReadSign &sign : signs)
        sum += sign.confidence;
    return signs.empty() ? 0 : sum / double(signs.size());
}

} // namespace

std::vector<ReadSign> woven(const std::vector<ReadSign> &first, const std::vector<ReadSign> &inItsLanguage)
{
    std::vector<ReadSign> line;
    for (Stretch &stretch : paired(stretchesOf(first, inItsLanguage))) {
        const bool isSecond = isOfWords(stretch.second) || stretch.first.empty() ||
                              certaintyOf(stretch.second) > certaintyOf(stretch.first);
        std::vector<ReadSign> &chosen = isSecond && !stretch.second.empty() ? stretch.second : stretch.first;
        chosen.front().blankBefore = !line.empty();
        line.insert(line.end(), chosen.begin(), chosen.end());
    }
    return line;
}
