#include "library/ui/batch_sheet.h"

#include "library/ui/batch_job.h"
#include "library/ui/texts.h"
#include "library/ui/window_parts.h"
#include "ui/progress_line.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {
constexpr int kNameWidth = 124;
}

BatchSheet::BatchSheet(QWidget *over, const QString &symbol, const QString &title)
    : Sheet(over, symbol, title),
      m_fields(new QWidget),
      m_rows(new QVBoxLayout(m_fields)),
      m_line(new ProgressLine),
      m_status(WindowParts::note({}))
{
    setCardWidth(460);
    m_rows->setContentsMargins({});
    m_rows->setSpacing(Theme::Space::group);
    content()->addWidget(m_fields);
    m_line->hide();
    m_status->hide();
    m_status->setObjectName(QStringLiteral("status"));
    connect(this, &Sheet::closed, this, [this] {
        if (m_job)
            m_job->cancel();
    });
}

void BatchSheet::addField(const QString &name, QWidget *field)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Theme::Space::group);
    QLabel *words = WindowParts::label(Theme::Type::Body);
    words->setText(name);
    words->setFixedWidth(kNameWidth);
    words->setWordWrap(true);
    words->setBuddy(field);
    field->setAccessibleName(name);
    row->addWidget(words);
    row->addWidget(field, 1);
    m_rows->addLayout(row);
}

void BatchSheet::addWide(QWidget *widget)
{
    m_rows->addWidget(widget);
}

void BatchSheet::addNote(const QString &text)
{
    m_rows->addWidget(WindowParts::note(text));
}

QPushButton *BatchSheet::finishWith(const QString &button)
{
    content()->addWidget(m_line);
    content()->addWidget(m_status);
    addCancelButton(LibraryUiTexts::tr("Cancel"));
    // What stands for itself is no mnemonic.
    m_primary =
        addPrimaryButton(QString(button).replace(QLatin1Char('&'), QLatin1String("&&")), After::Stays);
    connect(m_primary, &QPushButton::clicked, this, [this] { begin(); });
    return m_primary;
}

void BatchSheet::setStatus(const QString &text)
{
    m_status->setText(text);
    m_status->setVisible(!text.isEmpty());
    fit();
}

void BatchSheet::setRunning(bool running)
{
    m_fields->setEnabled(!running);
    m_primary->setEnabled(!running);
    m_line->setVisible(running);
    m_line->set(0, 0);
    fit();
}

void BatchSheet::watch(BatchJob *job)
{
    m_job = job;
    setStatus({});
    setRunning(true);
    const auto tell = [this, job] {
        m_line->set(job->done(), job->total());
        const QString words = !job->status().isEmpty() ? job->status()
                              : job->total() > 0
                                  ? LibraryUiTexts::tr("%1 of %2").arg(job->done()).arg(job->total())
                                  : QString();
        if (words != m_status->text())
            setStatus(words);
    };
    connect(job, &BatchJob::told, this, tell);
    connect(job, &BatchJob::ended, this, &BatchSheet::jobEnded);
    tell();
}

void BatchSheet::jobEnded(const Result<void> &result)
{
    m_job = nullptr;
    if (result || result.error().isCancelled())
        return close();
    setRunning(false);
    setStatus(result.error().message);
}
