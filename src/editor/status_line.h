#pragma once

#include "editor/editor_commands.h"

#include <QWidget>

class BarButton;
class EditorDocument;
class EditorSession;
class EditorWindowController;
class NumberLabel;
class QHBoxLayout;
class Spinner;

// One line of text that gives way when there is no room.
class ElidedLabel : public QWidget {
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget *parent = nullptr);
    void setText(const QString &text);
    const QString &text() const { return m_text; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {40, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
};

// What to do now at the left; what there is, and the zoom, at the right.
class StatusLine : public QWidget {
    Q_OBJECT
public:
    explicit StatusLine(EditorWindowController &controller);

    // The texts of the two ends, in the words of the desktop.
    QString hint() const;
    QString counts() const;
    QString zoom() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    BarButton *addZoomButton(QHBoxLayout *row, EditorCommand command);
    void follow();

    EditorWindowController &m_controller;
    EditorDocument &m_document;
    EditorSession &m_session;
    Spinner *m_spinner;
    ElidedLabel *m_hint;
    NumberLabel *m_counts;
    NumberLabel *m_zoom;
};
