#pragma once

#include "ui/sheet.h"

#include <QPointer>
#include <QWidget>
#include <optional>

class ProgressLine;
class ReviewHeader;
class StepList;
class StepsGuideModel;
class QStackedLayout;

// Where recorded steps become a guide: put into words and order, marked, looked through, and brought out.
class StepsReviewWindow : public QWidget {
    Q_OBJECT
public:
    // What becomes of the guide on disk when its window has closed.
    enum class End { Discard, Keep, DiscardOnceExported };

    explicit StepsReviewWindow(StepsGuideModel &model);

    // The program ends: it closes without a question, and the guide stays on disk.
    void keepAndClose();
    // After it closed, for a guide that would be lost.
    void reopen();
    StepsGuideModel &model() { return m_model; }
    StepList &list() { return *m_list; }
    ReviewHeader &header() { return *m_header; }

Q_SIGNALS:
    void closed(StepsReviewWindow::End end);

protected:
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void addShortcuts();
    void followSteps();
    void followProgress();
    void chooseFolder();
    void choosePdf();
    void askWhatBecomesOfIt(const std::optional<QString> &reason = {});
    void keep();
    void tellOfUnsearched(int steps);
    void finish(End end);

    StepsGuideModel &m_model;
    ReviewHeader *m_header;
    ProgressLine *m_progress;
    StepList *m_list;
    QStackedLayout *m_stages;
    QPointer<Sheet> m_question; // what becomes of the guide
    bool m_mayClose = false;
    End m_end = End::Discard;
};
