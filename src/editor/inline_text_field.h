#pragma once

#include "editor/text_editing.h"

#include <QTextEdit>

// Where the text of an object is typed, in its place on the canvas. Return ends typing, Alt+Return begins a
// new line.
class InlineTextField : public QTextEdit {
    Q_OBJECT
public:
    InlineTextField(const QString &text, QWidget *parent);
    // Brings the look up to date, as when the canvas is zoomed meanwhile.
    void setLook(const InlineText &look);

Q_SIGNALS:
    void finished();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    void fit();

    InlineText m_look;
};
