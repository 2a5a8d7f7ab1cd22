#include "recording/ui/captions_sheet.h"

#include "base/async.h"
#include "base/atomic_file.h"
#include "base/log.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "platform/pasteboard.h"
#include "recording/ui/texts.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QThreadPool>
#include <QTimer>
#include <QVBoxLayout>
#include <mutex>

namespace {

constexpr int kCardWidth = 560;
constexpr int kListHeight = 220;
constexpr int kTick = 100;       // milliseconds
constexpr double kAround = 0.15; // seconds heard before and after the words of a row

QLabel *note(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

// Fields that hide the words under them.
class WordsDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override
    {
        QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
        editor->setAutoFillBackground(true);
        editor->setProperty("focusRadius", -1.0);
        return editor;
    }
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &) const override
    {
        editor->setGeometry(option.rect);
    }
};

} // namespace

// Shared with the worker, which may go on for a moment after the sheet has closed.
struct CaptionsSheet::Work {
    WorkProgress progress;
    std::mutex mutex;
    CaptionsSheet *sheet; // null once it has closed
};

CaptionsSheet::CaptionsSheet(QWidget *over, const Ports &ports, const QString &movie, CaptionsText &text,
                             const std::optional<VideoEditorModel::Part> &part)
    : Sheet(over, QStringLiteral("captions.bubble"), RecordingUiTexts::tr("Captions")),
      m_ports(ports),
      m_movie(movie),
      m_part(part),
      m_text(text)
{
    setObjectName(QStringLiteral("captions"));
    setCardWidth(kCardWidth);
    content()->addWidget(note(RecordingUiTexts::tr("Transcribed on this Mac. Review before publishing.")));
    if (part)
        content()->addWidget(
            note(RecordingUiTexts::tr("What you save holds the trimmed part, with times from its start.")));
    addTable();
    addFoot();
    m_work = std::make_shared<Work>();
    m_work->sheet = this;
    if (text.isWhole) {
        take(text.cues);
        finish();
    } else {
        run();
    }
}

CaptionsSheet::~CaptionsSheet()
{
    m_text.cues = mended();
    for (qsizetype i = 0; i < m_cues.size(); ++i) {
        if (m_text.cues[i].text != m_cues[i].text)
            m_text.mended.insert(m_cues[i].start, m_text.cues[i].text);
    }
    m_work->progress.isCancelled = true;
    const std::lock_guard lock(m_work->mutex);
    m_work->sheet = nullptr;
}

void CaptionsSheet::addTable()
{
    m_table = new QTableWidget(0, 2);
    m_table->setAccessibleName(RecordingUiTexts::tr("Captions"));
    m_table->setMinimumHeight(kListHeight);
    m_table->setItemDelegate(new WordsDelegate(m_table));
    m_table->setShowGrid(false);
    m_table->horizontalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Fixed);
    m_table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_table->setColumnWidth(0, int(Theme::tabularWidth(m_table->font(), QStringLiteral("00:00:00,000"))) +
                                   2 * Theme::Space::group);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(Theme::Size::field);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setProperty("focusRadius", -1.0);
    content()->addWidget(m_table, 1);
    connect(m_table, &QTableWidget::currentCellChanged, this, [this](int row, int, int before, int) {
        if (row != before)
            hear(row);
    });
    // The words of a clicked row once more.
    connect(m_table, &QTableWidget::cellClicked, this, [this](int row, int column) {
        if (column == 0)
            hear(row);
    });
}

void CaptionsSheet::addFoot()
{
    m_status = note({});
    m_bar = new QProgressBar;
    m_bar->setRange(0, 1000);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(Theme::Space::unit);
    content()->addWidget(m_status);
    content()->addWidget(m_bar);
    m_copy = addButton(RecordingUiTexts::tr("Copy Text"), After::Stays);
    TipCenter::describe(
        m_copy, {m_copy->text(), RecordingUiTexts::tr("Copy the whole transcript as plain text."), {}});
    addCancelButton(RecordingUiTexts::tr("Close"));
    m_save = addPrimaryButton(RecordingUiTexts::tr("Save SRT…"), After::Stays);
    m_save->setAccessibleName(RecordingUiTexts::tr("Save SRT"));
    TipCenter::describe(m_save, {m_save->text(),
                                 RecordingUiTexts::tr("Subtitle file that YouTube, Vimeo, Premiere and most "
                                                      "players can load."),
                                 {}});
    m_copy->setEnabled(false);
    m_save->setEnabled(false);
    connect(m_copy, &QPushButton::clicked, this, &CaptionsSheet::copyText);
    connect(m_save, &QPushButton::clicked, this, &CaptionsSheet::save);
}

void CaptionsSheet::run()
{
    m_status->setText(RecordingUiTexts::tr("Listening to the recording…"));
    const auto soFar = [work = m_work](const QList<CaptionCue> &cues) {
        const std::lock_guard lock(work->mutex);
        if (work->sheet)
            QMetaObject::invokeMethod(
                work->sheet, [sheet = work->sheet, cues] { sheet->take(cues); }, Qt::QueuedConnection);
    };
    const auto made =
        QtConcurrent::run(&m_ports.threads,
                          [work = m_work, &movies = m_ports.movies, &installed = m_ports.speech,
                           choice = m_ports.external, movie = m_movie, soFar]() -> Result<QList<CaptionCue>> {
                              ExternalSpeech external(choice);
                              SpeechEngine &speech =
                                  external.isChosen() ? static_cast<SpeechEngine &>(external) : installed;
                              return Captions::captions(movies, speech, movie, work->progress, soFar);
                          });
    whenDone(made, this, [this](const Result<QList<CaptionCue>> &result) { ended(result); });
    auto *ticks = new QTimer(m_bar);
    connect(ticks, &QTimer::timeout, this,
            [this] { m_bar->setValue(int(m_work->progress.done * m_bar->maximum())); });
    ticks->start(kTick);
}

void CaptionsSheet::take(const QList<CaptionCue> &cues)
{
    m_table->blockSignals(true);
    if (m_table->rowCount() > int(cues.size()))
        m_table->setRowCount(int(cues.size()));
    for (qsizetype i = 0; i < cues.size(); ++i) {
        const int row = int(i);
        if (row >= m_table->rowCount()) {
            m_table->insertRow(row);
            auto *time = new QTableWidgetItem(Captions::timestamp(cues[i].start));
            time->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            time->setForeground(Theme::tokens(this).secondary);
            m_table->setItem(row, 0, time);
            m_table->setItem(row, 1, new QTableWidgetItem(m_text.mended.value(cues[i].start, cues[i].text)));
        } else if (m_table->item(row, 1)->text() == m_cues.value(i).text) { // not mended yet
            m_table->item(row, 1)->setText(cues[i].text);
        }
    }
    m_cues = cues;
    m_table->blockSignals(false);
}

void CaptionsSheet::ended(const Result<QList<CaptionCue>> &result)
{
    if (!result) {
        m_bar->hide();
        if (!result.error().isCancelled()) {
            Log::error(QStringLiteral("Captioning failed"), result.error());
            m_status->setText(result.error().message);
        }
        return;
    }
    take(*result);
    m_text.isWhole = true;
    finish();
}

void CaptionsSheet::finish()
{
    m_bar->hide();
    m_status->hide();
    m_copy->setEnabled(true);
    m_save->setEnabled(true);
}

QList<CaptionCue> CaptionsSheet::mended() const
{
    QList<CaptionCue> cues = m_cues;
    for (qsizetype i = 0; i < cues.size(); ++i)
        cues[i].text = m_table->item(int(i), 1)->text().trimmed();
    return cues;
}

QList<CaptionCue> CaptionsSheet::cues() const
{
    QList<CaptionCue> cues = mended();
    cues.removeIf([](const CaptionCue &cue) { return cue.text.isEmpty(); });
    return m_part ? Captions::within(cues, m_part->from, m_part->to) : cues;
}

void CaptionsSheet::hear(int row)
{
    if (row >= 0 && row < int(m_cues.size()))
        Q_EMIT heard(std::max(m_cues[row].start - kAround, 0.0), m_cues[row].end + kAround);
}

void CaptionsSheet::copyText()
{
    m_ports.pasteboard.setText(Captions::transcript(cues()));
    m_ports.notices.post(RecordingUiTexts::tr("Transcript copied"), QStringLiteral("checkmark.circle.fill"));
}

void CaptionsSheet::save()
{
    const QFileInfo film(m_movie);
    auto *dialog =
        new QFileDialog(window(), RecordingUiTexts::tr("Save SRT"),
                        film.path() + QLatin1Char('/') + film.completeBaseName() + QStringLiteral(".srt"),
                        RecordingUiTexts::tr("Subtitles") + QStringLiteral(" (*.srt)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("srt"));
    connect(dialog, &QFileDialog::fileSelected, this, &CaptionsSheet::write);
    dialog->open();
}

void CaptionsSheet::write(const QString &path)
{
    // A few kilobytes, but the disk may be slow or far away: the program waits for it, not the window.
    const QString name = QFileInfo(path).fileName();
    const auto work = runInBackground(
        [path, text = Captions::srt(cues()).toUtf8()] { return AtomicFile::write(path, text); });
    m_ports.pending.keep(QStringLiteral("saving ") + name, work);
    whenDone(work, &m_ports.pending,
             [self = QPointer(this), &notices = m_ports.notices, name](const Result<void> &written) {
                 if (written) {
                     notices.post(RecordingUiTexts::tr("Saved %1").arg(name),
                                  QStringLiteral("captions.bubble.fill"));
                     return;
                 }
                 Log::error(QStringLiteral("Dialog: ") + written.error().message, written.error());
                 if (self) {
                     self->m_status->setText(written.error().message);
                     self->m_status->show();
                 } else {
                     notices.post(written.error().message, QStringLiteral("exclamationmark.triangle.fill"));
                 }
             });
}
