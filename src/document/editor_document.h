#pragma once

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
        File,  // fileURL, displayName
        History,
        Saved, // whether there is anything to save
    };
    Q_ENUM(Field)

    // All that makes the picture. Shares its data.
    struct Contents {
        QImage base;
        QList<Annotation> annotations;
        Effects effects;

        // Bases are compared by identity, which costs nothing.
        bool operator==(const Contents &other) const
        {
            return base.cacheKey() == other.base.cacheKey() && annotations == other.annotations &&
                   effects == other.effects;
        }
    };

    // What a file of the Library gives to edit; made by `load` on any thread.
    struct Source {
        QImage base;
        QList<Annotation> annotations;
        Effects effects;
        QUrl fileURL;
        // There were objects, of another state of the picture: they were put aside and don't show.
        bool isProjectSetAside = false;
        QByteArray fileDigest = {};         // as `ReadFile::digest` tells it
        std::optional<Contents> draft = {}; // edits of this very file that were never saved
        QString draftDirectory = {};        // of a picture without a file
        bool hasSetDraftAside = false;      // there was one of another state of the file
    };

    explicit EditorDocument(const QImage &image, const QUrl &url = {}, QObject *parent = nullptr);
    explicit EditorDocument(const Source &source, QObject *parent = nullptr);

    // Reads a picture with its project; without a readable project the flat picture; without that the
    // base is null, and there is nothing to edit. Callable from any thread.
    static Source load(const QString &path, const QString &projectDirectory);

    const QImage &base() const { return m_base; }
    void setBase(const QImage &base);
    // The pixelated copy of the base, made when first asked for after a change of base: that takes several
    // frames for a large picture.
    const QImage &pixelated() const;
    // The same if it has been made, otherwise null.
    const QImage &readyPixelated() const { return m_pixelated; }
    // Takes over what was made elsewhere of `base`; dropped if the base is another one by now.
    void keepPixelated(const QImage &base, const QImage &pixelated);
    // Gives the pixelated copy's memory back until it is asked for again.
    void releasePixelated() { m_pixelated = QImage(); }
    QRectF imageBounds() const { return QRectF(m_base.rect()); }
    const QList<Annotation> &annotations() const { return m_annotations; }
    void setAnnotations(const QList<Annotation> &annotations);
    const Effects &effects() const { return m_effects; }
    void setEffects(const Effects &effects);
    Contents contents() const { return {m_base, m_annotations, m_effects}; }

    // What has been saved; at first, what the document was made from.
    bool hasUnsavedChanges() const { return contents() != m_saved; }
    const Contents &saved() const { return m_saved; }
    void setSaved(const Contents &contents);
    // The contents at first are edits that were never saved, of a session that has ended.
    bool isFromDraft() const { return m_isFromDraft; }
    bool hasSetDraftAside() const { return m_hasSetDraftAside; }
    // Takes other contents over as one undo step, but for the effects, which no undo changes.
    void setContents(const Contents &contents);

    std::optional<QUuid> selectedID() const { return m_selectedID; }
    void setSelectedID(const std::optional<QUuid> &id);
    std::optional<Annotation> object(const QUuid &id) const;
    std::optional<Annotation> selected() const;

    // A change of colour, size or font is written into the selected object; it is no undo step of its own.
    ToolKind tool() const { return m_tool; }
    void setTool(ToolKind tool);
    // As a user picks one: lets go of the selected object, so that the options are the tool's.
    void chooseTool(ToolKind tool);
    // The kind whose look is current: that of the selected object, otherwise that of the tool.
    ToolKind activeKind() const;
    // Of the active kind. Highlighters have a colour of their own, which begins as yellow.
    QColor color() const { return colorOf(activeKind()); }
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

    QUrl fileURL() const { return m_fileURL; }
    void setFileURL(const QUrl &url);
    // Of the file as it was read or written last; empty when nobody has looked yet.
    const QByteArray &fileDigest() const { return m_fileDigest; }
    void setFileDigest(const QByteArray &digest) { m_fileDigest = digest; }
    // Where the draft of a picture without a file lies that this one was made from; empty for none.
    const QString &draftDirectory() const { return m_draftDirectory; }
    QString displayName() const { return m_displayName; } // overrides the window's title; empty for none
    void setDisplayName(const QString &name);

    // The colour of one pixel of the base; nothing outside.
    std::optional<QColor> sampleColor(const QPointF &point) const;
    // The top-most object whose bounds, outset by `tolerance`, hold the point.
    std::optional<Annotation> hitTest(const QPointF &point, double tolerance) const;
    // One above the highest number of all steps.
    int nextStepNumber() const;

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

    // Copies of objects, as one undo step, with identities and step numbers of their own. Selects the last.
    void addCopies(const QList<Annotation> &originals);

    // Cuts to the rectangle, rounded outwards, at least 4 × 4.
    void applyCrop(const QRectF &rect);
    // Takes out a band of rows (or columns) and joins the rest with a torn edge. Only the rectangle's extent
    // along the cut axis counts.
    void applyCutout(const QRectF &rect, bool columns);

    // The picture with its objects, without effects.
    QImage flattened() const;
    // What leaves the editor: with effects.
    QImage exported() const;
    ProjectFile project() const;

    // A step of the history holds base and objects, whose data it shares, but no effects, tools and
    // selection.
    void pushUndo();
    void undo();
    void redo();
    // Takes the last step back as if it had never been.
    void dropLastStep();
    qsizetype undoSteps() const { return m_undoStack.size(); }
    bool canUndo() const { return !m_undoStack.isEmpty(); }
    bool canRedo() const { return !m_redoStack.isEmpty(); }

Q_SIGNALS:
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
    const QColor &colorOf(ToolKind kind) const
    {
        return kind == ToolKind::Highlight ? m_highlightColor : m_color;
    }
    QColor &colorOf(ToolKind kind) { return kind == ToolKind::Highlight ? m_highlightColor : m_color; }
    void editSelected(const std::function<void(Annotation &)> &edit);
    void swapWith(QList<Snapshot> &source, QList<Snapshot> &other);

    QImage m_base;
    mutable QImage m_pixelated;
    QList<Annotation> m_annotations;
    Effects m_effects;
    Contents m_saved;
    ToolKind m_tool = ToolKind::Arrow;
    std::optional<QUuid> m_selectedID;
    QColor m_color = SystemColors::red();
    QColor m_highlightColor = SystemColors::yellow();
    double m_lineWidth = 6;
    QHash<ToolKind, int> m_toolStyles;
    TextFont m_textFont = TextFont::System;
    QString m_stampValue = StampLibrary::symbols().first();
    QUrl m_fileURL;
    QByteArray m_fileDigest;
    QString m_draftDirectory;
    bool m_isFromDraft = false;
    bool m_hasSetDraftAside = false;
    QString m_displayName;
    QList<Snapshot> m_undoStack;
    QList<Snapshot> m_redoStack;
};
