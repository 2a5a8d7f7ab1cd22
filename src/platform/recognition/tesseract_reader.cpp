#include "platform/recognition/tesseract_reader.h"

#include "platform/texts.h"

#include <opencv2/imgproc.hpp>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

namespace {

// How letters are scaled for reading: their height in pixels, and their width against it. Reading takes time
// by a line's width.
struct Scaling {
    double letterHeight;
    double narrowing;
};
constexpr Scaling kForLargeLetters{24, 1}; // where the language data reads best
constexpr Scaling kForSmallLetters{20, 0.9};
constexpr Scaling kForFullPages{16, 0.86}; // a little worse, an eighth faster
// Narrow letters without soft edges, whose stairs are smoothed by so many pixels of the picture.
constexpr Scaling kForBitmapFonts{20, 1.2};
constexpr double kSmoothing = 0.5;
constexpr int kTallestSmallLetter = 12; // pixels in the picture

// Whether nearly all ink is of full strength; `line` is dark on white.
bool isOfBitmapFont(const cv::Mat &line)
{
    const int strong = cv::countNonZero(line < 64);
    const int soft = cv::countNonZero(line < 224) - strong;
    return soft * 12 < strong;
}

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
    parts->api.SetVariable("debug_file", "/dev/null"); // broken data would have it speak while it starts
    const std::vector<std::string> names{"debug_file", "tessedit_do_invert"};
    const std::vector<std::string> values{"/dev/null", "0"};
    if (parts->api.Init(QFile::encodeName(dataFolder).constData(), languages.toUtf8().constData(),
                        tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false) != 0)
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("The text recognition data for “%1” can't be read.").arg(languages),
                    dataFolder);
    parts->api.SetPageSegMode(tesseract::PSM_SINGLE_LINE);
    // Its search for a fixed pitch and its learning serve another recogniser than the one used here.
    parts->api.SetVariable("textord_all_prop", "1");
    parts->api.SetVariable("classify_enable_learning", "0");
    return std::unique_ptr<TesseractReader>(new TesseractReader(std::move(parts)));
}

std::vector<ReadSign> TesseractReader::read(const QImage &ink, const TextRegion &region, Pace pace)
{
    const int pad = 2;
    const QRect crop = region.box.adjusted(-pad, -pad, pad, pad).intersected(ink.rect());
    const cv::Mat map(ink.height(), ink.width(), CV_8UC1, const_cast<uchar *>(ink.constBits()),
                      size_t(ink.bytesPerLine()));
    cv::Mat line;
    map(cv::Rect(crop.x(), crop.y(), crop.width(), crop.height()))
        .convertTo(line, CV_8U, 255.0 / region.strongest);
    line = 255 - line;
    const bool isBitmap = region.glyphHeight <= kTallestSmallLetter && isOfBitmapFont(line);
    const Scaling scaling = isBitmap                                    ? kForBitmapFonts
                            : pace == Pace::Brisk                       ? kForFullPages
                            : region.glyphHeight <= kTallestSmallLetter ? kForSmallLetters
                                                                        : kForLargeLetters;
    const double scale = std::clamp(scaling.letterHeight / std::max(region.glyphHeight, 3), 0.25, 4.0);
    cv::Mat scaled;
    const double scaleX = scale * scaling.narrowing;
    cv::resize(line, scaled, {}, scaleX, scale, scale > 1 ? cv::INTER_CUBIC : cv::INTER_AREA);
    if (isBitmap)
        cv::GaussianBlur(scaled, scaled, {}, kSmoothing * scaleX, kSmoothing * scale);
    constexpr int kMargin = 10;
    cv::copyMakeBorder(scaled, scaled, kMargin, kMargin, kMargin, kMargin, cv::BORDER_CONSTANT,
                       cv::Scalar(255));

    auto &api = m_parts->api;
    api.SetImage(scaled.data, scaled.cols, scaled.rows, 1, int(scaled.step));
    api.SetSourceResolution(200);
    if (api.Recognize(nullptr) != 0)
        return {};
    const std::unique_ptr<tesseract::ResultIterator> each(api.GetIterator());
    if (!each)
        return {};
    std::vector<ReadSign> signs;
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
        signs.push_back(
            {.text = QString::fromUtf8(text.get()),
             .box = QRectF((left - kMargin) / scaleX + crop.x(), (top - kMargin) / scale + crop.y(),
                           (right - left) / scaleX, (bottom - top) / scale),
             .confidence = each->Confidence(tesseract::RIL_SYMBOL) / 100.0,
             .blankBefore = each->IsAtBeginningOf(tesseract::RIL_WORD) && !signs.empty()});
    } while (each->Next(tesseract::RIL_SYMBOL));
    return signs;
}
