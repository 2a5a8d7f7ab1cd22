#pragma once

#include "library/ui/window_parts.h"

class LibraryActions;
class LibraryModel;
class LibraryWork;
class QLineEdit;
class QSlider;

// Over the grid: what is shown, the search, and how it is shown.
class LibraryToolbar : public WindowParts::Surface {
    Q_OBJECT
public:
    // All outlive it.
    LibraryToolbar(LibraryModel &model, LibraryActions &actions, LibraryWork &work,
                   QWidget *parent = nullptr);

    QLineEdit *searchField() const { return m_search; }
    // Leaves out what a small window has no room for, and offers the sidebar that it lacks.
    void setNarrow(bool narrow);

Q_SIGNALS:
    void sidebarWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    BarButton *dateButton();
    BarButton *sortButton();
    BarButton *moreButton(LibraryWork &work);
    BarButton *inspectorButton();
    QLineEdit *makeSearch();
    QSlider *makeSizeSlider();
    void updateTitle();

    LibraryModel &m_model;
    LibraryActions &m_actions;
    BarButton *m_sidebar;
    QWidget *m_names;
    QLabel *m_title;
    QLabel *m_count;
    QLineEdit *m_search = nullptr;
    QSlider *m_size = nullptr;
};
