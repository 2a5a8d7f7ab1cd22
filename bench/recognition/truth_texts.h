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
QList<TruthLine> linesOfSigns();
QList<TruthLine> linesOfCode();
