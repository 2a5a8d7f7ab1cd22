#pragma once

#include "editor/editor_desk.h"

#include <QObject>
#include <QString>
#include <QUrl>

// The ways in which a finished picture leaves the editor other than into a file of the user's: clipboard,
// other programs, the upload service, a pin on the desktop.
class DocumentSharing : public QObject {
    Q_OBJECT
public:
    explicit DocumentSharing(const EditorDesk &desk) : m_desk(desk) {}

    void copyImage();
    // The selected object; the whole finished picture when nothing is selected.
    void copySelection();
    void cutSelection();
    // For those who can't drag: the file goes to the clipboard.
    void copyFile();
    void pin();
    void goToPin();
    void share();
    void upload();
    // Makes the file that is dragged out of the window; drags it once it is there, if the button is still
    // down.
    void prepareDrag();
    void startDrag();

private:
    void tellFileCopied();

    EditorDesk m_desk;
    QString m_dragFile;
    bool m_wantsDrag = false;
};
