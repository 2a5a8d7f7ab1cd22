#pragma once

#include "platform/recognition/tesseract_reader.h"

#include <functional>

// Reads the lines of a picture in the first of several languages, and those that seem to be in another one
// again in that. What a language is sure of decides: a word that its dictionary holds is read with more
// certainty.
class LineLanguages {
public:
    // A reader of a language by its place in the order; nothing when its data can't be read, which is never
    // so of the first.
    using ReaderOf = std::function<TesseractReader *(qsizetype)>;

    LineLanguages(QStringList names, ReaderOf readerOf)
        : m_names(std::move(names)), m_readerOf(std::move(readerOf))
    {}

    // Lines that hold no text are left out.
    std::vector<ReadLine> read(const QImage &ink, const QList<TextRegion> &regions,
                               TesseractReader::Pace pace);

private:
    QStringList m_names;
    ReaderOf m_readerOf;
};
