#pragma once

#include "library/ui/batch_sheet.h"
#include "library/ui/library_actions.h"

#include <QDate>
#include <QList>

class QLineEdit;
class Stepper;

// Gives captures names by a pattern.
class RenameSheet : public BatchSheet {
    Q_OBJECT
public:
    RenameSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths);

protected:
    void begin() override;

private:
    QString nameOf(qsizetype index) const;
    void updatePreview();

    LibraryPorts m_ports;
    QStringList m_paths;
    QList<QDate> m_dates;
    QLineEdit *m_pattern;
    Stepper *m_start;
    QWidget *m_preview;
};
