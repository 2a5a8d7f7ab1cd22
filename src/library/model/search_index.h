#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

// Finds the documents that contain a text, whatever its case, as fast for a rare text as for a common one. A
// document has fields; no match reaches from one into another.
//
// The words of all documents, split at blanks and line feeds, are kept once each, and for each word the
// documents that hold it; so a query of one word is looked up among the words. A query of several also needs
// the order of words, which is kept for each document. Documents have slots, in order of adding; a changed
// document is removed and added anew. Not for use by two threads at a time, but a const one may be read by
// any number.
class SearchIndex {
public:
    using Slot = quint32;
    // One bit a slot.
    using Slots = std::vector<quint64>;

    Slot add(std::span<const QString> fields);
    void remove(Slot slot);
    // All slots that were ever given, the removed ones included.
    Slot slotCount() const { return static_cast<Slot>(m_documents.size()); }
    Slot removedCount() const { return m_removed; }

    // The documents that hold the query as it stands, blanks included. An empty one is in all of them. When
    // it begins with an earlier query, only what that found need be looked at: `within`.
    Slots find(QStringView query, const Slots *within = nullptr) const;
    static bool contains(const Slots &hits, Slot slot) { return hits[slot / 64] >> (slot % 64) & 1; }

    // What two texts that differ only in case have in common.
    static QByteArray folded(QStringView text);
    // A query as it is searched for: without blanks and tabs around it. Line feeds stay.
    static QString trimmed(const QString &query);
    // The same test for one document alone, without any index.
    static bool holds(std::span<const QString> fields, const QByteArray &foldedQuery);

private:
    using Word = quint32;

    // The documents of a word: the steps from one to the next, as numbers of 7 bits a byte.
    struct Postings {
        Slot last = 0;
        quint32 count = 0;
        std::vector<uchar> steps; // empty for a single document, which is `last`
    };
    struct Letters {
        quint64 low = 0;  // code points up to 63
        quint64 high = 0; // and up to 127
    };
    struct Document {
        const quint16 *words = nullptr;
        quint32 length = 0; // in units of 16 bits
        Letters letters;
        bool isRemoved = false;
    };
    // What stands between two words beside a blank.
    static constexpr Word kLineFeed = 0;
    static constexpr Word kFieldEnd = 1;
    static constexpr Word kFirstWord = 2;

    // Letters and digits, so that each pair of them can have its documents kept.
    static constexpr size_t kLetters = 36;

    struct Query;

    Word idOf(QByteArrayView word);
    std::optional<Word> known(QByteArrayView word) const;
    QByteArrayView text(Word word) const;
    size_t bucketOf(QByteArrayView word) const;
    void growTable();
    void note(Word word, Slot slot);
    void append(Word word);
    void notePairs(const QByteArray &text, Slot slot);
    static size_t letterOf(char letter);
    const quint16 *store(const std::vector<quint16> &words);

    void collect(Word word, Slots &hits) const;
    template <typename Take>
    void forEachHit(QByteArrayView pattern, qsizetype wordOffset, Take take) const;
    Slots findLetter(char letter) const;
    Slots findInWords(QByteArrayView part) const;
    // For each word of the query those that it can stand for; and for each line feed itself.
    std::vector<std::vector<Word>> choicesOf(const QByteArray &query) const;
    Slots findPhrase(const QByteArray &query, const Slots *within) const;
    Slots verified(const Slots &candidates, const Query &query) const;
    static bool holds(const Document &document, const Query &query);
    Slots all() const;
    Slots noSlots() const { return Slots((m_documents.size() + 63) / 64); }

    // All words, each between two line feeds.
    std::string m_words = "\n";
    std::vector<quint32> m_starts; // of each word in m_words, less the first two ids
    std::vector<Word> m_table;     // open addressing; 0 is free
    std::vector<Postings> m_postings;
    std::vector<Document> m_documents;
    std::vector<std::unique_ptr<quint16[]>> m_blocks;
    size_t m_blockSize = 0;
    size_t m_blockUsed = 0;
    std::vector<quint16> m_scratch;
    std::vector<Slots> m_pairs = std::vector<Slots>(kLetters * kLetters);
    Slot m_removed = 0;
};
