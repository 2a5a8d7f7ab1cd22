#include "library/model/search_index.h"

#include "base/parallel.h"

#include <QHash>
#include <QThread>
#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>
#include <numeric>

namespace {

// So many places are looked at in some six milliseconds; for fewer, a second thread may come later than the
// first is done where other programs are busy.
constexpr size_t kWorthAThread = 2'000'000;

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() < 128; });
}

} // namespace

SearchIndex::SearchIndex()
{
    m_places.addWord(); // kLineFeed
}

QByteArray SearchIndex::folded(QStringView text)
{
    if (isAscii(text)) {
        QByteArray bytes(text.size(), Qt::Uninitialized);
        char *out = bytes.data();
        for (const QChar letter : text) {
            const auto code = static_cast<char>(letter.unicode());
            *out++ = code >= 'A' && code <= 'Z' ? static_cast<char>(code + 32) : code;
        }
        return bytes;
    }
    return text.toString().normalized(QString::NormalizationForm_C).toCaseFolded().toUtf8();
}

QString SearchIndex::trimmed(const QString &query)
{
    const auto isBlank = [](QChar c) {
        return c == QLatin1Char('\t') || c.category() == QChar::Separator_Space;
    };
    qsizetype from = 0;
    qsizetype to = query.size();
    while (from < to && isBlank(query[from]))
        ++from;
    while (to > from && isBlank(query[to - 1]))
        --to;
    return query.mid(from, to - from);
}

bool SearchIndex::holds(std::span<const QString> fields, const QByteArray &foldedQuery)
{
    return std::any_of(fields.begin(), fields.end(),
                       [&](const QString &field) { return folded(field).contains(foldedQuery); });
}

QByteArrayView SearchIndex::text(Word word) const
{
    const size_t start = m_starts[word - kFirstWord];
    const size_t end =
        word - kFirstWord + 1 < m_starts.size() ? m_starts[word - kFirstWord + 1] : m_words.size();
    return {m_words.data() + start, static_cast<qsizetype>(end - start - 1)};
}

size_t SearchIndex::bucketOf(QByteArrayView word) const
{
    const size_t mask = m_table.size() - 1;
    size_t at = qHashBits(word.data(), static_cast<size_t>(word.size())) & mask;
    while (m_table[at] != 0 && text(m_table[at]) != word)
        at = (at + 1) & mask;
    return at;
}

void SearchIndex::growTable()
{
    m_table.assign(std::max<size_t>(m_table.size() * 2, 1024), 0);
    for (Word word = kFirstWord; word < kFirstWord + m_starts.size(); ++word)
        m_table[bucketOf(text(word))] = word;
}

std::optional<SearchIndex::Word> SearchIndex::known(QByteArrayView word) const
{
    if (m_table.empty())
        return std::nullopt;
    const Word found = m_table[bucketOf(word)];
    return found == 0 ? std::nullopt : std::optional(found);
}

SearchIndex::Word SearchIndex::idOf(QByteArrayView word)
{
    if (m_starts.size() * 2 >= m_table.size())
        growTable();
    Word &bucket = m_table[bucketOf(word)];
    if (bucket == 0) {
        bucket = kFirstWord + static_cast<Word>(m_starts.size());
        m_starts.push_back(static_cast<quint32>(m_words.size()));
        m_words.append(word.data(), static_cast<size_t>(word.size()));
        m_words.push_back('\n');
        m_places.addWord();
        if (word.size() > 1) {
            if (const auto pair = pairOf(word[0], word[1]))
                m_beginnings[*pair].push_back(bucket);
            if (const auto pair = pairOf(word[word.size() - 2], word[word.size() - 1]))
                m_endings[*pair].push_back(bucket);
        }
    }
    return bucket;
}

size_t SearchIndex::letterOf(char letter)
{
    if (letter >= 'a' && letter <= 'z')
        return static_cast<size_t>(letter - 'a');
    return letter >= '0' && letter <= '9' ? static_cast<size_t>(letter - '0') + 26 : kLetters;
}

std::optional<size_t> SearchIndex::pairOf(char one, char other)
{
    const size_t first = letterOf(one);
    const size_t second = letterOf(other);
    return first < kLetters && second < kLetters ? std::optional(first * kLetters + second) : std::nullopt;
}

void SearchIndex::notePairs(const QByteArray &text, Slot slot)
{
    size_t last = kLetters;
    for (const char letter : text) {
        const size_t next = letterOf(letter);
        if (last < kLetters && next < kLetters) {
            Slots &pair = m_pairs[last * kLetters + next];
            if (pair.size() <= slot / 64)
                pair.resize(slot / 64 + 1);
            pair[slot / 64] |= quint64(1) << (slot % 64);
        }
        last = next;
    }
}

SearchIndex::Slot SearchIndex::add(std::span<const QString> fields)
{
    const Slot slot = slotCount();
    Document document;
    document.first = m_end;
    for (const QString &field : fields) {
        const QByteArray bytes = folded(field);
        for (const char byte : bytes) {
            const auto code = static_cast<uchar>(byte);
            if (code < 64)
                document.letters.low |= quint64(1) << code;
            else if (code < 128)
                document.letters.high |= quint64(1) << (code - 64);
        }
        notePairs(bytes, slot);
        qsizetype from = 0;
        for (qsizetype to = 0; to <= bytes.size(); ++to) {
            const bool isEnd = to == bytes.size();
            if (!isEnd && bytes[to] != ' ' && bytes[to] != '\n')
                continue;
            if (to > from)
                m_edges.set(m_end, bytes[from], bytes[to - 1]);
            m_places.note(idOf({bytes.constData() + from, to - from}), slot, m_end++);
            if (!isEnd && bytes[to] == '\n')
                m_places.note(kLineFeed, slot, m_end++);
            from = to + 1;
        }
        ++m_end;
    }
    m_documents.push_back(document);
    return slot;
}

void SearchIndex::remove(Slot slot)
{
    if (!m_documents[slot].isRemoved)
        ++m_removed;
    m_documents[slot].isRemoved = true;
}

// Calls `take` with each word in whose neighbourhood in m_words the pattern occurs; `wordOffset` leads from a
// hit to a letter of the word or the line feed behind it.
template <typename Take>
void SearchIndex::forEachHit(QByteArrayView pattern, qsizetype wordOffset, Take take) const
{
    const char *at = m_words.data();
    const char *end = at + m_words.size();
    size_t index = 0;
    while (const void *hit = memmem(at, static_cast<size_t>(end - at), pattern.data(),
                                    static_cast<size_t>(pattern.size()))) {
        const auto place = static_cast<size_t>(static_cast<const char *>(hit) + wordOffset - m_words.data());
        if (place >= m_words.size())
            return;
        // The first start beyond the hit, which mostly is close.
        size_t step = 1;
        for (; index + step < m_starts.size() && m_starts[index + step] <= place; step *= 2)
            index += step;
        const auto from = m_starts.begin() + static_cast<std::ptrdiff_t>(index);
        const auto to =
            m_starts.begin() + static_cast<std::ptrdiff_t>(std::min(index + step + 1, m_starts.size()));
        index = static_cast<size_t>(std::upper_bound(from, to, place) - m_starts.begin());
        take(kFirstWord + static_cast<Word>(index - 1));
        if (index >= m_starts.size())
            return;
        at = m_words.data() + m_starts[index] - 1; // the line feed before the next word
    }
}

SearchIndex::Slots SearchIndex::findLetter(char letter) const
{
    Slots hits = noSlots();
    const auto code = static_cast<uchar>(letter);
    for (Slot slot = 0; slot < slotCount(); ++slot) {
        const Letters &letters = m_documents[slot].letters;
        const quint64 bit = code < 64 ? letters.low >> code : letters.high >> (code - 64);
        hits[slot / 64] |= (bit & 1) << (slot % 64);
    }
    return hits;
}

SearchIndex::Slots SearchIndex::findInWords(QByteArrayView part) const
{
    Slots hits = noSlots();
    forEachHit(part, 0, [&](Word word) {
        m_places.forEachSlot(word, [&hits](Slot slot) { hits[slot / 64] |= quint64(1) << (slot % 64); });
    });
    return hits;
}

SearchIndex::Part SearchIndex::wholeWord(QByteArrayView word) const
{
    Part part;
    if (const auto exact = known(word))
        part.words.push_back(*exact);
    return part;
}

SearchIndex::Part SearchIndex::wordsAt(EdgeLetters::Edge edge, const QByteArray &letters) const
{
    const bool isFirst = edge == EdgeLetters::Edge::First;
    Part part;
    if (letters.isEmpty()) {
        part.words.resize(m_starts.size());
        std::iota(part.words.begin(), part.words.end(), kFirstWord);
        return part;
    }
    part.edge = edge;
    part.letter = letters.size() == 1 ? EdgeLetters::ownCode(letters[0]) : std::nullopt;
    if (part.letter)
        return part;
    const auto pair = letters.size() < 2
                          ? std::nullopt
                          : (isFirst ? pairOf(letters[0], letters[1])
                                     : pairOf(letters[letters.size() - 2], letters[letters.size() - 1]));
    if (pair) {
        std::ranges::copy_if(isFirst ? m_beginnings[*pair] : m_endings[*pair], std::back_inserter(part.words),
                             [&](Word word) {
                                 return isFirst ? text(word).startsWith(letters)
                                                : text(word).endsWith(letters);
                             });
        return part;
    }
    const auto take = [&part](Word word) { part.words.push_back(word); };
    if (isFirst)
        forEachHit('\n' + letters, 1, take);
    else
        forEachHit(letters + '\n', 0, take);
    return part;
}

std::vector<SearchIndex::Part> SearchIndex::partsOf(const QByteArray &query) const
{
    std::vector<Part> parts;
    qsizetype from = 0;
    for (qsizetype to = 0; to <= query.size(); ++to) {
        const bool isEnd = to == query.size();
        if (!isEnd && query[to] != ' ' && query[to] != '\n')
            continue;
        const QByteArray word = query.mid(from, to - from);
        if (from > 0 && !isEnd)
            parts.push_back(wholeWord(word));
        else
            parts.push_back(wordsAt(isEnd ? EdgeLetters::Edge::First : EdgeLetters::Edge::Last, word));
        if (!isEnd && query[to] == '\n')
            parts.emplace_back().words = {kLineFeed};
        from = to + 1;
    }
    return parts;
}

// The places at which the query begins, narrowed down by one word of it after the other, the rarest first.
SearchIndex::Slots SearchIndex::findPhrase(const QByteArray &query) const
{
    std::vector<Part> parts = partsOf(query);
    std::vector<std::pair<size_t, size_t>> byRarity; // places, number in the query
    for (size_t i = 0; i < parts.size(); ++i) {
        for (const Word word : parts[i].words)
            parts[i].places += m_places.count(word);
        if (parts[i].letter)
            byRarity.emplace_back(m_end, i);
        else if (parts[i].places > 0)
            byRarity.emplace_back(parts[i].places, i);
        else
            return noSlots();
    }
    std::sort(byRarity.begin(), byRarity.end());
    Places places;
    for (const auto &[count, number] : byRarity)
        places = narrowed(places, parts[number], static_cast<Place>(number));
    return slotsOf(places);
}

SearchIndex::Places SearchIndex::narrowed(const Places &places, const Part &part, Place offset) const
{
    if (part.letter)
        return m_edges.narrowed(places, part.edge, *part.letter, offset);
    const std::vector<Word> &words = part.words;
    const auto threads =
        static_cast<size_t>(part.places < kWorthAThread || words.size() < 2
                                ? 1
                                : std::clamp(QThread::idealThreadCount(), 1, 4));
    // Each thread takes words of about as many places, and has bits of its own.
    std::vector<Places> found(threads);
    std::vector<size_t> ends(threads, words.size());
    size_t sum = 0;
    for (size_t i = 0, thread = 0; i < words.size() && thread + 1 < threads; ++i) {
        sum += m_places.count(words[i]);
        if (sum >= part.places * (thread + 1) / threads)
            ends[thread++] = i + 1;
    }
    inParallel(static_cast<int>(threads), [&](int number) {
        const auto thread = static_cast<size_t>(number);
        Places hits((m_end + 63) / 64);
        quint64 *bits = hits.data();
        const quint64 *before = places.data();
        for (size_t i = thread == 0 ? 0 : ends[thread - 1]; i < ends[thread]; ++i) {
            if (places.empty()) {
                m_places.forEachPlace(words[i], [&](Place place) {
                    if (place >= offset)
                        bits[(place - offset) / 64] |= quint64(1) << ((place - offset) % 64);
                });
            } else {
                m_places.forEachPlace(words[i], [&](Place place) {
                    if (place >= offset)
                        bits[(place - offset) / 64] |=
                            before[(place - offset) / 64] & quint64(1) << ((place - offset) % 64);
                });
            }
        }
        found[thread] = std::move(hits);
    });
    for (size_t thread = 1; thread < threads; ++thread) {
        for (size_t i = 0; i < found[0].size(); ++i)
            found[0][i] |= found[thread][i];
    }
    return std::move(found[0]);
}

SearchIndex::Slots SearchIndex::slotsOf(const Places &places) const
{
    Slots hits = noSlots();
    Slot slot = 0;
    for (size_t i = 0; i < places.size(); ++i) {
        for (quint64 bits = places[i]; bits != 0; bits &= bits - 1) {
            const auto place = static_cast<Place>(i * 64 + static_cast<size_t>(std::countr_zero(bits)));
            while (slot + 1 < slotCount() && m_documents[slot + 1].first <= place)
                ++slot;
            hits[slot / 64] |= quint64(1) << (slot % 64);
        }
    }
    return hits;
}

SearchIndex::Slots SearchIndex::find(QStringView text) const
{
    const QByteArray query = folded(text);
    Slots hits;
    if (query.isEmpty())
        hits = all();
    else if (query.contains(' ') || query.contains('\n'))
        hits = findPhrase(query);
    else if (query.size() == 1)
        hits = findLetter(query[0]);
    else if (const auto pair = query.size() == 2 ? pairOf(query[0], query[1]) : std::nullopt)
        hits = m_pairs[*pair];
    else
        hits = findInWords(query);
    hits.resize(noSlots().size());
    if (m_removed > 0) {
        for (Slot slot = 0; slot < slotCount(); ++slot) {
            if (m_documents[slot].isRemoved)
                hits[slot / 64] &= ~(quint64(1) << (slot % 64));
        }
    }
    return hits;
}

SearchIndex::Slots SearchIndex::all() const
{
    Slots hits = noSlots();
    for (Slot slot = 0; slot < slotCount(); ++slot)
        hits[slot / 64] |= quint64(1) << (slot % 64);
    return hits;
}
