#pragma once

#include "base/result.h"
#include "platform/face_engine.h"

#include <QThreadPool>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class FaceNet;
struct FoundFace;

// Finds faces in overlapping tiles of several sizes of the picture; each find must be confirmed by closer
// looks. Places that hold no photograph are not looked at, so that pages of text cost next to nothing.
class BlazeFace : public FaceEngine {
public:
    // Reads the model at the first picture.
    explicit BlazeFace(QString modelPath = standardModelPath());
    ~BlazeFace() override;
    QFuture<Result<QList<QRectF>>> detect(const QImage &image) override;

    // "share/lumenpost/face_detection.onnx" beside the program's own folder.
    static QString standardModelPath();

private:
    Result<QList<QRectF>> work(const QImage &image);
    // The results of `count` looks, shared out among the nets.
    std::vector<std::vector<FoundFace>>
    each(size_t count, const std::function<std::vector<FoundFace>(FaceNet &, size_t)> &look);

    QString m_modelPath;
    std::mutex m_mutex;                           // one picture at a time: it keeps two cores busy
    std::vector<std::unique_ptr<FaceNet>> m_nets; // one for each thread that looks
    QThreadPool m_threads;
};
