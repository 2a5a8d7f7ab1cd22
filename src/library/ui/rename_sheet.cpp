#include "library/ui/rename_sheet.h"

#include "library/batch/rename_pattern.h"
#include "library/library_names.h"
#include "library/model/library_model.h"
#include "library/ui/library_work.h"
#include "library/ui/stepper.h"
#include "library/ui/texts.h"
#include "library/ui/window_parts.h"
#include "ui/symbol.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int kPreviewed = 3;

QLabel *elided(const QString &text, int width)
{
    QLabel *made = WindowParts::label(Theme::Type::Control);
    made->setText(made->fontMetrics().elidedText(text, Qt::ElideMiddle, width));
    made->setToolTip(text);
    return made;
}

} // namespace

RenameSheet::RenameSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths)
    : BatchSheet(over, QStringLiteral("character.cursor.ibeam"),
                 LibraryUiTexts::tr("Rename %n Item(s)", nullptr, static_cast<int>(paths.size()))),
      m_ports(ports),
      m_paths(paths),
      m_pattern(new QLineEdit(QStringLiteral("Capture {n}"))),
      m_start(new Stepper(0, 999'999, 1)),
      m_preview(new QWidget)
{
    for (const QString &path : paths)
        m_dates.append(ports.model.visibleIndex(path) >= 0
                           ? ports.model.visibleItem(ports.model.visibleIndex(path)).date.date()
                           : QDate());
    addField(LibraryUiTexts::tr("Pattern"), m_pattern);
    addField(LibraryUiTexts::tr("Start numbering at"), m_start);
    addNote(LibraryUiTexts::tr(
        "Use {n} for a number, {date} for the capture date, {name} for the current name."));
    new QGridLayout(m_preview);
    m_preview->layout()->setContentsMargins({});
    addWide(m_preview);
    finishWith(LibraryUiTexts::tr("Rename"));
    connect(m_pattern, &QLineEdit::textChanged, this, &RenameSheet::updatePreview);
    connect(m_start, &Stepper::changed, this, &RenameSheet::updatePreview);
    updatePreview();
}

// One alone gets the pattern as it stands.
QString RenameSheet::nameOf(qsizetype index) const
{
    if (m_paths.size() == 1)
        return m_pattern->text();
    return RenamePattern::name(m_pattern->text(), m_start->value() + static_cast<int>(index), m_dates[index],
                               LibraryNames::baseOf(m_paths[index]));
}

void RenameSheet::updatePreview()
{
    auto *grid = static_cast<QGridLayout *>(m_preview->layout());
    while (QLayoutItem *item = grid->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    constexpr int kRoom = 180;
    QLabel *heading = WindowParts::label(Theme::Type::Control, QFont::DemiBold);
    heading->setText(LibraryUiTexts::tr("Preview"));
    grid->addWidget(heading, 0, 0, 1, 3);
    const int shown = std::min<int>(kPreviewed, static_cast<int>(m_paths.size()));
    bool isPossible = true;
    for (int i = 0; i < shown; ++i) {
        const QString name = LibraryNames::cleaned(nameOf(i));
        isPossible = isPossible && !name.isEmpty();
        QLabel *old = elided(LibraryNames::baseOf(m_paths[i]), kRoom);
        old->setForegroundRole(QPalette::PlaceholderText);
        grid->addWidget(old, i + 1, 0);
        grid->addWidget(new SymbolLabel(QStringLiteral("arrow.right"), 12), i + 1, 1);
        grid->addWidget(elided(name, kRoom), i + 1, 2);
    }
    if (const auto more = static_cast<int>(m_paths.size()) - shown; more > 0) {
        QLabel *rest = WindowParts::label(Theme::Type::Control, QFont::Normal, true);
        rest->setText(LibraryUiTexts::tr("…and %1 more").arg(more));
        grid->addWidget(rest, shown + 1, 0, 1, 3);
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(2, 1);
    primary()->setEnabled(isPossible);
}

void RenameSheet::begin()
{
    QList<std::pair<QString, QString>> names;
    for (qsizetype i = 0; i < m_paths.size(); ++i)
        names.append({m_paths[i], nameOf(i)});
    watch(m_ports.work.rename(names));
}
