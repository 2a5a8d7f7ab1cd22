#pragma once

#include "library/library_versions.h"

#include <QWidget>

class BarButton;
class QLabel;

// How many earlier versions a file has, with a menu to go back to one. Hidden where there are none.
class VersionsRow : public QWidget {
    Q_OBJECT
public:
    explicit VersionsRow(QWidget *parent = nullptr);

    // Newest first.
    void setVersions(const QList<LibraryVersion> &versions);

Q_SIGNALS:
    void restoreWanted(const LibraryVersion &version);

private:
    void fillMenu();

    QList<LibraryVersion> m_versions;
    QLabel *m_count;
    BarButton *m_restore;
};
