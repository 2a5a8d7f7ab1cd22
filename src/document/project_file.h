#pragma once

#include "base/result.h"
#include "document/annotation.h"
#include "document/effects.h"

#include <QByteArray>
#include <QImage>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <optional>

// What is kept beside a flat picture, so that its objects stay editable: a directory with the pixels under
// the objects
// ("base.png") and this description of objects and effects ("project.json"). Tool state, selection and
// history are not kept.
//
// Read strictly: a missing key or a wrong type makes the whole file unreadable. Within that, an object of an
// unknown kind is kept here, and dropped when the document takes it over.
struct ProjectFile {
    struct Item {
        QString kind;
        QPointF start;
        QPointF end;
        QList<QPointF> points;
        QList<double> rgba; // sRGB, 0 to 1; any count but four means system red
        double lineWidth = 0;
        QString text;
        int number = 0;
        std::optional<int> style;
        std::optional<int> font;
        std::optional<QByteArray> imagePNG;

        bool operator==(const Item &) const = default;
    };

    QList<Item> annotations; // bottom first
    bool border = false;
    QList<double> borderRGBA;
    bool shadow = false;
    bool rounded = false;
    bool backdrop = false;
    int backdropStyle = 0;

    bool operator==(const ProjectFile &) const = default;

    // The state of a document. Pictures of objects are encoded here, which takes time; callable from any
    // thread.
    static ProjectFile describing(const QList<Annotation> &annotations, const Effects &effects);
    // Fresh identities each time. A picture that can't be decoded, or for which there is no room, leaves its
    // object without one to show, and is kept for the next save.
    QList<Annotation> objects() const;
    // What to tell a person about such objects: one sentence, empty when all are shown.
    static QString unshownPictures(const QList<Annotation> &annotations);
    Effects effects() const;

    // Compact JSON.
    QByteArray encoded() const;
    static Result<ProjectFile> decoded(const QByteArray &json);

    // Reads a file of that form.
    static Result<ProjectFile> readDescription(const QString &path);
    // Reads "project.json" and "base.png" of a directory.
    struct Contents;
    static Result<Contents> read(const QString &directory);
    // Writes both into a directory, which is made if needed; each replaces its older file whole.
    static Result<void> write(const QString &directory, const QImage &base, const ProjectFile &project);
};

struct ProjectFile::Contents {
    QImage base;
    ProjectFile project;
};
