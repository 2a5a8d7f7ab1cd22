#include "platform/recognition/blaze_face.h"

#include "base/async.h"
#include "platform/recognition/face_net.h"
#include "platform/recognition/photo_map.h"
#include "platform/recognition/pixel_source.h"
#include "platform/texts.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <array>
#include <atomic>
#include <opencv2/core.hpp>
#include <opencv2/core/utils/logger.hpp>
#include <thread>

namespace {

constexpr double kCandidateScore = 0.5;
constexpr double kSmallestFace =
    24; // pixels; below, badges and buttons look like faces and faces like nobody

constexpr int kLargestTile = 512; // pixels looked at; the larger, the fewer overlaps, but more memory
constexpr int kOverlap =
    64; // nearly three times the smallest face; from twice on the next level finds it too
constexpr int kSizeStep = 64; // few sizes: a new one costs the net half a look
constexpr int kSmallestSide = 128;
constexpr int kLastLevel = 256; // pixels of the longest edge, where a face may fill the picture

// Closer looks: the side of the square around a find, in sizes of the face. Small squares: of a badge they
// make less of a face than large ones do.
constexpr std::array kConfirmingSides{1.6, 2.2, 3.2};
constexpr QSize kConfirmingSize{128, 128};
constexpr double kConfirmedScore = 0.62; // of all looks on average; real faces have .65 to .85
constexpr double kHardlyAFace = 0.1;
constexpr double kSameFace = 0.3; // shared part of two boxes

constexpr unsigned kMostThreads = 4; // each holds a net, some 30 MB

// One look at a part of the picture, `shrink` times smaller.
struct Look {
    QRect area;
    QSize size;
};

int roundedUp(int length, int step)
{
    return (length + step - 1) / step * step;
}

// Where tiles of one length begin so that they cover `length` and overlap, and that length.
std::pair<QList<int>, int> division(int length)
{
    if (length <= kLargestTile)
        return {{0}, length};
    const int count = (length - kOverlap + kLargestTile - kOverlap - 1) / (kLargestTile - kOverlap);
    const int tile = roundedUp((length + (count - 1) * kOverlap + count - 1) / count, FaceNet::kStep);
    QList<int> starts;
    for (int i = 0; i < count; ++i)
        starts.append(int(qint64(length - tile) * i / (count - 1)));
    return {starts, tile};
}

// All looks at the picture halved again and again, at what of it is photograph.
std::vector<Look> looksAt(QSize picture, const PhotoMap &photos)
{
    std::vector<Look> looks;
    for (int shrink = 1;; shrink *= 2) {
        const QSize level((picture.width() + shrink - 1) / shrink, (picture.height() + shrink - 1) / shrink);
        const auto [lefts, width] = division(level.width());
        const auto [tops, height] = division(level.height());
        for (const int top : tops) {
            for (const int left : lefts) {
                const QRect tile(left * shrink, top * shrink, width * shrink, height * shrink);
                const int margin = kOverlap / 2 * shrink;
                const QRect photo =
                    photos.photoIn(tile).marginsAdded({margin, margin, margin, margin}) & tile;
                if (photos.photoIn(tile).isEmpty())
                    continue;
                const auto side = [shrink](int length, int most) {
                    return std::max(kSmallestSide,
                                    std::min(roundedUp((length + shrink - 1) / shrink, kSizeStep),
                                             roundedUp(most, FaceNet::kStep)));
                };
                const QSize size(side(photo.width(), width), side(photo.height(), height));
                looks.push_back({QRect(photo.topLeft(), size * shrink), size});
            }
        }
        if (std::max(level.width(), level.height()) <= kLastLevel)
            return looks;
    }
}

// The face of a find, when closer looks at it agree; else nothing.
std::vector<FoundFace> confirmed(FaceNet &net, const PixelSource &picture, const FoundFace &find)
{
    if (find.box.width() < kSmallestFace || isDrawn(picture, find.box))
        return {};
    FoundFace best;
    double sum = 0;
    for (size_t i = 0; i < kConfirmingSides.size(); ++i) {
        const double length =
            std::max(8.0, std::round(kConfirmingSides[i] * std::max(find.box.width(), find.box.height())));
        const QPointF corner = find.box.center() - QPointF(length, length) / 2;
        const QRectF square(std::round(corner.x()), std::round(corner.y()), length, length);
        const auto faces = net.facesIn(picture, square, kConfirmingSize, kHardlyAFace);
        const auto face = std::ranges::find_if(
            faces, [&](const FoundFace &f) { return sharedPart(f.box, find.box) > kSameFace; });
        if (face != faces.end()) {
            sum += face->score;
            if (face->score > best.score)
                best = *face;
        }
        const double possible = sum + double(kConfirmingSides.size() - 1 - i);
        if (possible < kConfirmedScore * double(kConfirmingSides.size()))
            return {};
    }
    return {best};
}

} // namespace

BlazeFace::BlazeFace(QString modelPath) : m_modelPath(std::move(modelPath))
{
    cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
    cv::redirectError([](int, const char *, const char *, const char *, int, void *) { return 0; });
    // A net is too small to be shared out; this engine has several instead.
    cv::setNumThreads(1);
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

std::vector<std::vector<FoundFace>>
BlazeFace::each(size_t count, const std::function<std::vector<FoundFace>(FaceNet &, size_t)> &look)
{
    std::vector<std::vector<FoundFace>> results(count);
    std::atomic<size_t> next = 0;
    std::exception_ptr failure;
    std::mutex failing;
    const auto worker = [&](FaceNet &net) {
        try {
            for (size_t i = next++; i < count; i = next++)
                results[i] = look(net, i);
        } catch (...) {
            const std::lock_guard lock(failing);
            failure = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> others;
        for (size_t i = 1; i < std::min(m_nets.size(), count); ++i)
            others.emplace_back(worker, std::ref(*m_nets[i]));
        worker(*m_nets.front());
    }
    if (failure)
        std::rethrow_exception(failure);
    return results;
}

Result<QList<QRectF>> BlazeFace::work(const QImage &image)
{
    const std::lock_guard lock(m_mutex);
    if (!QFileInfo::exists(m_modelPath))
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("The model for finding faces is missing; install Lumenpost again."),
                    m_modelPath);
    try {
        const size_t threads = std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
        while (m_nets.size() < threads)
            m_nets.push_back(std::make_unique<FaceNet>(m_modelPath));
        QList<QRectF> boxes;
        if (image.isNull())
            return boxes;
        const PixelSource picture(image);
        const std::vector<Look> looks = looksAt(image.size(), PhotoMap(picture));
        std::vector<FoundFace> finds;
        for (const auto &found : each(looks.size(), [&](FaceNet &net, size_t i) {
                 return net.facesIn(picture, looks[i].area, looks[i].size, kCandidateScore);
             }))
            std::ranges::copy(found, std::back_inserter(finds));
        finds = distinct(std::move(finds));
        std::vector<FoundFace> faces;
        for (const auto &face :
             each(finds.size(), [&](FaceNet &net, size_t i) { return confirmed(net, picture, finds[i]); }))
            std::ranges::copy(face, std::back_inserter(faces));
        const double width = image.width();
        const double height = image.height();
        for (const FoundFace &face : distinct(std::move(faces)))
            boxes.append(QRectF(face.box.x() / width, 1 - face.box.bottom() / height,
                                face.box.width() / width, face.box.height() / height));
        return boxes;
    } catch (const std::exception &exception) {
        m_nets.clear();
        return fail(Error::Kind::Unavailable,
                    PlatformTexts::tr("The model for finding faces can't be used; install Lumenpost again."),
                    QString::fromUtf8(exception.what()));
    }
}
