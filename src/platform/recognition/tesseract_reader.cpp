#include "platform/recognition/tesseract_reader.h"

#include <opencv2/imgproc.hpp>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

namespace {

// The height to which letters are scaled for reading, in pixels: where the language data reads best. Reading
// takes time by a line's width, and full pages are in small letters: those are read a little smaller and
// narrower, down to where they begin to be mistaken.
constexpr double UsualLetterHeight = 24;
constexpr double SmallLetterHeight = 20;
constexpr double SmallLetterNarrowing = 0.9;
constexpr int TallestSmallLetter = 12; // pixels in the picture

} // namespace

struct TesseractReader::Parts {
    tesseract::TessBaseAPI api;
};

TesseractReader::TesseractReader(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
TesseractReader::~TesseractReader() = default;

Result<std::unique_ptr<TesseractReader>> TesseractReader::open(const QString &dataFolder,
                                                               const QString &languages)
{
    auto parts = std::make_unique<Parts>();
    const std::vector<std::string> names{"debug_file", "tessedit_do_invert"};
    const std::vector<std::string> values{"/dev/null", "0"};
    if (parts->api.Init(QFile::encodeName(dataFolder).constData(), languages.toUtf8().constData(),
                        tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false) != 0)
        return fail(Error::Kind::Unavailable,
                    "The text recognition data for “" + languages + "” can't be read.", dataFolder);
    parts->api.SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    // Its search for a fixed pitch and its learning serve another recogniser than the one used here.
    parts->api.SetVariable("textord_all_prop", "1");
    parts->api.SetVariable("classify_enable_learning", "0");
    return std::unique_ptr<TesseractReader>(new TesseractReader(std::move(parts)));
}

std::vector<Symbol> TesseractReader::read(const QImage &ink, const TextRegion &region)
{
    const bool isSmall = region.glyphHeight <= TallestSmallLetter;
    const double letterHeight = isSmall ? SmallLetterHeight : UsualLetterHeight;
    const double narrowing = isSmall ? SmallLetterNarrowing : 1;
    const int pad = 2;
    const QRect crop = region.box.adjusted(-pad, -pad, pad, pad).intersected(ink.rect());
    const cv::Mat map(ink.height(), ink.width(), CV_8UC1, const_cast<uchar *>(ink.constBits()),
                      size_t(ink.bytesPerLine()));
    cv::Mat line;
    map(cv::Rect(crop.x(), crop.y(), crop.width(), crop.height()))
        .convertTo(line, CV_8U, 255.0 / region.strongest);
    line = 255 - line;
    const double scale = std::clamp(letterHeight / std::max(region.glyphHeight, 3), 0.25, 4.0);
    cv::Mat scaled;
    const double scaleX = scale * narrowing;
    cv::resize(line, scaled, {}, scaleX, scale, scale > 1 ? cv::INTER_CUBIC : cv::INTER_AREA);
    constexpr int Margin = 10;
    cv::copyMakeBorder(scaled, scaled, Margin, Margin, Margin, Margin, cv::BORDER_CONSTANT, cv::Scalar(255));

    auto &api = m_parts->api;
    api.SetImage(scaled.data, scaled.cols, scaled.rows, 1, int(scaled.step));
    api.SetSourceResolution(200);
    if (api.Recognize(nullptr) != 0)
        return {};
    const std::unique_ptr<tesseract::ResultIterator> each(api.GetIterator());
    if (!each)
        return {};
    std::vector<Symbol> symbols;
    do {
        if (each->Empty(tesseract::RIL_SYMBOL))
            continue;
        const std::unique_ptr<char[]> text(each->GetUTF8Text(tesseract::RIL_SYMBOL));
        if (!text)
            continue;
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        each->BoundingBox(tesseract::RIL_SYMBOL, &left, &top, &right, &bottom);
        symbols.push_back(
            {.text = QString::fromUtf8(text.get()),
             .box = QRectF((left - Margin) / scaleX + crop.x(), (top - Margin) / scale + crop.y(),
                           (right - left) / scaleX, (bottom - top) / scale),
             .confidence = each->Confidence(tesseract::RIL_SYMBOL) / 100.0,
             .blankBefore = each->IsAtBeginningOf(tesseract::RIL_WORD) && !symbols.empty()});
    } while (each->Next(tesseract::RIL_SYMBOL));
    return symbols;
}
