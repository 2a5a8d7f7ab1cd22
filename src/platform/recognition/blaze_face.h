#pragma once

#include "base/result.h"
#include "platform/face_engine.h"

#include <QThreadPool>
#include <memory>
#include <mutex>

// BlazeFace, the full-range model with an input of 256×256 pixels, run by OpenCV. The picture is searched in
// overlapping tiles of several sizes; each find must be confirmed by closer looks. Tiles that hold no
// photograph are not looked at, so that pages of text cost next to nothing.
//
// Model: Bazarevsky et al., "BlazeFace: Sub-millisecond Neural Face Detection on Mobile GPUs", 2019.
class BlazeFace : public FaceEngine {
public:
    // Reads the model at the first picture.
    explicit BlazeFace(QString modelPath = standardModelPath());
    ~BlazeFace() override;
    QFuture<Result<QList<QRectF>>> detect(const QImage &image) override;

    // "share/lumenpost/face_detection.onnx" beside the program's own folder.
    static QString standardModelPath();

private:
    class Net;
    Result<QList<QRectF>> work(const QImage &image);

    QString m_modelPath;
    std::mutex m_mutex; // one run at a time: the model uses both cores by itself
    std::unique_ptr<Net> m_net;
    QThreadPool m_threads;
};
