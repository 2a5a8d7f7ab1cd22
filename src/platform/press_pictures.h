#pragma once

#include "base/result.h"
#include "platform/accessible_elements.h"
#include "platform/screens.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QPointF>
#include <chrono>

// A press of the left button in a window of another program, and what the screen showed at that moment.
struct Press {
    QPointF point;                     // global points
    std::chrono::milliseconds time{0}; // when the button went down; only differences mean something
    Screen screen;                     // that the point lies on
    // The whole screen in backing pixels, before the program could react, without this program's windows.
    // Null while no pictures are wanted.
    Result<QImage> image;
    QList<ListedWindow> windows; // front to back, as they stood
    ClickTarget target;
    std::chrono::microseconds delay{0}; // from hearing of the press to the picture
};

// Watches presses of the left button in other programs, also while another program holds the pointer. Every
// press is told, in order; several may wait to be told.
class PressPictures : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    // Error::Kind::Unavailable, with a sentence for the user, where the session tells no presses.
    virtual Result<void> start() = 0;
    virtual void stop() = 0;
    // Without pictures presses are told all the same.
    virtual void setWantsPictures(bool wanted) = 0;

Q_SIGNALS:
    void pressed(const Press &press);
};
