#pragma once

#include "ui/sheet.h"

#include "base/result.h"

#include <QPointer>
#include <QString>

class BatchJob;
class ProgressLine;
class QLabel;
class QVBoxLayout;

// A sheet that starts a long work: its fields while it is asked, a line of progress while it runs. Cancel
// ends the work; when the window closes, the work goes on.
class BatchSheet : public Sheet {
    Q_OBJECT
public:
    BatchSheet(QWidget *over, const QString &symbol, const QString &title);

protected:
    // A row with its name at the left.
    void addField(const QString &name, QWidget *field);
    // Instead of a row: all the width.
    void addWide(QWidget *widget);
    void addNote(const QString &text);
    // Cancel, and the button that begins. Call after the fields.
    QPushButton *finishWith(const QString &button);
    QPushButton *primary() const { return m_primary; }
    // Shows how the work goes and closes with it; a failure is told and leaves the sheet open.
    void watch(BatchJob *job);
    void setStatus(const QString &text);

    virtual void begin() = 0;

private:
    void setRunning(bool running);
    void jobEnded(const Result<void> &result);

    QWidget *m_fields;
    QVBoxLayout *m_rows;
    ProgressLine *m_line;
    QLabel *m_status;
    QPushButton *m_primary = nullptr;
    QPointer<BatchJob> m_job;
};
