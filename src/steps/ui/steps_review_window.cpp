#include "steps/ui/steps_review_window.h"

#include "base/async.h"
#include "steps/guide_export.h"
#include "steps/steps_guide_model.h"
#include "steps/ui/review_header.h"
#include "steps/ui/review_status.h"
#include "steps/ui/step_list.h"
#include "steps/ui/texts.h"
#include "ui/controls.h"
#include "ui/progress_line.h"
#include "ui/sheet.h"
#include "ui/theme.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QStackedLayout>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace {

constexpr QSize kSize(980, 780);
constexpr QSize kLeast(640, 420);
const auto kWarning = QStringLiteral("exclamationmark.triangle.fill");

} // namespace

StepsReviewWindow::StepsReviewWindow(StepsGuideModel &model)
    : m_model(model), m_header(new ReviewHeader(model)), m_list(new StepList(model))
{
    setObjectName(QStringLiteral("stepsReview"));
    setWindowTitle(model.safeTitle());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_header);
    m_progress = new ProgressLine;
    QSizePolicy keepsItsRoom = m_progress->sizePolicy();
    keepsItsRoom.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(keepsItsRoom);
    column->addWidget(m_progress);
    auto *pages = new QWidget;
    column->addWidget(pages, 1);
    m_stages = new QStackedLayout(pages);
    m_stages->addWidget(m_list);
    m_stages->addWidget(new EmptyState(QStringLiteral("list.number"), StepsUiTexts::tr("No Steps Left"),
                                       StepsUiTexts::tr("Ctrl+Z brings the last ones back.")));
    new ReviewStatus(model, pages);
    setMinimumSize(kLeast.expandedTo(QSize(m_header->minimumSizeHint().width(), 0)));
    resize(kSize);
    addShortcuts();
    connect(&model, &StepsGuideModel::titleChanged, this, [this] { setWindowTitle(m_model.safeTitle()); });
    connect(&model, &StepsGuideModel::stepsChanged, this, &StepsReviewWindow::followSteps);
    connect(&model, &StepsGuideModel::refused, this, &StepsReviewWindow::tellOfUnsearched);
    connect(&model, &StepsGuideModel::statusChanged, this, &StepsReviewWindow::followProgress);
    followProgress();
    connect(m_header, &ReviewHeader::pdfWanted, this, &StepsReviewWindow::choosePdf);
    connect(m_header, &ReviewHeader::webFolderWanted, this, &StepsReviewWindow::chooseFolder);
    connect(m_list, &StepList::leftByTab, this, [this](int direction) {
        if (direction > 0)
            m_header->title().setFocus(Qt::TabFocusReason);
        else
            m_list->setFocus(Qt::BacktabFocusReason);
    });
    m_list->setFocus();
}

void StepsReviewWindow::addShortcuts()
{
    const auto add = [this](QKeySequence::StandardKey key, const std::function<void()> &call) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, call);
    };
    add(QKeySequence::Undo, [this] { m_model.undo(); });
    add(QKeySequence::Close, [this] { close(); });
}

void StepsReviewWindow::followSteps()
{
    m_stages->setCurrentIndex(m_model.steps().isEmpty() ? 1 : 0);
}

void StepsReviewWindow::followProgress()
{
    constexpr int whole = 1000;
    const auto progress = m_model.progress();
    m_progress->setVisible(progress.has_value());
    m_progress->set(int(progress.value_or(0) * whole), whole);
}

void StepsReviewWindow::chooseFolder()
{
    auto *dialog = new QFileDialog(this, StepsUiTexts::tr("Web Page & Markdown Folder"));
    dialog->setObjectName(QStringLiteral("webFolder"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, StepsUiTexts::tr("Export Here"));
    dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    connect(dialog, &QFileDialog::fileSelected, &m_model, &StepsGuideModel::exportWebFolder);
    dialog->open();
}

void StepsReviewWindow::choosePdf()
{
    auto *dialog = new QFileDialog(this, StepsUiTexts::tr("Save as PDF"));
    dialog->setObjectName(QStringLiteral("pdf"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(StepsUiTexts::tr("PDF document (*.pdf)"));
    dialog->setDefaultSuffix(QStringLiteral("pdf"));
    dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    dialog->selectFile(GuideExport::fileName(m_model.safeTitle()) + QStringLiteral(".pdf"));
    connect(dialog, &QFileDialog::fileSelected, &m_model, &StepsGuideModel::exportPDF);
    dialog->open();
}

void StepsReviewWindow::tellOfUnsearched(int steps)
{
    auto *sheet = new Sheet(this, kWarning, StepsUiTexts::tr("Private text may be visible"));
    sheet->setObjectName(QStringLiteral("unsearched"));
    sheet->addText(
        StepsUiTexts::tr("%n step(s) couldn’t be searched for emails, numbers and keys, so nothing "
                         "was exported.",
                         nullptr, steps));
    sheet->addText(StepsUiTexts::tr("Search again, hide by hand what is private in them (Edit), or delete "
                                    "them. They are selected in the list."));
    m_list->select(m_model.unsearched());
    sheet->addCancelButton(StepsUiTexts::tr("Cancel"));
    QPushButton *again = sheet->addPrimaryButton(StepsUiTexts::tr("Search Again"));
    connect(again, &QPushButton::clicked, &m_model, &StepsGuideModel::searchAgain);
    sheet->open();
}

// `reason`: why it could not be kept.
void StepsReviewWindow::askWhatBecomesOfIt(const std::optional<QString> &reason)
{
    if (m_question && m_question->isVisible())
        return;
    auto *sheet = new Sheet(this, QStringLiteral("list.number"),
                            m_model.canBeKept() ? StepsUiTexts::tr("Keep this guide?")
                                                : StepsUiTexts::tr("Discard this guide?"));
    m_question = sheet;
    const bool canBeKept = m_model.canBeKept() && !reason;
    if (reason)
        sheet->addText(*reason);
    sheet->addText(canBeKept ? StepsUiTexts::tr("It has changes that were not exported. Lumenpost can keep "
                                                "it and offer it when it is started again.")
                             : StepsUiTexts::tr("It has changes that were not exported, and it can’t be kept "
                                                "on disk. Export it before you close it."));
    QPushButton *discard = sheet->addButton(StepsUiTexts::tr("Discard"));
    discard->setObjectName(QStringLiteral("discardGuide"));
    connect(discard, &QPushButton::clicked, this, [this] { finish(End::Discard); });
    sheet->addCancelButton(StepsUiTexts::tr("Cancel"));
    if (m_model.canBeKept()) {
        QPushButton *keep = sheet->addPrimaryButton(canBeKept ? StepsUiTexts::tr("Keep for Later")
                                                              : StepsUiTexts::tr("Try Again"));
        connect(keep, &QPushButton::clicked, this, &StepsReviewWindow::keep);
    }
    sheet->open();
}

// Closes once the guide is on disk.
void StepsReviewWindow::keep()
{
    whenDone(m_model.keep(), this, [this](const Result<void> &kept) {
        if (kept)
            finish(End::Keep);
        else
            askWhatBecomesOfIt(kept.error().message);
    });
}

void StepsReviewWindow::keepAndClose()
{
    finish(End::Keep);
}

void StepsReviewWindow::reopen()
{
    m_mayClose = false;
    m_end = End::Discard;
    show();
}

void StepsReviewWindow::finish(End end)
{
    m_end = end;
    m_mayClose = true;
    close();
}

void StepsReviewWindow::closeEvent(QCloseEvent *event)
{
    if (!std::exchange(m_mayClose, true)) {
        if (m_model.canCancel()) {
            m_end = End::DiscardOnceExported;
        } else if (!m_model.steps().isEmpty() && !m_model.wasExported()) {
            m_mayClose = false;
            event->ignore();
            return askWhatBecomesOfIt();
        }
    }
    event->accept();
    Q_EMIT closed(m_end);
}

void StepsReviewWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::tokens(this).window);
}
