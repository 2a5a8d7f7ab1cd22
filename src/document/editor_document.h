#pragma once

#include "document/ai_result.h"
#include "document/annotation.h"
#include "document/effects.h"
#include "document/project_file.h"

#include <QHash>
#include <QImage>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QUrl>
#include <QUuid>
#include <functional>
#include <memory>
#include <optional>

class Pasteboard;

// One open picture: a base bitmap, the objects on it, the state of the tools, and the history. Has no view of
// its own; canvas and windows observe it and call its operations. Main thread only.
//
// Objects are never flattened into the base. An image operation that can't be done leaves the document as it
// was, and says nothing.
class EditorDocument : public QObject {
    Q_OBJECT

public:
    // What a change is about, so that an observer repaints only what it must.
    enum class Field {
        Base,        // the pixels, and with them the size
        Annotations, // the objects
        Selection,
        Effects,
        Tool,
        Style, // colour, size, styles, font, stamp: the current look
        Zoom,
        DisplayZoom,
        Mode, // eyedropper, text selection, palette, busy, AI result
        File, // fileURL, displayName
        History,
    };
    Q_ENUM(Field)

    // What a file of the Library gives to edit; made by `load` on any thread.
    struct Source {
        QImage base;
        QList<Annotation> annotations;
        Effects effects;
        QUrl fileURL;
        // There were objects, of another state of the picture: they were put aside and don't show.
        bool isProjectSetAside = false;
    };

    // The marker on the pasteboard that says "the objects copied last in this program".
    static constexpr auto objectPasteboardType = "com.oakfenrow.lumenpost.objects";

    explicit EditorDocument(const QImage &image, const QUrl &url = {}, QObject *parent = nullptr);
    explicit EditorDocument(const Source &source, QObject *parent = nullptr);

    // Reads a picture with its project; without a readable project the flat picture; without that a blank
    // picture of 2 × 2. Never fails. Callable from any thread.
    static Source load(const QString &path, const QString &projectDirectory);

    // --- what is edited
    const QImage &base() const { return m_base; }
    void setBase(const QImage &base);
    // The pixelated copy of the base, made when first asked for after a change of base.
    const QImage &pixelated() const;
    // Gives the pixelated copy's memory back until it is asked for again.
    void releasePixelated() { m_pixelated = QImage(); }
    QRectF imageBounds() const { return QRectF(m_base.rect()); }
    const QList<Annotation> &annotations() const { return m_annotations; }
    void setAnnotations(const QList<Annotation> &annotations);
    const Effects &effects() const { return m_effects; }
    void setEffects(const Effects &effects);

    // --- selection
    std::optional<QUuid> selectedID() const { return m_selectedID; }
    void setSelectedID(const std::optional<QUuid> &id);
    std::optional<Annotation> object(const QUuid &id) const;
    std::optional<Annotation> selected() const;

    // --- tools. A change of colour, size or font is written into the selected object; it is no undo step of
    // its own.
    ToolKind tool() const { return m_tool; }
    void setTool(ToolKind tool);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    double lineWidth() const { return m_lineWidth; }
    void setLineWidth(double width);
    TextFont textFont() const { return m_textFont; }
    void setTextFont(TextFont font);
    QString stampValue() const { return m_stampValue; }
    void setStampValue(const QString &value);
    int toolStyle(ToolKind kind) const { return m_toolStyles.value(kind, 0); }
    // Also restyles a selected object of that kind.
    void setStyle(int style, ToolKind kind);
    // Takes an object's look as the current look.
    void adoptStyle(const Annotation &annotation);

    // --- view state that windows share
    std::optional<double> zoom() const { return m_zoom; } // requested; none fits the window
    void setZoom(const std::optional<double> &zoom);
    double displayZoom() const { return m_displayZoom; } // in force, reported by the canvas
    void setDisplayZoom(double zoom);
    bool isPickingColor() const { return m_isPickingColor; }
    void setPickingColor(bool on);
    bool isSelectingText() const { return m_isSelectingText; }
    void setSelectingText(bool on);
    bool showPalette() const { return m_showPalette; }
    void setShowPalette(bool on);
    bool isBusy() const { return m_isBusy; }
    void setBusy(bool on);
    const std::optional<AIResult> &aiResult() const { return m_aiResult; }
    void setAIResult(const std::optional<AIResult> &result);

    QUrl fileURL() const { return m_fileURL; }
    void setFileURL(const QUrl &url);
    QString displayName() const { return m_displayName; } // overrides the window's title; empty for none
    void setDisplayName(const QString &name);
    // Replaces saving when set.
    std::function<void(EditorDocument &)> saveHandler;

    // --- questions
    // The colour of one pixel of the base; nothing outside.
    std::optional<QColor> sampleColor(const QPointF &point) const;
    // The top-most object whose bounds, outset by `tolerance`, hold the point.
    std::optional<Annotation> hitTest(const QPointF &point, double tolerance) const;
    // One above the highest number of all steps.
    int nextStepNumber() const;

    // --- objects
    // A new object with the current look; not added.
    Annotation makeAnnotation(ToolKind kind, const QPointF &point) const;
    // Adds it on top as one undo step, and selects it.
    void add(const Annotation &annotation);
    // Overwrites the object of the same identity. No undo step.
    void replace(const Annotation &annotation);
    void deleteSelected();
    void duplicateSelected();
    void bringToFront();
    void sendToBack();
    // A picture as an object, at most 60% of each side of the base, around `point` or the middle.
    void addImageObject(const QImage &image, const std::optional<QPointF> &point = {});

    // The selected object, for this program as an object and for others as a picture.
    void copySelected(Pasteboard &pasteboard) const;
    // Objects if the pasteboard still holds this program's marker, otherwise a picture, otherwise nothing.
    void paste(Pasteboard &pasteboard, const std::optional<QPointF> &point = {});

    // --- surgery on the base
    // Cuts to the rectangle, rounded outwards, at least 4 × 4.
    void applyCrop(const QRectF &rect);
    // Takes out a band of rows (or columns) and joins the rest with a torn edge. Only the rectangle's extent
    // along the cut axis counts.
    void applyCutout(const QRectF &rect, bool columns);

    // --- results
    // The picture with its objects, without effects.
    QImage flattened() const;
    // What leaves the editor: with effects.
    QImage exported() const;
    ProjectFile project() const;

    // --- history. A snapshot holds base and objects; it shares their data. Effects, tools and selection are
    // not in it.
    void pushUndo();
    void undo();
    void redo();
    bool canUndo() const { return !m_undoStack.isEmpty(); }
    bool canRedo() const { return !m_redoStack.isEmpty(); }

signals:
    void aboutToChange(EditorDocument::Field field);
    void changed(EditorDocument::Field field);

private:
    enum class End { Front, Back };
    void moveSelected(End end);
    struct Snapshot {
        QImage base;
        QList<Annotation> annotations;
    };

    template <typename T>
    void set(T &member, const T &value, Field field);
    void editSelected(const std::function<void(Annotation &)> &edit);
    void swapWith(QList<Snapshot> &source, QList<Snapshot> &other);
    void pasteObjects(const std::optional<QPointF> &point);

    // Copied last, in any document of this process.
    static QList<Annotation> s_objectClipboard;

    QImage m_base;
    mutable QImage m_pixelated;
    QList<Annotation> m_annotations;
    Effects m_effects;
    ToolKind m_tool = ToolKind::Arrow;
    std::optional<QUuid> m_selectedID;
    bool m_isBusy = false;
    std::optional<AIResult> m_aiResult;
    QColor m_color = SystemColors::red();
    double m_lineWidth = 6;
    QHash<ToolKind, int> m_toolStyles;
    TextFont m_textFont = TextFont::System;
    QString m_stampValue = StampLibrary::symbols().first();
    std::optional<double> m_zoom;
    double m_displayZoom = 1;
    bool m_isPickingColor = false;
    bool m_isSelectingText = false;
    bool m_showPalette = false;
    QUrl m_fileURL;
    QString m_displayName;
    QList<Snapshot> m_undoStack;
    QList<Snapshot> m_redoStack;
};
