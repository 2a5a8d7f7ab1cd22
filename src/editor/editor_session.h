#pragma once

#include "editor/ai_result.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

class EditorDocument;

// What an editor's window is doing with its document, and how it looks at it: none of it is part of the
// picture. Main thread only.
class EditorSession : public QObject {
    Q_OBJECT
public:
    // What the next press on the canvas is for.
    enum class Mode { Editing, PickingColor, SelectingText };
    enum class Field { Mode, Zoom, DisplayZoom, Work, Palette };
    Q_ENUM(Field)

    using QObject::QObject;

    Mode mode() const { return m_mode; }
    void setMode(Mode mode);

    // Keys move a frame, or a point to pick a colour from, until Return takes it.
    bool isPlacing() const { return m_isPlacing; }
    void setPlacing(bool isPlacing) { set(m_isPlacing, isPlacing, Field::Mode); }

    // Device pixels for an image pixel that were asked for; none fits the window.
    std::optional<double> zoom() const { return m_zoom; }
    void setZoom(const std::optional<double> &zoom);
    // In force, reported by the canvas.
    double displayZoom() const { return m_displayZoom; }
    void setDisplayZoom(double zoom);

    bool isPaletteOpen() const { return m_isPaletteOpen; }
    void setPaletteOpen(bool open);

    // The session is busy as long as anyone holds a copy of a token; tokens may outlive it.
    using WorkToken = std::shared_ptr<void>;
    [[nodiscard]] WorkToken beginWork();
    bool isBusy() const { return m_works > 0; }

    // A text for the user to read and copy.
    void showResult(const AIResult &result) { Q_EMIT resultArrived(result); }

    // Replaces saving when set, as for a picture that belongs to a guide.
    std::function<void(EditorDocument &)> saveHandler;

Q_SIGNALS:
    void changed(EditorSession::Field field);
    void resultArrived(const AIResult &result);

private:
    template <typename T>
    void set(T &member, const T &value, Field field)
    {
        if (member == value)
            return;
        member = value;
        Q_EMIT changed(field);
    }

    Mode m_mode = Mode::Editing;
    bool m_isPlacing = false;
    std::optional<double> m_zoom;
    double m_displayZoom = 1;
    bool m_isPaletteOpen = false;
    int m_works = 0;
};
