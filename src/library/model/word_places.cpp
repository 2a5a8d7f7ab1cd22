#include "library/model/word_places.h"

WordPlaces::Word WordPlaces::addWord()
{
    m_entries.emplace_back();
    return static_cast<Word>(m_entries.size() - 1);
}

void WordPlaces::append(Steps &steps, quint32 number)
{
    // Doubling would leave a third of the memory of all lists unused.
    constexpr size_t kLongest = 5;
    if (steps.capacity() - steps.size() < kLongest)
        steps.reserve(steps.size() + steps.size() / 8 + kLongest);
    for (; number >= 0x80; number >>= 7)
        steps.push_back(static_cast<uchar>(number | 0x80));
    steps.push_back(static_cast<uchar>(number));
}

void WordPlaces::note(Word word, Slot slot, Place place)
{
    Entry &entry = m_entries[word];
    if (entry.documents > 0) {
        if (entry.list == kNoList) {
            entry.list = static_cast<quint32>(m_lists.size());
            List &list = m_lists.emplace_back();
            append(list.documents, entry.lastSlot);
            append(list.places, entry.lastPlace);
            list.count = 1;
        }
        List &list = m_lists[entry.list];
        append(list.places, place - entry.lastPlace);
        ++list.count;
        if (slot != entry.lastSlot)
            append(list.documents, slot - entry.lastSlot);
    }
    if (entry.documents == 0 || slot != entry.lastSlot)
        ++entry.documents;
    entry.lastSlot = slot;
    entry.lastPlace = place;
}
