#pragma once

#include "base/result.h"
#include "platform/recognition/line_finder.h"
#include "platform/recognition/read_line.h"

#include <memory>

// Reads single lines of text with one set of language data. One thread at a time.
class TesseractReader {
public:
    // `languages` as Tesseract joins them, such as "deu+eng".
    static Result<std::unique_ptr<TesseractReader>> open(const QString &dataFolder, const QString &languages);
    ~TesseractReader();

    enum class Pace { Careful, Brisk };
    // The signs of one region of a picture's ink, from left to right; none when there is no text.
    std::vector<ReadSign> read(const QImage &ink, const TextRegion &region, Pace pace);

private:
    struct Parts;
    explicit TesseractReader(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};
