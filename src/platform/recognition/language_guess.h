#pragma once

#include <QString>

// The one of several languages, by the names of their data, that words seem to be in by their letters; empty
// where that can't be told. What was read in another language still tells it, though letters with accents are
// lost there. Of a language that isn't among them its neighbour is told.
QString likelyLanguage(const QString &words, const QStringList &among);
