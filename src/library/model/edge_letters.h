#pragma once

#include <QtGlobal>
#include <array>
#include <optional>
#include <vector>

// With which letter the word at each place begins, and with which it ends, as bits of a number for each letter:
// so the places of all words with a letter, which are too many to go through one by one, are found 64 at a
// time.
class EdgeLetters {
public:
    enum class Edge { First, Last };
    using Code = quint32;
    // One bit a place.
    using Places = std::vector<quint64>;

    // Nothing for a letter that shares its code with others.
    static std::optional<Code> ownCode(char letter);
    static Code code(char letter);

    // Places come in their order; one that is left out has no letters.
    void set(quint32 place, char first, char last);
    // Of the places, or of all when there are none given, those that such a word stands `offset` behind.
    Places narrowed(const Places &places, Edge edge, Code code, quint32 offset) const;

private:
    static constexpr int kBits = 5;
    using Block = std::array<quint64, kBits>; // of 64 places

    static quint64 matches(const std::vector<Block> &blocks, size_t number, Code code);

    std::vector<Block> m_first;
    std::vector<Block> m_last;
};
