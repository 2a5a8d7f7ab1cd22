#include "library/ui/versions_row.h"

#include "library/ui/texts.h"
#include "library/ui/window_parts.h"
#include "ui/symbol.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>

VersionsRow::VersionsRow(QWidget *parent)
    : QWidget(parent),
      m_count(WindowParts::label(Theme::Type::Control)),
      m_restore(WindowParts::button(
          {}, LibraryUiTexts::tr("Restore"),
          LibraryUiTexts::tr(
              "Go back to an earlier save. The current version is kept too, so you can switch back."),
          BarButton::Label::Beside))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(Theme::Space::inside);
    row->addWidget(new SymbolLabel(QStringLiteral("clock.arrow.circlepath"), Theme::Size::rowIcon));
    row->addWidget(m_count, 1);
    row->addWidget(m_restore);
    m_restore->setMenu(new QMenu);
    connect(m_restore, &BarButton::menuAboutToOpen, this, &VersionsRow::fillMenu);
    hide();
}

void VersionsRow::setVersions(const QList<LibraryVersion> &versions)
{
    m_versions = versions;
    m_count->setText(LibraryUiTexts::tr("%n earlier version(s)", nullptr, static_cast<int>(versions.size())));
    setVisible(!versions.isEmpty());
}

void VersionsRow::fillMenu()
{
    QMenu *menu = m_restore->menu();
    menu->clear();
    for (const LibraryVersion &version : m_versions) {
        const QString date = QLocale().toString(version.date.date(), QLocale::ShortFormat) +
                             QStringLiteral(", ") +
                             QLocale().toString(version.date.time(), QStringLiteral("HH:mm:ss"));
        menu->addAction(date, this, [this, version] { Q_EMIT restoreWanted(version); });
    }
}
