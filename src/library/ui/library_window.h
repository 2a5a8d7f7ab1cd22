#pragma once

#include "library/ui/library_actions.h"

#include <QWidget>

class LibraryGrid;
class LibraryModel;
class LibraryToolbar;
class QLabel;
class QLineEdit;
class QStackedLayout;

// The window of the Library: the sidebar, the search, and the captures as a grid of cards. What it shows is
// the model's, which outlives it.
class LibraryWindow : public QWidget {
    Q_OBJECT
public:
    explicit LibraryWindow(const LibraryPorts &ports);
    ~LibraryWindow() override;

    LibraryGrid *grid() const { return m_grid; }
    QLineEdit *searchField() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *makeSidebar();
    QWidget *makeGrid();
    QWidget *makeInspector();
    void fitSidebar();
    void updateStage();
    void updateProgress();
    bool eventFilter(QObject *watched, QEvent *event) override;

    LibraryModel &m_model;
    LibraryPorts m_ports;
    LibraryActions *m_actions;
    QWidget *m_sidebar = nullptr;
    LibraryToolbar *m_toolbar = nullptr;
    LibraryGrid *m_grid = nullptr;
    QStackedLayout *m_stages = nullptr;
    QLabel *m_total = nullptr;
    QLabel *m_progress = nullptr;
};
