#pragma once

#include "library/ui/library_actions.h"
#include "ui/sheet.h"

#include <QList>
#include <QStringList>
#include <atomic>
#include <memory>
#include <optional>

class ProgressLine;
class QLabel;
class QPushButton;
class QStackedLayout;
class QTimer;
class QVBoxLayout;

// Finds what takes room: look-alikes, large files, and old ones.
class CleanUpSheet : public Sheet {
    Q_OBJECT
public:
    CleanUpSheet(const LibraryPorts &ports, LibraryActions &actions, QWidget *over);
    ~CleanUpSheet() override;

    // Nothing until a scan has ended; each group newest first.
    const std::optional<QList<QStringList>> &groups() const { return m_groups; }

private:
    struct Scan {
        std::atomic<int> done = 0;
        std::atomic<int> total = 0;
        std::atomic<bool> isCancelled = false;
    };
    QWidget *makeDuplicates();
    QWidget *makeLarge();
    QWidget *makeAuto();
    void scan();
    void showGroups();
    QWidget *rowOf(const QStringList &group);
    void showLargest();
    void trashExtras(const QList<QStringList> &groups);

    LibraryPorts m_ports;
    LibraryActions &m_actions;
    std::optional<QList<QStringList>> m_groups;
    std::shared_ptr<Scan> m_scan;
    QTimer *m_look = nullptr;
    QStackedLayout *m_tabs;
    QStackedLayout *m_stages = nullptr; // of the duplicates
    ProgressLine *m_line = nullptr;
    QLabel *m_head = nullptr;
    QPushButton *m_trashAll = nullptr;
    QVBoxLayout *m_rows = nullptr;
    QVBoxLayout *m_large = nullptr;
};
