#pragma once

#include <QList>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

struct TruthLine {
    QString before;
    QString secret; // private, or empty
    QString after;
};

// Lines with and without private text, of at most so many signs.
QList<TruthLine> privateLines(QRandomGenerator &random, int count, int mostSigns);

QStringList truthLanguages();
QList<TruthLine> linesIn(const QString &language);
QList<TruthLine> labelsIn(const QString &language);
// Every other line English, the rest in any of the languages.
QList<TruthLine> linesInSeveral(QRandomGenerator &random);
QList<TruthLine> linesOfSigns();
QList<TruthLine> linesOfCode();
QList<TruthLine> linesOfScripts();
