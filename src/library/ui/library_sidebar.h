#pragma once

#include "library/model/library_model.h"

#include <QListWidget>

class LibraryActions;

// What can be shown: the kinds of captures, times, collections and applications, each with its count. Files
// that are dropped on a collection go into it.
class LibrarySidebar : public QListWidget {
    Q_OBJECT
public:
    // Both outlive it.
    LibrarySidebar(LibraryModel &model, LibraryActions &actions, QWidget *parent = nullptr);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    struct Row {
        std::optional<SidebarItem> item; // none for headings and for the making of a collection
    };
    void fill();
    void addHeading(const QString &title);
    void addRow(const SidebarItem &item, const QString &title, const QString &symbol);
    std::optional<QUuid> collectionAt(const QPoint &position) const;

    LibraryModel &m_model;
    LibraryActions &m_actions;
    std::vector<Row> m_rows;
    bool m_isFilling = false;
};
