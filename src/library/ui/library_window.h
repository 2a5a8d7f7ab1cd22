#pragma once

#include "library/ui/library_actions.h"

#include <QPointer>
#include <QWidget>

class BarButton;
class EmptyState;
class LibraryGrid;
class LibraryModel;
class QLabel;
class QLineEdit;
class QStackedLayout;

// The window of the Library: the sidebar, the search, and the captures as a grid of cards. What it shows is the
// model's, which outlives it.
class LibraryWindow : public QWidget {
    Q_OBJECT
public:
    explicit LibraryWindow(const LibraryPorts &ports);
    ~LibraryWindow() override;

    LibraryGrid *grid() const { return m_grid; }
    QLineEdit *searchField() const { return m_search; }

private:
    QWidget *makeSidebar();
    QWidget *makeToolbar();
    QWidget *makeGrid();
    QWidget *makeSelectionBar();
    BarButton *dateButton();
    BarButton *sortButton();
    void updateStage();
    void updateHeader();
    void updateSelection();
    bool eventFilter(QObject *watched, QEvent *event) override;

    LibraryModel &m_model;
    LibraryPorts m_ports;
    LibraryActions *m_actions;
    LibraryGrid *m_grid = nullptr;
    QLineEdit *m_search = nullptr;
    QStackedLayout *m_stages = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_count = nullptr;
    QLabel *m_total = nullptr;
    QLabel *m_progress = nullptr;
    QLabel *m_selected = nullptr;
    QWidget *m_selectionBar = nullptr;
};
