#pragma once

#include "platform/desktop_parts.h"
#include "platform/permissions.h"

#include <QWidget>

class NoteLabel;
class PermissionMonitor;
class QLabel;
class QPushButton;
class SymbolLabel;

// Something that works or doesn't: a symbol, a title with a word beside it, an explanation, and at the right either
// a mark with a word, or a button that helps.
class StatusRow : public QWidget {
    Q_OBJECT
public:
    StatusRow(const QString &symbol, const QString &title, const QString &explanation, QWidget *parent = nullptr);

    const QString &title() const { return m_title; }
    // A small word beside the title, such as "Required".
    void setTag(const QString &tag);
    void setExplanation(const QString &explanation);
    enum class Mark { Good, Missing };
    // A mark in place of the button.
    void showMark(Mark mark, const QString &word);
    // A button in place of the mark.
    void showButton(const QString &text, const QString &help);
    QPushButton *button() const { return m_button; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void recolor();

    QString m_title;
    QLabel *m_tag;
    NoteLabel *m_explanation;
    SymbolLabel *m_markSymbol;
    QLabel *m_markWord;
    QPushButton *m_button;
    Mark m_mark = Mark::Good;
};

// The row of one permission, which follows the monitor.
StatusRow *makePermissionRow(Permission permission, Permissions &permissions, PermissionMonitor &monitor);
// The row of a part of the desktop; `part` is what was found of it.
StatusRow *makePartRow(const DesktopPart &part);
// The tray, which the toolkit knows of.
StatusRow *makeTrayRow();
