#pragma once

#include "library/ui/batch_sheet.h"
#include "library/ui/library_actions.h"

class QComboBox;
class QLabel;
class QLineEdit;

// Makes one tall, numbered picture of captures and opens it.
class GuideSheet : public BatchSheet {
    Q_OBJECT
public:
    GuideSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths);

protected:
    void begin() override;

private:
    void updateKeyNote();

    LibraryPorts m_ports;
    QStringList m_paths;
    QLineEdit *m_title;
    QComboBox *m_captions;
    QLabel *m_keyNote;
    bool m_lacksKey = false;
};
