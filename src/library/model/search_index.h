#pragma once

#include "library/model/edge_letters.h"
#include "library/model/word_places.h"

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <optional>
#include <span>
#include <string>
#include <vector>

// Finds the documents that contain a text, whatever its case, as fast for a rare text as for a common one. A
// document has fields; no match reaches from one into another.
//
// The words of all documents, split at blanks and line feeds, are kept once each, and for each word the
// documents that hold it and its places in them; so a query of one word is looked up among the words, and one
// of several is found where their places follow each other. Documents have slots, in order of adding; a
// changed document is removed and added anew. Not for use by two threads at a time, but a const one may be
// read by any number.
class SearchIndex {
public:
    using Slot = quint32;
    // One bit a slot.
    using Slots = std::vector<quint64>;

    SearchIndex();

    Slot add(std::span<const QString> fields);
    void remove(Slot slot);
    // All slots that were ever given, the removed ones included.
    Slot slotCount() const { return static_cast<Slot>(m_documents.size()); }
    Slot removedCount() const { return m_removed; }

    // The documents that hold the query as it stands, blanks included. An empty one is in all of them.
    Slots find(QStringView query) const;
    static bool contains(const Slots &hits, Slot slot) { return hits[slot / 64] >> (slot % 64) & 1; }

    // What two texts that differ only in case have in common.
    static QByteArray folded(QStringView text);
    // A query as it is searched for: without blanks and tabs around it. Line feeds stay.
    static QString trimmed(const QString &query);
    // The same test for one document alone, without any index.
    static bool holds(std::span<const QString> fields, const QByteArray &foldedQuery);

private:
    using Word = WordPlaces::Word;
    using Place = WordPlaces::Place;

    struct Letters {
        quint64 low = 0;  // code points up to 63
        quint64 high = 0; // and up to 127
    };
    struct Document {
        Letters letters;
        Place first = 0; // of its places
        bool isRemoved = false;
    };
    // What stands between two words beside a blank. The end of a field has a place, too, but is no word.
    static constexpr Word kLineFeed = 0;
    static constexpr Word kFirstWord = 1;

    // Letters and digits, so that each pair of them can have its documents kept.
    static constexpr size_t kLetters = 36;

    Word idOf(QByteArrayView word);
    std::optional<Word> known(QByteArrayView word) const;
    QByteArrayView text(Word word) const;
    size_t bucketOf(QByteArrayView word) const;
    void growTable();
    void notePairs(const QByteArray &text, Slot slot);
    static size_t letterOf(char letter);
    static std::optional<size_t> pairOf(char one, char other);

    template <typename Take>
    void forEachHit(QByteArrayView pattern, qsizetype wordOffset, Take take) const;
    Slots findLetter(char letter) const;
    Slots findInWords(QByteArrayView part) const;
    // One of a query's words, and what it can stand for: these words, or all with this letter at that edge.
    struct Part {
        std::vector<Word> words;
        std::optional<EdgeLetters::Code> letter;
        EdgeLetters::Edge edge = EdgeLetters::Edge::First;
        size_t places = 0; // as far as they are counted
    };
    // A line feed is one, too.
    std::vector<Part> partsOf(const QByteArray &query) const;
    Part wholeWord(QByteArrayView word) const;
    Part wordsAt(EdgeLetters::Edge edge, const QByteArray &letters) const;
    Slots findPhrase(const QByteArray &query) const;
    using Places = EdgeLetters::Places;
    // Those of the places, or all at first, that one of the words stands so far behind.
    Places narrowed(const Places &places, const Part &part, Place offset) const;
    Slots slotsOf(const Places &places) const;
    Slots all() const;
    Slots noSlots() const { return Slots((m_documents.size() + 63) / 64); }

    // All words, each between two line feeds.
    std::string m_words = "\n";
    std::vector<quint32> m_starts; // of each word in m_words, less the first id
    std::vector<Word> m_table;     // open addressing; 0 is free
    // The words by the two letters that they begin and end with.
    using ByLetters = std::vector<std::vector<Word>>;
    ByLetters m_beginnings = ByLetters(kLetters * kLetters);
    ByLetters m_endings = ByLetters(kLetters * kLetters);
    WordPlaces m_places;
    EdgeLetters m_edges;
    Place m_end = 0; // of all places
    std::vector<Document> m_documents;
    std::vector<Slots> m_pairs = std::vector<Slots>(kLetters * kLetters);
    Slot m_removed = 0;
};
