#include "library/ui/guide_sheet.h"

#include "library/ui/library_work.h"
#include "library/ui/texts.h"
#include "library/ui/window_parts.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr std::array kCaptions{LibraryWork::Captions::None, LibraryWork::Captions::Names,
                               LibraryWork::Captions::Written};

// As this sheet says it.
QStringList captionTitles()
{
    QStringList titles;
    for (const LibraryWork::Captions captions : kCaptions)
        titles.append(captions == LibraryWork::Captions::Names ? LibraryUiTexts::tr("File names")
                                                               : LibraryWork::title(captions));
    return titles;
}

} // namespace

GuideSheet::GuideSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths)
    : BatchSheet(
          over, QStringLiteral("list.number"),
          LibraryUiTexts::tr("Step Guide from %n Capture(s)", nullptr, static_cast<int>(paths.size()))),
      m_ports(ports),
      m_paths(paths),
      m_title(new QLineEdit(LibraryUiTexts::tr("How To"))),
      m_captions(WindowParts::picker({}, captionTitles())),
      m_keyNote(
          WindowParts::note(LibraryUiTexts::tr("Add an Anthropic API key in Settings to use AI captions.")))
{
    addField(LibraryUiTexts::tr("Title"), m_title);
    addField(LibraryUiTexts::tr("Step captions"), m_captions);
    m_captions->setCurrentIndex(1);
    addNote(LibraryUiTexts::tr(
        "Steps follow the order shown in the Library. The guide opens in the editor so you "
        "can add arrows and callouts."));
    m_keyNote->hide();
    addWide(m_keyNote);
    finishWith(LibraryUiTexts::tr("Create & Open"));
    connect(m_captions, &QComboBox::currentIndexChanged, this, &GuideSheet::updateKeyNote);
    whenDone(m_ports.work.apiKey(), this, [this](const Result<QString> &key) {
        m_lacksKey = !key || key->isEmpty();
        updateKeyNote();
    });
}

void GuideSheet::updateKeyNote()
{
    const bool needsKey =
        kCaptions[static_cast<size_t>(m_captions->currentIndex())] == LibraryWork::Captions::Written;
    m_keyNote->setVisible(needsKey && m_lacksKey);
    fit();
}

void GuideSheet::begin()
{
    watch(m_ports.work.makeGuide({
        .paths = m_paths,
        .title = m_title->text().trimmed(),
        .captions = kCaptions[static_cast<size_t>(m_captions->currentIndex())],
    }));
}
