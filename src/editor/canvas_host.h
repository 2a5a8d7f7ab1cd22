#pragma once

#include <QPointF>
#include <QRect>
#include <QString>
#include <optional>

// What the canvas asks of the view around it.
class CanvasHost {
public:
    virtual ~CanvasHost() = default;
    // What the canvas shows has changed, or may have.
    virtual void canvasChanged() = 0;
    virtual void updateCursor() = 0;
    // Shows a field with `text` in it, selected in full. Closing gives what was typed.
    virtual void openTextField(const QString &text) = 0;
    virtual QString closeTextField() = 0;
    // Recognises the text in a part of the finished picture and copies it.
    virtual void copyText(const QRect &area) = 0;
    virtual void notify(const QString &text, const QString &symbol) = 0;
    // Tells what has just been done to who can't see it.
    virtual void announce(const QString &words) = 0;
    // Where the pointer is; nothing when outside of the view.
    virtual std::optional<QPointF> pointer() const = 0;
};
