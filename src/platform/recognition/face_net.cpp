#include "platform/recognition/face_net.h"

#include "platform/recognition/pixel_source.h"

#include <array>
#include <opencv2/dnn/all_layers.hpp>
#include <opencv2/dnn/dnn.hpp>
#include <opencv2/imgproc.hpp>

namespace {

constexpr double kSameFace = 0.3; // shared part of two boxes
constexpr double kInside = 0.7;   // of the smaller box

// Anchors of the model: cells of so many pixels, each with so many anchors.
struct Grid {
    int cell;
    int anchors;
};
constexpr std::array kGrids{Grid{16, 2}, Grid{32, 6}};
constexpr int kBoxNumbers = 16; // centre, size and six marks of the face

double areaOf(const QRectF &box)
{
    return box.width() * box.height();
}

} // namespace

double sharedPart(const QRectF &a, const QRectF &b)
{
    const double both = areaOf(a & b);
    return both <= 0 ? 0 : both / (areaOf(a) + areaOf(b) - both);
}

std::vector<FoundFace> distinct(std::vector<FoundFace> faces)
{
    std::ranges::sort(faces, std::greater(), &FoundFace::score);
    std::vector<FoundFace> kept;
    for (const FoundFace &face : faces)
        if (std::ranges::none_of(kept, [&](const FoundFace &other) {
                return sharedPart(face.box, other.box) > kSameFace ||
                       areaOf(face.box & other.box) > kInside * std::min(areaOf(face.box), areaOf(other.box));
            }))
            kept.push_back(face);
    return kept;
}

class FaceNet::Model {
public:
    explicit Model(const QString &path) : m_net(cv::dnn::readNetFromONNX(path.toStdString()))
    {
        m_net.setPreferableBackend(cv::dnn::DNN_BACKEND_OPENCV);
    }

    // `input` holds red, green and blue; gives a score (a logit) and a box for each anchor of each grid.
    std::vector<cv::Mat> run(const cv::Mat &input)
    {
        if (input.size() != m_size)
            fit(input.size());
        cv::Mat values;
        input.convertTo(values, CV_32F, 2.0 / 255, -1); // from -1 to 1
        const std::array shape{1, input.rows, input.cols, 3};
        m_net.setInput(cv::Mat(int(shape.size()), shape.data(), CV_32F, values.data));
        std::vector<cv::Mat> outputs;
        m_net.forward(outputs, m_net.getUnconnectedOutLayersNames());
        return outputs;
    }

private:
    // Two things in the model are of a fixed size: zeros that widen a layer, and the shapes of its outputs.
    void fit(cv::Size size)
    {
        for (const std::string &name : m_net.getLayerNames()) {
            const int id = m_net.getLayerId(name);
            const auto layer = m_net.getLayer(id);
            if (layer->type == "Const") {
                const cv::Mat &zeros = layer->blobs.at(0);
                const int cell = m_size.width / zeros.size[3];
                const std::array shape{1, zeros.size[1], size.height / cell, size.width / cell};
                m_net.setParam(id, 0, cv::Mat(int(shape.size()), shape.data(), CV_32F, cv::Scalar(0)));
            } else if (layer->type == "Reshape") {
                layer.dynamicCast<cv::dnn::ReshapeLayer>()->newShapeDesc.at(1) = -1;
            }
        }
        m_size = size;
    }

    cv::dnn::Net m_net;
    cv::Size m_size{256, 256};
};

FaceNet::FaceNet(const QString &path) : m_model(std::make_unique<Model>(path)) {}

FaceNet::~FaceNet() = default;

std::vector<FoundFace> FaceNet::facesIn(const PixelSource &picture, const QRectF &area, QSize size,
                                        double least)
{
    const double scale = size.width() / area.width();
    const QRect part = area.toAlignedRect() & QRect(QPoint(), picture.size());
    if (part.isEmpty())
        return {};
    const QSize partSize(std::clamp(qRound(part.width() * scale), 1, size.width()),
                         std::clamp(qRound(part.height() * scale), 1, size.height()));
    const cv::Rect place(
        std::clamp(qRound((part.x() - area.x()) * scale), 0, size.width() - partSize.width()),
        std::clamp(qRound((part.y() - area.y()) * scale), 0, size.height() - partSize.height()),
        partSize.width(), partSize.height());
    cv::Mat input(size.height(), size.width(), CV_8UC3, cv::Scalar::all(0));
    cv::cvtColor(picture.scaled(part, partSize), input(place), cv::COLOR_BGRA2RGB);
    const std::vector<cv::Mat> outputs = m_model->run(input);

    std::vector<FoundFace> faces;
    const double leastLogit = std::log(least / (1 - least));
    for (const auto &[cell, anchors] : kGrids) {
        const int columns = size.width() / cell;
        const int count = columns * (size.height() / cell) * anchors;
        // OpenCV gives the outputs names of its own; their sizes tell them apart.
        const auto sized = [&outputs, count](int numbers) {
            const auto found = std::ranges::find_if(outputs, [=](const cv::Mat &m) {
                return m.dims == 3 && m.size[1] == count && m.size[2] == numbers;
            });
            if (found == outputs.end())
                CV_Error(cv::Error::StsBadSize, "the model has other outputs");
            return found->ptr<float>();
        };
        const float *score = sized(1);
        const float *box = sized(kBoxNumbers);
        for (int i = 0; i < count; ++i, box += kBoxNumbers) {
            if (score[i] < leastLogit)
                continue;
            const int at = i / anchors;
            const double x = (at % columns + 0.5) * cell + box[0];
            const double y = (at / columns + 0.5) * cell + box[1];
            faces.push_back({QRectF(area.x() + (x - box[2] / 2) / scale, area.y() + (y - box[3] / 2) / scale,
                                    box[2] / scale, box[3] / scale),
                             1 / (1 + std::exp(-double(score[i])))});
        }
    }
    return distinct(std::move(faces));
}
