#pragma once

#include "library/ui/batch_sheet.h"
#include "library/ui/library_actions.h"

class QComboBox;
class QLineEdit;

// Makes a PDF with a page for each picture.
class PdfSheet : public BatchSheet {
    Q_OBJECT
public:
    PdfSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths);
    // The file is chosen.
    void writeTo(const QString &target);

protected:
    void begin() override;

private:
    LibraryPorts m_ports;
    QStringList m_paths;
    QLineEdit *m_title;
    QComboBox *m_captions;
    QComboBox *m_size;
};
