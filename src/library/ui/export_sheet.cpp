#include "library/ui/export_sheet.h"

#include "library/ui/library_work.h"
#include "library/ui/texts.h"
#include "library/ui/window_parts.h"

#include <QComboBox>
#include <QFileDialog>
#include <QPushButton>

namespace {

constexpr std::array kLongest{2560, 1920, 1280, 800};

QStringList formatTitles()
{
    QStringList titles;
    for (const ExportFormat format : Exporter::kFormats)
        titles.append(Exporter::title(format));
    return titles;
}

QStringList sizeTitles()
{
    QStringList titles{LibraryUiTexts::tr("Original")};
    for (const int longest : kLongest)
        titles.append(LibraryUiTexts::tr("Max %1 px").arg(longest));
    return titles;
}

} // namespace

ExportSheet::ExportSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths)
    : BatchSheet(over, QStringLiteral("square.and.arrow.up.on.square"),
                 LibraryUiTexts::tr("Export %n Item(s)", nullptr, static_cast<int>(paths.size()))),
      m_ports(ports),
      m_paths(paths),
      m_format(WindowParts::picker({}, formatTitles())),
      m_size(WindowParts::picker({}, sizeTitles()))
{
    addField(LibraryUiTexts::tr("Format"), m_format);
    addField(LibraryUiTexts::tr("Size"), m_size);
    addNote(LibraryUiTexts::tr("Recordings are copied as-is."));
    finishWith(LibraryUiTexts::tr("Choose Folder…"));
}

void ExportSheet::begin()
{
    auto *dialog = new QFileDialog(this, LibraryUiTexts::tr("Export"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, LibraryUiTexts::tr("Export Here"));
    connect(dialog, &QFileDialog::fileSelected, this, &ExportSheet::exportTo);
    dialog->open();
}

void ExportSheet::exportTo(const QString &folder)
{
    const int size = m_size->currentIndex();
    watch(m_ports.work.exportFiles({
        .paths = m_paths,
        .folder = folder,
        .format = Exporter::kFormats[static_cast<size_t>(m_format->currentIndex())],
        .longest = size > 0 ? std::optional(kLongest[static_cast<size_t>(size - 1)]) : std::nullopt,
    }));
}
