#include "library/model/search_index.h"

#include "base/parallel.h"

#include <QHash>
#include <QThread>
#include <algorithm>
#include <bit>
#include <cstring>

namespace {

// In a document, numbers of words below kLong take one unit; others two of 14 bits each, which tell by their
// upper bits which is which. So a word can be read from its beginning and from its end.
constexpr quint16 kLong = 0x8000;
constexpr quint16 kLongRest = 0xc000;
constexpr int kLongBits = 14;
constexpr quint32 kLongMask = (1 << kLongBits) - 1;
constexpr size_t kBlockUnits = 1 << 20;
// Documents to look through before a second thread pays, and so few that looking up more words doesn't.
constexpr size_t kWorthAThread = 4000;
constexpr size_t kFewEnough = 500;

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() < 128; });
}

class WordSet {
public:
    explicit WordSet(size_t count) : m_bits((count + 63) / 64) {}
    void insert(quint32 word) { m_bits[word / 64] |= quint64(1) << (word % 64); }
    bool contains(quint32 word) const { return m_bits[word / 64] >> (word % 64) & 1; }

private:
    std::vector<quint64> m_bits;
};

size_t count(const SearchIndex::Slots &hits)
{
    size_t sum = 0;
    for (const quint64 bits : hits)
        sum += static_cast<size_t>(std::popcount(bits));
    return sum;
}

} // namespace

// Words in a row, each one of a set: of the first only the end is asked for, of the last only the beginning.
struct SearchIndex::Query {
    std::vector<WordSet> words;
    // The one to look for, and by its first unit whether that can begin one of its set.
    size_t anchor = 0;
    std::vector<uchar> isAnchor = std::vector<uchar>(1 << 16);
};

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
        m_postings.emplace_back();
    }
    return bucket;
}

void SearchIndex::note(Word word, Slot slot)
{
    Postings &postings = m_postings[word - kFirstWord];
    if (postings.count > 0 && postings.last == slot)
        return;
    const auto append = [&postings](quint32 number) {
        for (; number >= 0x80; number >>= 7)
            postings.steps.push_back(static_cast<uchar>(number | 0x80));
        postings.steps.push_back(static_cast<uchar>(number));
    };
    if (postings.count == 1)
        append(postings.last);
    if (postings.count >= 1)
        append(slot - postings.last);
    postings.last = slot;
    ++postings.count;
}

void SearchIndex::append(Word word)
{
    if (word < kLong) {
        m_scratch.push_back(static_cast<quint16>(word));
        return;
    }
    m_scratch.push_back(static_cast<quint16>(kLong | word >> kLongBits));
    m_scratch.push_back(static_cast<quint16>(kLongRest | (word & kLongMask)));
}

size_t SearchIndex::letterOf(char letter)
{
    if (letter >= 'a' && letter <= 'z')
        return static_cast<size_t>(letter - 'a');
    return letter >= '0' && letter <= '9' ? static_cast<size_t>(letter - '0') + 26 : kLetters;
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

const quint16 *SearchIndex::store(const std::vector<quint16> &words)
{
    if (m_blockUsed + words.size() > m_blockSize) {
        m_blockSize = std::max(kBlockUnits, words.size());
        m_blockUsed = 0;
        m_blocks.emplace_back(new quint16[m_blockSize]);
    }
    quint16 *at = m_blocks.back().get() + m_blockUsed;
    std::copy(words.begin(), words.end(), at);
    m_blockUsed += words.size();
    return at;
}

SearchIndex::Slot SearchIndex::add(std::span<const QString> fields)
{
    const Slot slot = slotCount();
    Document document;
    m_scratch.clear();
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
            const Word word = idOf({bytes.constData() + from, to - from});
            note(word, slot);
            append(word);
            if (!isEnd && bytes[to] == '\n')
                append(kLineFeed);
            from = to + 1;
        }
        append(kFieldEnd);
    }
    document.words = store(m_scratch);
    document.length = static_cast<quint32>(m_scratch.size());
    m_documents.push_back(document);
    return slot;
}

void SearchIndex::remove(Slot slot)
{
    if (!m_documents[slot].isRemoved)
        ++m_removed;
    m_documents[slot].isRemoved = true;
}

void SearchIndex::collect(Word word, Slots &hits) const
{
    const Postings &postings = m_postings[word - kFirstWord];
    if (postings.count == 1) {
        hits[postings.last / 64] |= quint64(1) << (postings.last % 64);
        return;
    }
    Slot slot = 0;
    const uchar *at = postings.steps.data();
    const uchar *end = at + postings.steps.size();
    while (at < end) {
        quint32 step = *at & 0x7f;
        for (int shift = 7; *at++ & 0x80; shift += 7)
            step |= static_cast<quint32>(*at & 0x7f) << shift;
        slot += step;
        hits[slot / 64] |= quint64(1) << (slot % 64);
    }
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
    forEachHit(part, 0, [&](Word word) { collect(word, hits); });
    return hits;
}

bool SearchIndex::holds(const Document &document, const Query &query)
{
    const quint16 *begin = document.words;
    const quint16 *end = begin + document.length;
    const auto next = [](const quint16 *&at) -> Word {
        const Word unit = *at++;
        return unit < kLong ? unit : (unit & kLongMask) << kLongBits | (*at++ & kLongMask);
    };
    const auto previous = [](const quint16 *&at) -> Word {
        const Word unit = *--at;
        return unit < kLong ? unit : (unit & kLongMask) | (*--at & kLongMask) << kLongBits;
    };
    const auto isHit = [&](const quint16 *at) {
        const quint16 *forward = at;
        for (size_t i = query.anchor; i < query.words.size(); ++i) {
            if (forward >= end || !query.words[i].contains(next(forward)))
                return false;
        }
        for (size_t i = query.anchor; i-- > 0;) {
            if (at <= begin || !query.words[i].contains(previous(at)))
                return false;
        }
        return true;
    };
    const uchar *isAnchor = query.isAnchor.data();
    const quint16 *at = begin;
    // Four at a time: most are none.
    for (; at + 4 <= end; at += 4) {
        if (!(isAnchor[at[0]] | isAnchor[at[1]] | isAnchor[at[2]] | isAnchor[at[3]]))
            continue;
        for (int i = 0; i < 4; ++i) {
            if (isAnchor[at[i]] && isHit(at + i))
                return true;
        }
    }
    for (; at < end; ++at) {
        if (isAnchor[*at] && isHit(at))
            return true;
    }
    return false;
}

SearchIndex::Slots SearchIndex::verified(const Slots &candidates, const Query &query) const
{
    std::vector<Slot> hits;
    for (size_t i = 0; i < candidates.size(); ++i) {
        for (quint64 bits = candidates[i]; bits != 0; bits &= bits - 1)
            hits.push_back(static_cast<Slot>(i * 64 + static_cast<size_t>(std::countr_zero(bits))));
    }
    // Each thread has a part of its own, and the result is put together afterwards: two hits may share a word
    // of bits.
    std::vector<char> isHit(hits.size());
    const int threads = hits.size() < kWorthAThread ? 1 : std::clamp(QThread::idealThreadCount(), 1, 8);
    inParallel(threads, [&](int thread) {
        const size_t from = hits.size() * static_cast<size_t>(thread) / static_cast<size_t>(threads);
        const size_t to = hits.size() * static_cast<size_t>(thread + 1) / static_cast<size_t>(threads);
        for (size_t i = from; i < to; ++i)
            isHit[i] = holds(m_documents[hits[i]], query);
    });
    Slots result = noSlots();
    for (size_t i = 0; i < hits.size(); ++i)
        result[hits[i] / 64] |= static_cast<quint64>(isHit[i]) << (hits[i] % 64);
    return result;
}

std::vector<std::vector<SearchIndex::Word>> SearchIndex::choicesOf(const QByteArray &query) const
{
    std::vector<std::vector<Word>> choices;
    qsizetype from = 0;
    for (qsizetype to = 0; to <= query.size(); ++to) {
        const bool isEnd = to == query.size();
        if (!isEnd && query[to] != ' ' && query[to] != '\n')
            continue;
        const QByteArray word = query.mid(from, to - from);
        std::vector<Word> &found = choices.emplace_back();
        const auto take = [&found](Word hit) { found.push_back(hit); };
        if (from > 0 && !isEnd) {
            if (const auto exact = known(word))
                found.push_back(*exact);
        } else if (word.isEmpty()) {
            for (Word any = kFirstWord; any < kFirstWord + m_starts.size(); ++any)
                found.push_back(any);
        } else if (from == 0) {
            forEachHit(word + '\n', 0, take);
        } else {
            forEachHit('\n' + word, 1, take);
        }
        if (!isEnd && query[to] == '\n')
            choices.push_back({kLineFeed});
        from = to + 1;
    }
    return choices;
}

// First the documents that hold the words in whatever order, by what is known of the rarest of them; then
// those among them that hold them in a row.
SearchIndex::Slots SearchIndex::findPhrase(const QByteArray &text, const Slots *within) const
{
    const auto choices = choicesOf(text);
    std::vector<std::pair<size_t, size_t>> byRarity; // documents, place in the query
    Query query;
    for (size_t i = 0; i < choices.size(); ++i) {
        WordSet &set = query.words.emplace_back(kFirstWord + m_starts.size());
        size_t documents = 0;
        for (const Word word : choices[i]) {
            set.insert(word);
            if (word >= kFirstWord)
                documents += m_postings[word - kFirstWord].count;
        }
        if (choices[i].empty())
            return noSlots();
        if (choices[i].front() != kLineFeed)
            byRarity.emplace_back(documents, i);
    }
    std::sort(byRarity.begin(), byRarity.end());
    query.anchor = byRarity.front().second;
    for (const Word word : choices[query.anchor])
        query.isAnchor[word < kLong ? word : kLong | word >> kLongBits] = 1;

    Slots candidates = within ? *within : all();
    for (const auto &[documents, place] : byRarity) {
        // What is in so many documents hardly leaves one out.
        if (documents > 2 * m_documents.size() || count(candidates) < kFewEnough)
            break;
        Slots with = noSlots();
        for (const Word word : choices[place])
            collect(word, with);
        for (size_t i = 0; i < candidates.size(); ++i)
            candidates[i] &= with[i];
    }
    return verified(candidates, query);
}

SearchIndex::Slots SearchIndex::find(QStringView text, const Slots *within) const
{
    const QByteArray query = folded(text);
    Slots hits;
    if (query.isEmpty())
        hits = all();
    else if (query.contains(' ') || query.contains('\n'))
        hits = findPhrase(query, within);
    else if (query.size() == 1)
        hits = findLetter(query[0]);
    else if (query.size() == 2 && letterOf(query[0]) < kLetters && letterOf(query[1]) < kLetters)
        hits = m_pairs[letterOf(query[0]) * kLetters + letterOf(query[1])];
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
