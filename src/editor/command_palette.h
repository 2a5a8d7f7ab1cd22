#pragma once

#include "ui/sheet.h"

#include <QList>
#include <QString>
#include <functional>

class QLineEdit;

// One line of the palette. The shortcut is only shown; the palette binds nothing.
struct PaletteCommand {
    QString title;
    QString symbol;
    QString shortcut; // stored form; may be empty
    std::function<void()> run;
};

// What the palette's filter leaves, and which of it is chosen.
class PaletteList {
public:
    explicit PaletteList(QList<PaletteCommand> commands) : m_commands(std::move(commands)) { setQuery({}); }

    // Every word must occur in the title, in any order and without regard to case. Chooses the first.
    void setQuery(const QString &query);
    // In the order of the commands.
    QList<const PaletteCommand *> filtered() const;
    int count() const { return static_cast<int>(m_shown.size()); }
    int selection() const { return m_selection; }
    void select(int index) { m_selection = index; }
    // Wraps round at both ends.
    void move(int delta);
    // The chosen command; null when nothing is left.
    const PaletteCommand *selected() const;

private:
    QList<PaletteCommand> m_commands;
    QList<int> m_shown;
    int m_selection = 0;
};

// A list of everything the editor can do, over its window: type to narrow it, Return runs the chosen line
// after the palette has closed.
class CommandPalette : public Sheet {
    Q_OBJECT
public:
    CommandPalette(QWidget *over, QList<PaletteCommand> commands);
    ~CommandPalette() override;

    PaletteList &list() { return m_list; }
    void runSelected();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class Rows;

    PaletteList m_list;
    QLineEdit *m_field;
    Rows *m_rows;
};
