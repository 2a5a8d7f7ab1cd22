#pragma once

#include "document/editor_document.h"
#include "editor/editor_commands.h"

#include <QHash>
#include <QWidget>

class BarButton;
class CanvasView;
class EditorWindowController;
class OptionsBar;
class StatusLine;
struct EditorPorts;
class QHBoxLayout;
class QMenu;

// The window's content: the main bar with tools and actions, the options of the active tool under it, the
// canvas, and the status line. Made from the tables of tools and commands.
class EditorView : public QWidget {
    Q_OBJECT
public:
    EditorView(EditorWindowController &controller, EditorPorts &ports);
    ~EditorView() override;

    CanvasView &canvas() { return *m_canvas; }
    // The tools as the bar groups them.
    static const QList<QList<ToolKind>> &toolGroups();
    // What can be done with the selection, or without one; not shown yet.
    QMenu *makeObjectMenu();
    // Says that the edits which are shown were never saved, and offers to discard them.
    void tellOfDraft();

protected:
    void paintEvent(QPaintEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    QWidget *makeMainBar();
    void addTools(QHBoxLayout *row);
    void addActions(QHBoxLayout *row);
    BarButton *addCommand(QHBoxLayout *row, EditorCommand command);
    BarButton *addMenu(QHBoxLayout *row, const EditorMenuInfo &menu, const QList<EditorCommand> &commands,
                       int separatorAfter = -1);
    BarButton *addEffects(QHBoxLayout *row);
    BarButton *addDragOut(QHBoxLayout *row);
    // An item of a menu: with the words of bars and menus, or with those of the palette.
    enum class Words { Menu, Palette };
    QAction *addItem(QMenu *menu, EditorCommand command, Words words = Words::Menu);
    void chooseBorderColor(BarButton *button);
    void addShortcuts();
    void movePane(int delta);
    void follow(EditorDocument::Field field);

    EditorWindowController &m_controller;
    EditorPorts &m_ports;
    EditorDocument &m_document;
    CanvasView *m_canvas;
    OptionsBar *m_options;
    StatusLine *m_status;
    QWidget *m_mainBar = nullptr;
    QHash<ToolKind, BarButton *> m_toolButtons;
    QHash<EditorCommand, BarButton *> m_commandButtons;
    QList<BarButton *> m_rarelyUsed; // actions that may stand in a menu, the first one first
};
