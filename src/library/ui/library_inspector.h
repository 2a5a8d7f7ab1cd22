#pragma once

#include "library/ui/library_actions.h"

#include <QWidget>

class ItemDetail;
class QStackedLayout;

// Beside the grid: the details of what is selected.
class LibraryInspector : public QWidget {
    Q_OBJECT
public:
    LibraryInspector(const LibraryPorts &ports, LibraryActions &actions, QWidget *parent = nullptr);

    ItemDetail *detail() const { return m_detail; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void update();

    LibraryModel &m_model;
    QStackedLayout *m_pages;
    ItemDetail *m_detail;
    QWidget *m_several = nullptr;
};
