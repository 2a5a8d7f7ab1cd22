#include "library/model/edge_letters.h"

namespace {

constexpr EdgeLetters::Code kOther = 27;

} // namespace

EdgeLetters::Code EdgeLetters::code(char letter)
{
    return ownCode(letter).value_or(kOther);
}

// 0 is for no letter.
std::optional<EdgeLetters::Code> EdgeLetters::ownCode(char letter)
{
    if (letter >= 'a' && letter <= 'z')
        return static_cast<Code>(letter - 'a') + 1;
    // With which most numbers begin, as years do.
    return letter >= '0' && letter <= '3' ? std::optional(kOther + 1 + static_cast<Code>(letter - '0'))
                                          : std::nullopt;
}

void EdgeLetters::set(quint32 place, char first, char last)
{
    const size_t block = place / 64;
    if (block >= m_first.size()) {
        m_first.resize(block + 1);
        m_last.resize(block + 1);
    }
    for (int bit = 0; bit < kBits; ++bit) {
        const auto at = static_cast<size_t>(bit);
        m_first[block][at] |= quint64(code(first) >> bit & 1) << (place % 64);
        m_last[block][at] |= quint64(code(last) >> bit & 1) << (place % 64);
    }
}

quint64 EdgeLetters::matches(const std::vector<Block> &blocks, size_t number, Code code)
{
    if (number >= blocks.size())
        return 0;
    quint64 hits = ~quint64(0);
    for (size_t bit = 0; bit < kBits; ++bit)
        hits &= code >> bit & 1 ? blocks[number][bit] : ~blocks[number][bit];
    return hits;
}

EdgeLetters::Places EdgeLetters::narrowed(const Places &places, Edge edge, Code code, quint32 offset) const
{
    const std::vector<Block> &blocks = edge == Edge::First ? m_first : m_last;
    Places found(places.empty() ? blocks.size() : places.size());
    const size_t skipped = offset / 64;
    const quint32 shift = offset % 64;
    for (size_t i = 0; i < found.size(); ++i) {
        if (!places.empty() && places[i] == 0)
            continue;
        quint64 hits = matches(blocks, i + skipped, code) >> shift;
        if (shift > 0)
            hits |= matches(blocks, i + skipped + 1, code) << (64 - shift);
        found[i] = places.empty() ? hits : places[i] & hits;
    }
    return found;
}
