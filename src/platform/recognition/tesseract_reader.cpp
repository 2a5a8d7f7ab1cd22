#include "platform/recognition/tesseract_reader.h"

#include <opencv2/imgproc.hpp>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

namespace {

double knob(const char *name, double fallback)
{
    bool ok = false;
    const double value = qEnvironmentVariable(name).toDouble(&ok);
    return ok ? value : fallback;
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
    const std::vector<std::string> names{"debug_file", "tessedit_do_invert"};
    const std::vector<std::string> values{"/dev/null", "0"};
    if (parts->api.Init(QFile::encodeName(dataFolder).constData(), languages.toUtf8().constData(),
                        tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false) != 0)
        return fail(Error::Kind::Unavailable,
                    "The text recognition data for “" + languages + "” can't be read.", dataFolder);
    parts->api.SetPageSegMode(tesseract::PageSegMode(int(knob("K_PSM", 7))));
    return std::unique_ptr<TesseractReader>(new TesseractReader(std::move(parts)));
}

std::optional<RecognizedLine> TesseractReader::read(const QImage &ink, const TextRegion &region)
{
    const int pad = 2;
    const QRect crop = region.box.adjusted(-pad, -pad, pad, pad).intersected(ink.rect());
    const cv::Mat map(ink.height(), ink.width(), CV_8UC1, const_cast<uchar *>(ink.constBits()),
                      size_t(ink.bytesPerLine()));
    cv::Mat line;
    map(cv::Rect(crop.x(), crop.y(), crop.width(), crop.height()))
        .convertTo(line, CV_8U, 255.0 / region.strongest);
    line = 255 - line;
    double scale = knob("K_TARGET", 24) / std::max(region.glyphHeight, 3);
    scale = std::clamp(scale, 0.25, 4.0);
    cv::Mat scaled;
    cv::resize(line, scaled, {}, scale, scale, scale > 1 ? cv::INTER_CUBIC : cv::INTER_AREA);
    const int margin = int(knob("K_MARGIN", 10));
    cv::copyMakeBorder(scaled, scaled, margin, margin, margin, margin, cv::BORDER_CONSTANT, cv::Scalar(255));

    auto &api = m_parts->api;
    api.SetImage(scaled.data, scaled.cols, scaled.rows, 1, int(scaled.step));
    api.SetSourceResolution(200);
    if (api.Recognize(nullptr) != 0)
        return {};
    const std::unique_ptr<tesseract::ResultIterator> symbols(api.GetIterator());
    if (!symbols)
        return {};
    RecognizedLine result;
    double confidence = 0;
    int count = 0;
    do {
        if (symbols->Empty(tesseract::RIL_SYMBOL))
            continue;
        const std::unique_ptr<char[]> text(symbols->GetUTF8Text(tesseract::RIL_SYMBOL));
        if (!text)
            continue;
        if (symbols->IsAtBeginningOf(tesseract::RIL_WORD) && !result.text.isEmpty()) {
            result.text += ' ';
            result.characters.append(QRectF());
        }
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        symbols->BoundingBox(tesseract::RIL_SYMBOL, &left, &top, &right, &bottom);
        const QString symbol = QString::fromUtf8(text.get());
        const QRectF box((left - margin) / scale + crop.x(), (top - margin) / scale + crop.y(),
                         (right - left) / scale, (bottom - top) / scale);
        result.text += symbol;
        for (qsizetype i = 0; i < symbol.size(); ++i)
            result.characters.append(box);
        confidence += symbols->Confidence(tesseract::RIL_SYMBOL);
        ++count;
    } while (symbols->Next(tesseract::RIL_SYMBOL));
    if (count == 0)
        return {};
    result.confidence = confidence / count / 100;
    result.box = region.box;
    return result;
}
