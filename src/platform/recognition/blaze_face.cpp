#include "platform/recognition/blaze_face.h"

#include "base/async.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <opencv2/core/utils/logger.hpp>
#include <opencv2/dnn.hpp>
#include <opencv2/imgproc.hpp>
#include <unordered_set>

namespace {

constexpr int InputSize = 256;
constexpr double CandidateScore = 0.5;
// Closer looks: the side of the square around a find, in sizes of the face.
constexpr std::array ConfirmingSides{2.2, 3.2, 4.5};
constexpr double ConfirmedScore = 0.6; // at least twice
constexpr double SureScore = 0.75;     // at least once
constexpr double SmallestFace = 24; // pixels; below, badges and buttons look like faces and faces like nobody
constexpr double SameFace = 0.3;    // shared part of two boxes

constexpr int BlockSize = 16;
constexpr int PhotoColors = 72; // text in one colour on another has far fewer in a block, a photograph more
constexpr int PhotoBlocks = 2;  // in a tile worth a look

struct Face {
    cv::Rect2d box; // pixels of the picture
    double score = 0;
};

double sharedPart(const cv::Rect2d &a, const cv::Rect2d &b)
{
    const double both = (a & b).area();
    return both <= 0 ? 0 : both / (a.area() + b.area() - both);
}

// Keeps the best of the boxes that show one face.
std::vector<Face> distinct(std::vector<Face> faces)
{
    std::ranges::sort(faces, std::greater(), &Face::score);
    std::vector<Face> kept;
    for (const Face &face : faces)
        if (std::ranges::none_of(kept, [&](const Face &other) {
                const double both = (face.box & other.box).area();
                return sharedPart(face.box, other.box) > SameFace ||
                       both > 0.7 * std::min(face.box.area(), other.box.area());
            }))
            kept.push_back(face);
    return kept;
}

// Which blocks of the picture hold as many colours as only photographs do.
cv::Mat photoBlocks(const cv::Mat &pixels)
{
    cv::Mat blocks(pixels.rows / BlockSize + 1, pixels.cols / BlockSize + 1, CV_8U, cv::Scalar(0));
    std::array<int, BlockSize * BlockSize> colors{};
    for (int by = 0; by + 1 < blocks.rows; ++by) {
        for (int bx = 0; bx + 1 < blocks.cols; ++bx) {
            for (int y = 0; y < BlockSize; ++y) {
                const auto *row = pixels.ptr<cv::Vec4b>(by * BlockSize + y) + bx * BlockSize;
                for (int x = 0; x < BlockSize; ++x)
                    colors[size_t(y * BlockSize + x)] = row[x][0] | row[x][1] << 8 | row[x][2] << 16;
            }
            std::ranges::sort(colors);
            const auto different = std::unique(colors.begin(), colors.end()) - colors.begin();
            blocks.at<uchar>(by, bx) = different >= PhotoColors;
            std::ranges::fill(colors, 0);
        }
    }
    return blocks;
}

bool holdsPhoto(const cv::Mat &blocks, const cv::Rect &tile)
{
    const cv::Rect inside = cv::Rect(tile.x / BlockSize, tile.y / BlockSize, tile.width / BlockSize + 1,
                                     tile.height / BlockSize + 1) &
                            cv::Rect(0, 0, blocks.cols, blocks.rows);
    return cv::countNonZero(blocks(inside)) >= PhotoBlocks;
}

// Squares of one size that cover the picture and overlap by a quarter.
std::vector<cv::Rect> tiles(cv::Size picture, int side)
{
    const auto starts = [side](int length) {
        std::vector<int> list{0};
        if (length > side) {
            const int count = int(std::ceil((length - side) / (side * 0.75))) + 1;
            for (int i = 1; i < count; ++i)
                list.push_back(int(std::lround(double(length - side) * i / (count - 1))));
        }
        return list;
    };
    std::vector<cv::Rect> all;
    for (const int y : starts(picture.height))
        for (const int x : starts(picture.width))
            all.emplace_back(x, y, side, side);
    return all;
}

} // namespace

class BlazeFace::Net {
public:
    // Throws what OpenCV throws for a file that it can't read.
    explicit Net(const QString &path) : m_net(cv::dnn::readNetFromONNX(path.toStdString()))
    {
        m_net.setPreferableBackend(cv::dnn::DNN_BACKEND_OPENCV);
    }

    // The faces in one square of the picture, which may reach beyond its edges.
    std::vector<Face> facesIn(const cv::Mat &pixels, const cv::Rect &square, double least)
    {
        const cv::Rect inside = square & cv::Rect(0, 0, pixels.cols, pixels.rows);
        if (inside.empty())
            return {};
        const double scale = double(InputSize) / square.width;
        cv::Mat input(InputSize, InputSize, CV_8UC3, cv::Scalar::all(0));
        cv::Mat scaled;
        const cv::Size size(std::max(1, int(std::lround(inside.width * scale))),
                            std::max(1, int(std::lround(inside.height * scale))));
        cv::resize(pixels(inside), scaled, size, 0, 0, scale < 1 ? cv::INTER_AREA : cv::INTER_LINEAR);
        cv::cvtColor(scaled, scaled, cv::COLOR_BGRA2RGB);
        const cv::Point at(int((inside.x - square.x) * scale), int((inside.y - square.y) * scale));
        const cv::Rect target = cv::Rect(at, size) & cv::Rect(0, 0, InputSize, InputSize);
        scaled(cv::Rect(0, 0, target.width, target.height)).copyTo(input(target));
        // Rows, columns, channels; from -1 to 1.
        cv::Mat values;
        input.convertTo(values, CV_32F, 2.0 / 255, -1);
        const std::array shape{1, InputSize, InputSize, 3};
        m_net.setInput(cv::Mat(int(shape.size()), shape.data(), CV_32F, values.data));
        std::vector<cv::Mat> outputs;
        m_net.forward(outputs, m_net.getUnconnectedOutLayersNames());

        std::vector<Face> faces;
        for (const auto &[cells, anchors] : {std::pair(16, 2), std::pair(8, 6)}) {
            // OpenCV gives the outputs names of its own; their sizes tell them apart.
            const auto sized = [&outputs, count = size_t(cells * cells * anchors)](size_t numbers) {
                const auto found =
                    std::ranges::find(outputs, count * numbers, [](const cv::Mat &m) { return m.total(); });
                if (found == outputs.end())
                    CV_Error(cv::Error::StsBadSize, "the model has other outputs");
                return *found;
            };
            decode(sized(1), sized(16), cells, anchors, square, least, faces);
        }
        return distinct(std::move(faces));
    }

private:
    // One layer of anchors: `cells` in a row, `anchors` a cell; each gives a score (a logit) and 16 numbers,
    // of which the first four are the box's centre, relative to the cell's, and its size, in input pixels.
    static void decode(const cv::Mat &scores, const cv::Mat &boxes, int cells, int anchors,
                       const cv::Rect &square, double least, std::vector<Face> &faces)
    {
        const auto *score = scores.ptr<float>();
        const auto *box = boxes.ptr<float>();
        const double leastLogit = std::log(least / (1 - least));
        const double scale = double(square.width) / InputSize;
        for (int i = 0; i < cells * cells * anchors; ++i, box += 16) {
            if (score[i] < leastLogit)
                continue;
            const int cell = i / anchors;
            const double x = (cell % cells + 0.5) / cells * InputSize + box[0];
            const double y = (cell / cells + 0.5) / cells * InputSize + box[1];
            faces.push_back({{square.x + (x - box[2] / 2) * scale, square.y + (y - box[3] / 2) * scale,
                              box[2] * scale, box[3] * scale},
                             1 / (1 + std::exp(-double(score[i])))});
        }
    }

    cv::dnn::Net m_net;
};

namespace {

// Looks closer at a find, with less around it; nothing when the looks disagree.
template <typename Net>
std::optional<Face> confirmed(Net &net, const cv::Mat &pixels, const Face &find)
{
    std::vector<Face> looks;
    for (const double side : ConfirmingSides) {
        const int length = std::max(8, int(std::lround(side * std::max(find.box.width, find.box.height))));
        const cv::Rect square(int(find.box.x + find.box.width / 2 - length / 2.0),
                              int(find.box.y + find.box.height / 2 - length / 2.0), length, length);
        for (const Face &face : net.facesIn(pixels, square, ConfirmedScore))
            if (sharedPart(face.box, find.box) > SameFace) {
                looks.push_back(face);
                break;
            }
    }
    if (looks.size() < 2)
        return {};
    const auto best = std::ranges::max_element(looks, {}, &Face::score);
    return best->score > SureScore && best->box.width >= SmallestFace ? std::optional(*best) : std::nullopt;
}

} // namespace

BlazeFace::BlazeFace(QString modelPath) : m_modelPath(std::move(modelPath))
{
    cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
    cv::redirectError([](int, const char *, const char *, const char *, int, void *) { return 0; });
    m_threads.setMaxThreadCount(1);
}

BlazeFace::~BlazeFace() = default;

QString BlazeFace::standardModelPath()
{
    return QCoreApplication::applicationDirPath() + "/../share/lumenpost/face_detection.onnx";
}

QFuture<Result<QList<QRectF>>> BlazeFace::detect(const QImage &image)
{
    return QtConcurrent::run(&m_threads, [this, image] { return work(image); });
}

Result<QList<QRectF>> BlazeFace::work(const QImage &image)
{
    const std::lock_guard lock(m_mutex);
    if (!QFileInfo::exists(m_modelPath))
        return fail(Error::Kind::Unavailable,
                    "The model for finding faces is missing; install Lumenpost again.", m_modelPath);
    try {
        if (!m_net)
            m_net = std::make_unique<Net>(m_modelPath);
        QList<QRectF> boxes;
        if (image.isNull())
            return boxes;
        // A huge picture has no room beside it for a second one: usual formats are looked at as they are.
        const bool asItIs = image.depth() == 32 && image.format() <= QImage::Format_ARGB32_Premultiplied;
        const QImage bgra = asItIs ? image : image.convertToFormat(QImage::Format_ARGB32);
        const cv::Mat pixels(bgra.height(), bgra.width(), CV_8UC4, const_cast<uchar *>(bgra.constBits()),
                             size_t(bgra.bytesPerLine()));
        const cv::Mat photo = photoBlocks(pixels);
        std::vector<Face> finds;
        const int longest = std::max(pixels.cols, pixels.rows);
        for (int side = InputSize;; side *= 2) {
            for (const cv::Rect &tile : tiles(pixels.size(), side))
                if (holdsPhoto(photo, tile))
                    std::ranges::copy(m_net->facesIn(pixels, tile, CandidateScore),
                                      std::back_inserter(finds));
            if (side >= longest)
                break;
        }
        std::vector<Face> faces;
        for (const Face &find : distinct(std::move(finds)))
            if (const auto face = confirmed(*m_net, pixels, find))
                faces.push_back(*face);
        const double width = pixels.cols;
        const double height = pixels.rows;
        for (const Face &face : distinct(std::move(faces)))
            boxes.append(QRectF(face.box.x / width, 1 - (face.box.y + face.box.height) / height,
                                face.box.width / width, face.box.height / height));
        return boxes;
    } catch (const cv::Exception &exception) {
        m_net.reset();
        return fail(Error::Kind::Unavailable,
                    "The model for finding faces can't be used; install Lumenpost again.",
                    QString::fromStdString(exception.what()));
    }
}
