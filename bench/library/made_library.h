#pragma once

#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <vector>

// Texts as captures have them: words of a language by Zipf's law, and some that are read only once, such as
// numbers and slips of the recogniser.
class MadeTexts {
public:
    explicit MadeTexts(quint32 seed = 1) : m_random(seed)
    {
        const QStringList syllables =
            QStringLiteral("er in an re the on ti es or te co de ra al en st nd is ar at "
                           "it ic le ing ed ment pro con ter ver per com pre able")
                .split(QLatin1Char(' '));
        m_words = QStringLiteral(
                      "the of and to in is for on with as by at from file edit view window open save error "
                      "settings user name date search")
                      .split(QLatin1Char(' '));
        while (m_words.size() < 60000) {
            QString word;
            for (int n = 1 + m_random.bounded(4); n > 0; --n)
                word += syllables[m_random.bounded(static_cast<int>(syllables.size()))];
            m_words.append(word);
        }
        double sum = 0;
        for (qsizetype i = 0; i < m_words.size(); ++i)
            m_shares.push_back(sum += 1.0 / static_cast<double>(i + 2));
    }

    QString text(int words)
    {
        QString text;
        for (int i = 0; i < words; ++i) {
            text += word();
            text += i % 9 == 8 ? QLatin1Char('\n') : QLatin1Char(' ');
        }
        return text;
    }

private:
    QString word()
    {
        if (m_random.bounded(100) < 3)
            return QString::number(m_random.generate(), 36);
        const double share = m_random.generateDouble() * m_shares.back();
        const auto place = std::lower_bound(m_shares.begin(), m_shares.end(), share) - m_shares.begin();
        return m_words[static_cast<qsizetype>(place)];
    }

    QRandomGenerator m_random;
    QStringList m_words;
    std::vector<double> m_shares;
};
