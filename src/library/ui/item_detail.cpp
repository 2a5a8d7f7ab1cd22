#include "library/ui/item_detail.h"

#include "base/async.h"
#include "base/notice.h"
#include "document/image_files.h"
#include "document/project_file.h"
#include "library/film_thumbnails.h"
#include "library/library_names.h"
#include "library/model/library_model.h"
#include "library/ui/library_work.h"
#include "library/ui/picture_pane.h"
#include "library/ui/texts.h"
#include "library/ui/versions_row.h"
#include "library/ui/window_parts.h"
#include "platform/movies.h"
#include "ui/symbol.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

using WindowParts::button;
using WindowParts::label;

namespace {

constexpr int kPixels = 700;     // of the picture
constexpr int kCopiedFor = 1500; // milliseconds

QLayout *heading(const QString &symbol, const QString &text, QWidget *right = nullptr)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(new SymbolLabel(symbol, Theme::Size::rowIcon));
    QLabel *words = label(Theme::Type::Control, QFont::DemiBold);
    words->setText(text);
    row->addWidget(words, 1);
    if (right)
        row->addWidget(right);
    return row;
}

QLabel *paragraph()
{
    QLabel *made = label(Theme::Type::Control);
    made->setWordWrap(true);
    made->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return made;
}

} // namespace

ItemDetail::ItemDetail(const LibraryPorts &ports, LibraryActions &actions, QWidget *parent)
    : QWidget(parent),
      m_ports(ports),
      m_actions(actions),
      m_picture(new PicturePane),
      m_name(new QLineEdit),
      m_info(new QGridLayout),
      m_versions(new VersionsRow),
      m_description(new QWidget),
      m_textSection(new QWidget)
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(Theme::Space::margin, Theme::Space::margin, Theme::Space::margin,
                             Theme::Space::margin);
    rows->setSpacing(Theme::Space::group);
    rows->addWidget(m_picture);
    m_name->setAccessibleName(LibraryUiTexts::tr("Name"));
    rows->addWidget(m_name);
    rows->addWidget(makeActions());
    m_info->setHorizontalSpacing(Theme::Space::group);
    m_info->setVerticalSpacing(6);
    m_info->setColumnStretch(1, 1);
    rows->addLayout(m_info);
    rows->addWidget(m_versions);
    auto *description = new QVBoxLayout(m_description);
    description->setContentsMargins({});
    description->addLayout(heading(QStringLiteral("sparkles"), LibraryUiTexts::tr("AI Description")));
    m_descriptionText = paragraph();
    description->addWidget(m_descriptionText);
    rows->addWidget(m_description);
    m_textSection->setLayout(makeTextSection());
    rows->addWidget(m_textSection);
    rows->addStretch(1);

    connect(m_picture, &PicturePane::clicked, this, [this] { m_ports.model.setPreviewing(m_item.path); });
    connect(m_name, &QLineEdit::editingFinished, this, &ItemDetail::commitName);
    connect(m_versions, &VersionsRow::restoreWanted, this,
            [this](const LibraryVersion &version) { m_ports.work.restore(version, m_item.path); });
    connect(&m_ports.model, &LibraryModel::cardsChanged, this, [this](const QStringList &paths) {
        if (paths.contains(m_item.path))
            setItem(m_ports.model.library().item(m_item.path));
    });
    connect(&m_ports.model.library().catalog(), &LibraryCatalog::changed, this,
            [this](const QStringList &names) {
                if (names.contains(LibraryNames::nameOf(m_item.path)))
                    updateCatalog();
            });
    m_copied.setSingleShot(true);
    connect(&m_copied, &QTimer::timeout, this, [this] {
        m_copyText->setText(LibraryUiTexts::tr("Copy"));
        m_copyText->setSymbol(QStringLiteral("doc.on.doc"));
    });
}

QWidget *ItemDetail::makeActions()
{
    auto *box = new QWidget;
    auto *rows = new QVBoxLayout(box);
    rows->setContentsMargins({});
    rows->setSpacing(Theme::Space::inside);
    auto *open = new QPushButton;
    open->setObjectName(QStringLiteral("open"));
    open->setAutoDefault(false);
    connect(open, &QPushButton::clicked, this, [this] { m_actions.open({m_item.path}); });
    rows->addWidget(open);
    auto *row = new QHBoxLayout;
    row->setSpacing(0);
    const auto add = [this, row](const char *symbol, const QString &text, const QString &tip, auto action) {
        BarButton *made = button(QLatin1String(symbol), text, tip, BarButton::Label::None);
        connect(made, &QAbstractButton::clicked, this, action);
        row->addWidget(made);
        row->addStretch(1);
        return made;
    };
    m_star = add("star", LibraryUiTexts::tr("Favorite"),
                 LibraryUiTexts::tr("Star it so it shows in Favorites and is never auto-deleted."), [this] {
                     const bool isOn = m_ports.model.library().catalog().isFavorite(m_item.path);
                     m_actions.setFavorite({m_item.path}, !isOn);
                 });
    add("doc.on.doc", LibraryUiTexts::tr("Copy"), LibraryUiTexts::tr("Copy it to paste anywhere."),
        [this] { m_actions.copy(m_item.path); });
    m_pin = add("pin", LibraryUiTexts::tr("Pin"),
                LibraryUiTexts::tr("Float it above all windows as a reference."),
                [this] { m_actions.pin(m_item.path); });
    add("folder", LibraryUiTexts::tr("Finder"), LibraryUiTexts::tr("Show the file in Finder."),
        [this] { m_actions.reveal(m_item.path); });
    BarButton *share = button(QStringLiteral("square.and.arrow.up"), LibraryUiTexts::tr("Share"), {},
                              BarButton::Label::None);
    row->addWidget(share);
    row->addStretch(1);
    connect(share, &QAbstractButton::clicked, this, [this, share] {
        m_actions.share(m_item.path, share->mapToGlobal(QPoint(0, share->height() + Theme::Space::unit)));
    });
    BarButton *trash = button(QStringLiteral("trash"), LibraryUiTexts::tr("Trash"),
                              LibraryUiTexts::tr("Move it to the Trash."), BarButton::Label::None);
    connect(trash, &QAbstractButton::clicked, this, [this] { m_actions.trash({m_item.path}); });
    row->addWidget(trash);
    rows->addLayout(row);
    return box;
}

QLayout *ItemDetail::makeTextSection()
{
    auto *rows = new QVBoxLayout;
    rows->setContentsMargins({});
    m_copyText =
        button(QStringLiteral("doc.on.doc"), LibraryUiTexts::tr("Copy"), {}, BarButton::Label::Beside);
    connect(m_copyText, &QAbstractButton::clicked, this, [this] {
        m_actions.copyTextSilently(m_item.path);
        m_copyText->setText(LibraryUiTexts::tr("Copied"));
        m_copyText->setSymbol(QStringLiteral("checkmark.circle.fill"));
        m_copyText->updateGeometry();
        m_copied.start(kCopiedFor);
    });
    rows->addLayout(
        heading(QStringLiteral("text.viewfinder"), LibraryUiTexts::tr("Text in Image"), m_copyText));
    m_text = paragraph();
    rows->addWidget(m_text);
    return rows;
}

void ItemDetail::setItem(const LibraryItem &item)
{
    const bool isOther = item.path != m_item.path;
    m_item = item;
    const bool isVideo = Library::isVideo(item.path);
    if (isOther) {
        m_facts = {};
        m_picture->setPicture({});
        m_picture->setSymbol(isVideo ? QStringLiteral("film") : QString());
        m_versions->setVersions({});
    }
    if (isOther || !m_name->hasFocus())
        m_name->setText(LibraryNames::baseOf(item.path));
    findChild<QPushButton *>(QStringLiteral("open"))
        ->setText(LibraryActions::isFilm(item.path) ? LibraryUiTexts::tr("Open in Video Editor")
                                                    : LibraryUiTexts::tr("Open in Editor"));
    m_pin->setVisible(!isVideo);
    m_textSection->setVisible(!isVideo);
    updateCatalog();
    load();
}

void ItemDetail::load()
{
    const int generation = ++m_generation;
    const auto work = [movies = &m_ports.movies, path = m_item.path,
                       project = m_ports.model.library().projectDirectory(m_item.path),
                       history = FileHistory(m_ports.model.library(), m_item.path)] {
        Facts facts;
        facts.card = CardPictures::of(*movies, path, kPixels);
        if (const auto read = ProjectFile::readDescription(project + QStringLiteral("/project.json")))
            facts.layers = static_cast<int>(read->annotations.size());
        facts.versions = history.versions();
        return facts;
    };
    whenDone(runInBackground(work), this, [this, generation](const Facts &facts) {
        if (generation == m_generation)
            take(facts);
    });
}

void ItemDetail::take(const Facts &facts)
{
    m_facts = facts;
    m_picture->setPicture(facts.card.picture);
    const bool isVideo = Library::isVideo(m_item.path);
    m_picture->setSymbol(isVideo                       ? QStringLiteral("play.fill")
                         : facts.card.picture.isNull() ? QStringLiteral("photo")
                                                       : QString());
    m_versions->setVersions(facts.versions);
    updateCatalog();
}

// What is known beyond the file, and the rows, which tell of both.
void ItemDetail::updateCatalog()
{
    const LibraryCatalog &catalog = m_ports.model.library().catalog();
    const QString name = LibraryNames::nameOf(m_item.path);
    const bool isFavorite = catalog.isFavorite(name);
    m_star->setSymbol(isFavorite ? QStringLiteral("star.fill") : QStringLiteral("star"));
    m_star->setAccessibleName(isFavorite ? LibraryUiTexts::tr("Remove from Favorites")
                                         : LibraryUiTexts::tr("Add to Favorites"));
    const QString description = catalog.meta().descriptions.value(name);
    m_descriptionText->setText(description);
    m_description->setVisible(!description.isEmpty());
    const QString text = catalog.data().texts.value(name);
    m_text->setText(text.isEmpty() ? LibraryUiTexts::tr("No text found (or not indexed yet).") : text);
    m_text->setForegroundRole(text.isEmpty() ? QPalette::PlaceholderText : QPalette::WindowText);
    m_copyText->setVisible(!text.isEmpty());

    QList<std::pair<QString, QString>> rows{
        {LibraryUiTexts::tr("Size"), WindowParts::bytesText(m_item.bytes)},
    };
    if (m_item.date.isValid())
        rows.append({LibraryUiTexts::tr("Modified"), QLocale().toString(m_item.date, QLocale::ShortFormat)});
    if (!m_facts.card.pixelSize.isEmpty())
        rows.append({LibraryUiTexts::tr("Dimensions"), QStringLiteral("%1 × %2")
                                                           .arg(m_facts.card.pixelSize.width())
                                                           .arg(m_facts.card.pixelSize.height())});
    if (m_facts.card.seconds > 0)
        rows.append({LibraryUiTexts::tr("Duration"), FilmThumbnails::durationText(m_facts.card.seconds)});
    if (const QString source = catalog.meta().sources.value(name); !source.isEmpty())
        rows.append({LibraryUiTexts::tr("From"), source});
    if (m_facts.layers) {
        rows.append({LibraryUiTexts::tr("Layers"), QLocale().toString(*m_facts.layers)});
        rows.append({LibraryUiTexts::tr("Editable"), LibraryUiTexts::tr("Yes")});
    }
    setRows(rows);
}

void ItemDetail::setRows(const QList<std::pair<QString, QString>> &rows)
{
    while (QLayoutItem *item = m_info->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (int row = 0; row < rows.size(); ++row) {
        QLabel *name = label(Theme::Type::Control, QFont::Normal, true);
        name->setText(rows[row].first);
        m_info->addWidget(name, row, 0, Qt::AlignTop);
        QLabel *value = paragraph();
        value->setText(rows[row].second);
        m_info->addWidget(value, row, 1);
    }
}

void ItemDetail::commitName()
{
    const QString wanted = m_name->text().trimmed();
    const QString present = LibraryNames::baseOf(m_item.path);
    if (wanted.isEmpty() || wanted == present)
        return m_name->setText(present);
    const auto renamed = m_ports.model.library().rename(m_item.path, wanted);
    if (!renamed) {
        m_name->setText(present);
        m_ports.notices.post(renamed.error().message, QStringLiteral("exclamationmark.triangle.fill"));
        return;
    }
    m_item.path = *renamed;
    m_name->setText(LibraryNames::baseOf(*renamed));
}
