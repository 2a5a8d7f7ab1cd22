#include "platform/recognition/line_languages.h"

#include "platform/recognition/language_guess.h"
#include "platform/recognition/weave.h"

namespace {

constexpr int kFewestLetters = 4; // of words; fewer tell no language
// Of letters in words: their language reads a line with .994 to .997, another mostly with .984 to .993.
constexpr double kSureOfLanguage = 0.9945;
// Readings of words that two languages share differ by less.
constexpr double kAlike = 0.001;
// So many lines in a row, and the next is read in their language first.
constexpr int kStreak = 3;

struct Reading {
    std::vector<ReadSign> signs;
    QString words;
    int letters = 0;       // in words
    double certainty = 0;  // the mean of these letters
    bool hasCodes = false; // letters and digits in one
};

Reading readingOf(std::vector<ReadSign> signs)
{
    Reading reading;
    for (const Run &run : runsOf(signs)) {
        reading.hasCodes |= run.letters > 0 && run.digits > 0;
        if (run.digits > 0 || run.letters < 2)
            continue;
        reading.words += ' ';
        for (size_t i = run.from; i < run.to; ++i) {
            if (run.isPlain())
                reading.words += signs[i].text;
            reading.certainty += signs[i].confidence;
            ++reading.letters;
        }
    }
    reading.certainty /= std::max(reading.letters, 1);
    reading.signs = std::move(signs);
    return reading;
}

class PageInLanguages {
public:
    using Read = std::function<std::optional<std::vector<ReadSign>>(qsizetype line, const QString &language)>;

    PageInLanguages(const QStringList &languages, Read read, qsizetype lines)
        : m_languages(languages), m_read(std::move(read)), m_lines(size_t(lines))
    {
        for (qsizetype line = 0; line < lines; ++line)
            readLine(line);
        followMost();
    }

    std::vector<ReadSign> &signs(qsizetype line) { return m_lines[size_t(line)].signs; }

private:
    struct Line {
        QHash<QString, Reading> readings; // by language
        std::vector<ReadSign> signs;
        QString guess;
        QString language; // other than the first that it was found to be in
        int letters = 0;
        double certainty = 0;
        bool isDoubted() const { return letters > 0 && certainty < kSureOfLanguage; }
    };

    const Reading *reading(qsizetype line, const QString &language);
    QString guessOf(const Reading &reading) const;
    void readLine(qsizetype line);
    void readIn(qsizetype line, const QString &language, double least);
    void settle(Line &line, const QString &language, const Reading &reading);
    void followMost();

    const QStringList &m_languages;
    Read m_read;
    std::vector<Line> m_lines;
    QMap<QString, int> m_letters; // in the lines of each other language
    QString m_last;               // of the lines before, and how many there were in a row
    int m_streak = 0;
};

const Reading *PageInLanguages::reading(qsizetype line, const QString &language)
{
    auto &readings = m_lines[size_t(line)].readings;
    if (const auto known = readings.constFind(language); known != readings.constEnd())
        return &*known;
    auto signs = m_read(line, language);
    return signs ? &*readings.insert(language, readingOf(std::move(*signs))) : nullptr;
}

QString PageInLanguages::guessOf(const Reading &reading) const
{
    if (m_languages.size() < 2 || reading.letters < kFewestLetters)
        return {};
    return likelyLanguage(reading.words, m_languages);
}

void PageInLanguages::settle(Line &line, const QString &language, const Reading &reading)
{
    line.language = language;
    line.letters = reading.letters;
    line.certainty = reading.certainty;
    m_letters[language] += reading.letters;
}

void PageInLanguages::readLine(qsizetype at)
{
    Line &line = m_lines[size_t(at)];
    if (m_streak >= kStreak) {
        const Reading *const likely = reading(at, m_last);
        if (likely && !likely->hasCodes && likely->certainty >= kSureOfLanguage &&
            guessOf(*likely) == m_last) {
            line.signs = likely->signs;
            settle(line, m_last, *likely);
            return;
        }
    }
    const Reading *const first = reading(at, m_languages.first());
    if (!first)
        return;
    line.signs = first->signs;
    line.letters = first->letters;
    line.certainty = first->certainty;
    line.guess = guessOf(*first);
    if (line.isDoubted() && !line.guess.isEmpty() && line.guess != m_languages.first())
        readIn(at, line.guess, line.certainty);
    if (line.letters < kFewestLetters)
        return;
    m_streak = line.language == m_last ? m_streak + 1 : 1;
    m_last = line.language;
    if (m_last.isEmpty())
        m_streak = 0;
}

// Takes the reading in another language where that is surer of its letters.
void PageInLanguages::readIn(qsizetype at, const QString &language, double least)
{
    Line &line = m_lines[size_t(at)];
    const Reading *const other = reading(at, language);
    if (!other || other->certainty <= least)
        return;
    line.signs = woven(line.signs, other->signs);
    settle(line, language, *other);
}

// What was found of other lines helps with short ones, and with those whose language was guessed wrongly.
void PageInLanguages::followMost()
{
    if (m_letters.isEmpty())
        return;
    const QStringList found = m_letters.keys();
    const QString usual =
        *std::ranges::max_element(found, {}, [this](const QString &name) { return m_letters[name]; });
    int most = m_letters[usual];
    int others = 0;
    for (const Line &line : m_lines)
        if (line.language.isEmpty())
            (line.guess == usual ? most : others) += line.letters;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        Line &line = m_lines[i];
        if (!line.language.isEmpty() || line.signs.empty())
            continue;
        if (most > others)
            readIn(qsizetype(i), usual, line.certainty - kAlike);
        for (const QString &language : found)
            if (line.isDoubted() && line.language != language)
                readIn(qsizetype(i), language, line.certainty);
    }
}

} // namespace

std::vector<ReadLine> LineLanguages::read(const QImage &ink, const QList<TextRegion> &regions,
                                          TesseractReader::Pace pace)
{
    const auto read = [&](qsizetype line, const QString &language) -> std::optional<std::vector<ReadSign>> {
        TesseractReader *const reader = m_readerOf(m_names.indexOf(language));
        if (!reader)
            return {};
        return reader->read(ink, regions[line], pace);
    };
    PageInLanguages page(m_names, read, regions.size());
    std::vector<ReadLine> lines;
    for (qsizetype i = 0; i < regions.size(); ++i) {
        if (page.signs(i).empty())
            continue;
        lines.emplace_back();
        lines.back().region = regions[i];
        lines.back().signs = std::move(page.signs(i));
    }
    return lines;
}
