#include "library/ui/pdf_sheet.h"

#include "library/library.h"
#include "library/library_names.h"
#include "library/ui/library_work.h"
#include "library/ui/texts.h"
#include "library/ui/window_parts.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr std::array kCaptions{LibraryWork::Captions::None, LibraryWork::Captions::Names,
                               LibraryWork::Captions::Written};

QStringList captionTitles()
{
    QStringList titles;
    for (const auto captions : kCaptions)
        titles.append(LibraryWork::title(captions));
    return titles;
}

QStringList sizeTitles()
{
    QStringList titles;
    for (const auto size : Exporter::kPageSizes)
        titles.append(Exporter::title(size));
    return titles;
}

} // namespace

PdfSheet::PdfSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths)
    : BatchSheet(over, QStringLiteral("doc.richtext"),
                 LibraryUiTexts::tr("Export %n Page PDF", nullptr, static_cast<int>(paths.size()))),
      m_ports(ports),
      m_paths(paths),
      m_title(new QLineEdit(LibraryUiTexts::tr("How-To Guide"))),
      m_captions(WindowParts::picker({}, captionTitles())),
      m_size(WindowParts::picker({}, sizeTitles()))
{
    addField(LibraryUiTexts::tr("Title"), m_title);
    addField(LibraryUiTexts::tr("Captions"), m_captions);
    m_captions->setCurrentIndex(1);
    addField(LibraryUiTexts::tr("Page Size"), m_size);
    addNote(LibraryUiTexts::tr("Pages follow the order shown in the Library."));
    finishWith(LibraryUiTexts::tr("Create PDF…"));
}

void PdfSheet::begin()
{
    const QString title = LibraryNames::cleaned(m_title->text());
    auto *dialog = new QFileDialog(this, LibraryUiTexts::tr("Create PDF"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(LibraryUiTexts::tr("PDF") + QStringLiteral(" (*.pdf)"));
    dialog->setDefaultSuffix(QStringLiteral("pdf"));
    dialog->selectFile((title.isEmpty() ? LibraryUiTexts::tr("Captures") : title) + QStringLiteral(".pdf"));
    connect(dialog, &QFileDialog::fileSelected, this, &PdfSheet::writeTo);
    dialog->open();
}

void PdfSheet::writeTo(const QString &target)
{
    watch(m_ports.work.makePdf({
        .paths = m_paths,
        .title = m_title->text().trimmed(),
        .captions = kCaptions[static_cast<size_t>(m_captions->currentIndex())],
        .size = Exporter::kPageSizes[static_cast<size_t>(m_size->currentIndex())],
        .target = target,
    }));
}
