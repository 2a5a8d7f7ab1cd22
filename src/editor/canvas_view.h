#pragma once

#include "document/editor_document.h"
#include "editor/canvas_interaction.h"
#include "editor/canvas_painter.h"

#include <QPointer>
#include <QWidget>

class EditorSession;
class InlineTextField;
class NoticeBoard;
class Pasteboard;

// Shows a document and hands pointer, keys, drops and pinches to the interaction. Its objects are children
// for assistive technology.
class CanvasView : public QWidget, private CanvasHost {
    Q_OBJECT
public:
    // All outlive the view.
    CanvasView(EditorDocument &document, EditorSession &session, Pasteboard &pasteboard, NoticeBoard &notices,
               QWidget *parent = nullptr);
    ~CanvasView() override;

    CanvasInteraction &interaction() { return m_interaction; }
    const CanvasInteraction &interaction() const { return m_interaction; }
    EditorDocument &document() const { return m_document; }

    // "Capture, 800 by 600 pixels, 2 objects. Tab moves between objects."
    QString accessibleLabel() const;
    // What keys do now.
    QString accessibleHelp() const;

    QSize sizeHint() const override { return {900, 600}; }
    QSize minimumSizeHint() const override { return {200, 120}; }

Q_SIGNALS:
    // A part of the finished picture whose text the user wants; whole pixels inside the picture.
    void textAreaChosen(const QRect &area);
    // A menu of what can be done with the selection is wanted, at a point of the screen.
    void menuRequested(const QPoint &position);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void canvasChanged() override;
    void updateCursor() override;
    void openTextField(const QString &text) override;
    QString closeTextField() override;
    void copyText(const QRect &area) override;
    void notify(const QString &text, const QString &symbol) override;
    void announce(const QString &words) override;
    std::optional<QPointF> pointer() const override;

    void synchronize();
    void follow(EditorDocument::Field field);
    void tellOfSelection();
    void reportZoom();
    void drawAhead();
    void makeMosaic();
    void press(QMouseEvent *event, int clickCount);

    EditorDocument &m_document;
    EditorSession &m_session;
    NoticeBoard &m_notices;
    CanvasInteraction m_interaction;
    CanvasPainter m_painter;
    QPointer<InlineTextField> m_textField;
    bool m_isStale = true;
    bool m_isDrawingAhead = false;
    bool m_isMakingMosaic = false;
    bool m_wasShown = false;
    bool m_isTellingOfSelection = false;
    qsizetype m_toldCount = 0;
};
