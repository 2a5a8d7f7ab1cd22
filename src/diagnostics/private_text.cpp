#include "diagnostics/private_text.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace {

const QString kFile = QStringLiteral("<file>");

// Long ones first, so that no name is cut by one that is part of it.
void sortByLength(QStringList &texts)
{
    texts.removeAll(QString());
    texts.removeDuplicates();
    std::stable_sort(texts.begin(), texts.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
}

// A name can hold anything, also blanks and stops. So it is taken to begin at the first thing that can introduce
// it, an opening quotation mark, a colon or the slash of a path, or else with the line's words, and to end with
// the line's last extension.
QString withoutFiles(const QString &line)
{
    static const QRegularExpression head(QStringLiteral("^\\S+ \\[(INFO|ERROR)\\] "));
    static const QRegularExpression extension(
        QStringLiteral("\\.(png|jpe?g|heic|heif|gif|webp|tiff?|bmp|svg|mov|mp4|m4v|pdf|json|md|html|srt)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression opening(QStringLiteral("(?=[/“\"])|: "));
    QRegularExpressionMatch last;
    for (auto matches = extension.globalMatch(line); matches.hasNext();)
        last = matches.next();
    if (!last.hasMatch())
        return line;
    const QRegularExpressionMatch time = head.match(line);
    qsizetype from = time.hasMatch() ? time.capturedEnd() : 0;
    const QRegularExpressionMatch open = opening.match(line, from);
    if (open.hasMatch() && open.capturedEnd() <= last.capturedStart())
        from = open.capturedEnd();
    return line.first(from) + kFile + line.sliced(last.capturedStart());
}

} // namespace

PrivateText::PrivateText(Known known) : m_known(std::move(known))
{
    QStringList stems;
    for (const QString &name : m_known.names) {
        const QString stem = QFileInfo(name).completeBaseName();
        if (!name.contains(QLatin1Char('/')) && stem.size() > 3) // shorter ones would tear words apart; with its extension it goes anyway
            stems.append(stem);
    }
    m_known.names += stems;
    sortByLength(m_known.names);
    sortByLength(m_known.secrets);
}

QString PrivateText::without(const QString &text) const
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        for (const QString &secret : m_known.secrets)
            line.replace(secret, QStringLiteral("<secret>"));
        line = withoutFiles(line);
        for (const QString &name : m_known.names)
            line.replace(name, kFile, Qt::CaseInsensitive);
        if (!m_known.home.isEmpty())
            line.replace(m_known.home, QStringLiteral("~"));
    }
    return lines.join(QLatin1Char('\n'));
}
