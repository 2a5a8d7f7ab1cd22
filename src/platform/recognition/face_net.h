#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <memory>
#include <vector>

class PixelSource;

struct FoundFace {
    QRectF box; // brows to chin, pixels of the picture
    double score = 0;
};

// The part of two boxes' area that they share.
double sharedPart(const QRectF &a, const QRectF &b);
// The best of the boxes that show one face, best first.
std::vector<FoundFace> distinct(std::vector<FoundFace> faces);

// BlazeFace, the full-range model, run by OpenCV. It is made for 256×256 pixels, but as nothing in it
// depends on the place, it looks at any size: large tiles spare the work on their overlaps.
//
// Model: Bazarevsky et al., "BlazeFace: Sub-millisecond Neural Face Detection on Mobile GPUs", 2019.
class FaceNet {
public:
    static constexpr int kStep = 32; // widths and heights of its input are multiples

    // Throws what OpenCV throws for a file that it can't read.
    explicit FaceNet(const QString &path);
    ~FaceNet();

    // The faces in `area` of the picture, which may reach beyond its edges, scaled to `size` to be looked
    // at; those with a score of `least`, from 0 to 1, or more.
    std::vector<FoundFace> facesIn(const PixelSource &picture, const QRectF &area, QSize size, double least);

private:
    class Model;
    std::unique_ptr<Model> m_model;
};
