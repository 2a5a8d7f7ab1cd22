#pragma once

#include "library/ui/batch_sheet.h"
#include "library/ui/library_actions.h"

class QComboBox;

// Copies captures into a folder, converted and scaled if wanted.
class ExportSheet : public BatchSheet {
    Q_OBJECT
public:
    ExportSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths);
    // The folder is chosen.
    void exportTo(const QString &folder);

protected:
    void begin() override;

private:
    LibraryPorts m_ports;
    QStringList m_paths;
    QComboBox *m_format;
    QComboBox *m_size;
};
