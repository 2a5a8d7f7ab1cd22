#pragma once

#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

// An editor of another toolkit, with a page of lines that are all different.
class PageEditor {
public:
    ~PageEditor()
    {
        m_editor.kill();
        m_editor.waitForFinished();
    }
    static QString line(int number)
    {
        static const QStringList words{"alpha", "bravo", "charlie", "delta", "echo",  "foxtrot", "golf",
                                       "hotel", "india", "juliet",  "kilo",  "lima",  "mike",    "november",
                                       "oscar", "papa",  "quebec",  "romeo", "sierra"};
        return QStringLiteral("Line %1 %2 %3")
            .arg(number, 3, 10, QLatin1Char('0'))
            .arg(words.at(number % words.size()), words.at((number * 7 + 3) % words.size()));
    }
    void open(const QString &path, int lines, const QProcessEnvironment &environment)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (int number = 1; number <= lines; ++number)
            file.write(line(number).toUtf8() + '\n');
        file.close();
        m_editor.setProcessEnvironment(environment);
        m_editor.start("mousepad", {"--disable-server", path});
        ASSERT_TRUE(m_editor.waitForStarted());
    }
    // That each line was read, from the first or second on, and no other.
    static void expectAll(const QStringList &read, int lines)
    {
        ASSERT_GT(read.size(), lines - 5);
        const int first = read.first().section(' ', 1, 1).toInt();
        EXPECT_LE(first, 2);
        for (qsizetype i = 0; i < read.size(); ++i)
            EXPECT_EQ(read.at(i).simplified(), line(first + int(i)));
    }
    qint64 pid() const { return m_editor.processId(); }

private:
    QProcess m_editor;
};
