#pragma once

#include <QtGlobal>
#include <algorithm>
#include <limits>
#include <vector>

// Where words stand. All words of all documents, separators between them too, have places on one axis, one
// after the other; words are numbers from 0 on. For each word are kept the documents that hold it and its
// places, both as steps from one to the next of 7 bits a byte, so that a word that is in every line takes a
// byte for each of its places, and a word that occurs once takes no list at all.
class WordPlaces {
public:
    using Word = quint32;
    using Slot = quint32;
    using Place = quint32;

    Word addWord();
    // Slots and places never go down from one call to the next.
    void note(Word word, Slot slot, Place place);
    // A word without documents has none.
    quint32 count(Word word) const
    {
        const Entry &entry = m_entries[word];
        return entry.list == kNoList ? entry.documents : m_lists[entry.list].count;
    }

    template <typename Take>
    void forEachSlot(Word word, Take take) const
    {
        forEach(word, &List::documents, &Entry::lastSlot, take);
    }
    template <typename Take>
    void forEachPlace(Word word, Take take) const
    {
        forEach(word, &List::places, &Entry::lastPlace, take);
    }

private:
    using Steps = std::vector<uchar>;
    static constexpr quint32 kNoList = std::numeric_limits<quint32>::max();

    struct Entry {
        Slot lastSlot = 0;
        Place lastPlace = 0;
        quint32 documents = 0; // how many
        quint32 list = kNoList;
    };
    struct List {
        Steps documents;
        Steps places;
        quint32 count = 0; // places
    };

    static void append(Steps &steps, quint32 number);
    // Of a word that occurs once, what is kept beside the lists.
    template <typename Take>
    void forEach(Word word, Steps List::*steps, quint32 Entry::*only, Take take) const
    {
        const Entry &entry = m_entries[word];
        if (entry.list != kNoList)
            forEachStep(m_lists[entry.list].*steps, take);
        else if (entry.documents > 0)
            take(entry.*only);
    }
    template <typename Take>
    static void forEachStep(const Steps &steps, Take take)
    {
        quint32 value = 0;
        const uchar *at = steps.data();
        const uchar *end = at + steps.size();
        while (at < end) {
            quint32 step = *at & 0x7f;
            for (int shift = 7; *at++ & 0x80; shift += 7)
                step |= static_cast<quint32>(*at & 0x7f) << shift;
            value += step;
            take(value);
        }
    }

    std::vector<Entry> m_entries;
    std::vector<List> m_lists;
};
