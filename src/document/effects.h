#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QString>

// The finishing touches of a picture: kept apart from its objects, and applied only to what leaves the
// editor.
struct Effects {
    bool border = false;
    QColor borderColor = QColor::fromRgbF(0.2f, 0.2f, 0.2f);
    bool shadow = false;
    bool rounded = false;
    bool backdrop = false;
    int backdropStyle = 0;

    bool operator==(const Effects &) const = default;

    struct Backdrop {
        QString name;
        QColor first;  // top left
        QColor second; // bottom right
    };
    static const QList<Backdrop> &backdrops();
    // Of a style; one outside the list reads as the nearest.
    static const Backdrop &backdropGradient(int style);

    // Whether anything is on.
    bool isPlain() const { return !border && !shadow && !rounded && !backdrop; }
    // The picture on its backdrop, with shadow, border and corners; the picture itself when nothing is on, or
    // when there is no memory for the result.
    QImage applied(const QImage &flattened) const;
};
