#include "library/ui/library_sidebar.h"

#include "library/ui/dragged_files.h"
#include "library/ui/library_actions.h"
#include "library/ui/texts.h"
#include "ui/mirroring.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

enum Role { Symbol = Qt::UserRole, Count };

// Nothing but a heading has no symbol.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const override
    {
        const bool isHeading = index.data(Symbol).toString().isEmpty();
        return {100, isHeading ? (index.row() == 0 ? 28 : 40) : 30};
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const Theme::Tokens &theme = Theme::tokens(option.widget);
        const QString symbol = index.data(Symbol).toString();
        const QString title = index.data(Qt::DisplayRole).toString();
        const QRectF rect = QRectF(option.rect).adjusted(8, 1, -8, -1);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (symbol.isEmpty()) {
            painter->setFont(Theme::font(Theme::Type::Caption, QFont::DemiBold));
            painter->setPen(theme.secondary);
            painter->drawText(rect.adjusted(8, 0, -8, -4), Qt::AlignBottom | Qt::AlignLeft, title);
            painter->restore();
            return;
        }
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
        if (isSelected || isHovered) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(isSelected ? theme.accentWash : theme.hover);
            painter->drawRoundedRect(rect, Theme::Radius::control, Theme::Radius::control);
        }
        if (isSelected && option.state.testFlag(QStyle::State_HasFocus)) {
            painter->setPen(QPen(theme.accent, 1.5));
            painter->setBrush(Qt::NoBrush);
            painter->drawRoundedRect(rect.adjusted(1, 1, -1, -1), Theme::Radius::control,
                                     Theme::Radius::control);
        }
        constexpr qreal kIcon = Theme::Size::rowIcon;
        const QColor ink = isSelected ? theme.accentText : theme.text;
        const QRectF icon(rect.left() + 8, rect.center().y() - kIcon / 2, kIcon, kIcon);
        drawSymbol(*painter, mirrored(icon, rect, option.direction), symbol,
                   isSelected ? theme.accentText : theme.secondary);
        QRectF text = rect.adjusted(8 + kIcon + 8, 0, -10, 0);
        if (const QVariant count = index.data(Count); count.isValid()) {
            const QString words = QLocale().toString(count.toInt());
            painter->setFont(Theme::font(Theme::Type::Caption));
            painter->setPen(isSelected ? theme.accentText : theme.secondary);
            Theme::drawTabular(*painter, mirrored(text, rect, option.direction), Qt::AlignRight | Qt::AlignVCenter, words);
            text.setRight(text.right() - Theme::tabularWidth(painter->font(), words) - 8);
        }
        painter->setFont(Theme::font(Theme::Type::Body, isSelected ? QFont::Medium : QFont::Normal));
        painter->setPen(ink);
        painter->drawText(mirrored(text, rect, option.direction), Qt::AlignVCenter | Qt::AlignLeft,
                          painter->fontMetrics().elidedText(title, Qt::ElideRight, qFloor(text.width())));
        painter->restore();
    }
};

} // namespace

LibrarySidebar::LibrarySidebar(LibraryModel &model, LibraryActions &actions, QWidget *parent)
    : QListWidget(parent), m_model(model), m_actions(actions)
{
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new RowDelegate(this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setProperty("focusRadius", -1); // the row has the ring
    setMouseTracking(true);
    setAccessibleName(LibraryUiTexts::tr("Library"));
    setAcceptDrops(true);
    setDragDropMode(DropOnly);
    setDropIndicatorShown(false);
    connect(&model, &LibraryModel::sidebarChanged, this, &LibrarySidebar::fill);
    connect(&model, &LibraryModel::readingChanged, this, &LibrarySidebar::fill);
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (m_isFilling || row < 0)
            return;
        if (const auto &item = m_rows[static_cast<size_t>(row)].item)
            m_model.setSidebar(*item);
    });
    fill();
}

void LibrarySidebar::addHeading(const QString &title)
{
    auto *row = new QListWidgetItem(title, this);
    row->setFlags(Qt::NoItemFlags);
    m_rows.push_back({});
}

void LibrarySidebar::addRow(const SidebarItem &item, const QString &title, const QString &symbol)
{
    auto *row = new QListWidgetItem(title, this);
    const int count = m_model.count(item);
    row->setData(Symbol, symbol);
    row->setData(Count, count);
    row->setData(Qt::AccessibleTextRole, QStringLiteral("%1, %2").arg(title, QLocale().toString(count)));
    m_rows.push_back({item});
    if (item == m_model.sidebar())
        setCurrentItem(row);
}

void LibrarySidebar::fill()
{
    m_isFilling = true;
    setUpdatesEnabled(false);
    clear();
    m_rows.clear();
    const auto add = [this](LibraryFilter filter, const char *symbol) {
        addRow(filter, title(filter), QLatin1String(symbol));
    };
    addHeading(LibraryUiTexts::tr("Library"));
    add(LibraryFilter::All, "photo.on.rectangle");
    add(LibraryFilter::Images, "photo");
    add(LibraryFilter::Videos, "video");
    add(LibraryFilter::Favorites, "star");
    addHeading(LibraryUiTexts::tr("Recent"));
    add(LibraryFilter::Today, "clock");
    add(LibraryFilter::Week, "calendar");
    add(LibraryFilter::Month, "calendar");
    addHeading(LibraryUiTexts::tr("Collections"));
    for (const LibraryCollection &collection : m_model.collections())
        addRow(CollectionRow{collection.id}, collection.name, QStringLiteral("folder"));
    auto *make = new QListWidgetItem(LibraryUiTexts::tr("New Collection…"), this);
    make->setData(Symbol, QStringLiteral("plus"));
    make->setFlags(Qt::ItemIsEnabled);
    m_rows.push_back({});
    const QList<LibraryModel::Application> apps = m_model.apps();
    if (!apps.isEmpty())
        addHeading(LibraryUiTexts::tr("Apps"));
    for (const LibraryModel::Application &app : apps)
        addRow(ApplicationRow{app.name}, app.name, QStringLiteral("app.dashed"));
    setUpdatesEnabled(true);
    m_isFilling = false;
}

void LibrarySidebar::mousePressEvent(QMouseEvent *event)
{
    const QListWidgetItem *pressed = itemAt(event->position().toPoint());
    // The row without a count that isn't a heading makes a collection.
    if (pressed && event->button() == Qt::LeftButton && !pressed->data(Symbol).toString().isEmpty() &&
        !pressed->data(Count).isValid())
        return m_actions.newCollection({});
    if (event->button() == Qt::LeftButton)
        QListWidget::mousePressEvent(event);
}

std::optional<QUuid> LibrarySidebar::collectionAt(const QPoint &position) const
{
    const QModelIndex index = indexAt(position);
    if (!index.isValid())
        return std::nullopt;
    const auto &item = m_rows[static_cast<size_t>(index.row())].item;
    const auto *row = item ? std::get_if<CollectionRow>(&*item) : nullptr;
    return row ? std::optional(row->id) : std::nullopt;
}

void LibrarySidebar::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint position = byKey && currentItem() ? visualItemRect(currentItem()).center() : event->pos();
    const auto collection = collectionAt(position);
    if (!collection)
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(symbolIcon(QStringLiteral("rectangle.and.pencil.and.ellipsis")),
                    LibraryUiTexts::tr("Rename…"), &m_actions,
                    [this, id = *collection] { m_actions.renameCollection(id); });
    menu->addAction(symbolIcon(QStringLiteral("trash")), LibraryUiTexts::tr("Delete Collection"), this,
                    [this, id = *collection] { m_model.library().catalog().deleteCollection(id); });
    menu->popup(viewport()->mapToGlobal(position));
}

void LibrarySidebar::dragEnterEvent(QDragEnterEvent *event)
{
    if (!localFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void LibrarySidebar::dragMoveEvent(QDragMoveEvent *event)
{
    if (collectionAt(event->position().toPoint()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void LibrarySidebar::dropEvent(QDropEvent *event)
{
    const auto collection = collectionAt(event->position().toPoint());
    if (!collection)
        return event->ignore();
    QStringList mine;
    for (const QString &path : localFiles(event->mimeData())) {
        if (m_model.library().contains(path))
            mine.append(path);
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (!mine.isEmpty())
        m_actions.addToCollection(mine, *collection);
}
