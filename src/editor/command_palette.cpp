#include "editor/command_palette.h"

#include "editor/texts.h"
#include "ui/mirroring.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStackedLayout>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int kRowHeight = 34;
constexpr int kShownRows = 9;
constexpr int kCardWidth = 520;

class Model : public QAbstractListModel {
public:
    explicit Model(PaletteList &list) : m_list(list) {}
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : m_list.count();
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        const PaletteCommand &command = *m_list.filtered()[index.row()];
        if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
            return command.title;
        if (role == Qt::AccessibleDescriptionRole)
            return shortcutText(command.shortcut);
        return {};
    }
    void reload()
    {
        beginResetModel();
        endResetModel();
    }

private:
    PaletteList &m_list;
};

class RowDelegate : public QStyledItemDelegate {
public:
    RowDelegate(PaletteList &list, QObject *parent) : QStyledItemDelegate(parent), m_list(list) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return {100, kRowHeight};
    }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const auto &t = Theme::tokens(option.palette);
        const PaletteCommand &command = *m_list.filtered()[index.row()];
        const bool chosen = index.row() == m_list.selection();
        painter->setRenderHint(QPainter::Antialiasing);
        if (chosen) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(t.accentFill);
            painter->drawRoundedRect(option.rect, Theme::Radius::control, Theme::Radius::control);
        }
        const QColor ink = chosen ? t.onAccent : t.text;
        const QRectF icon(option.rect.left() + 10, option.rect.center().y() - 8 + 0.5, 16, 16);
        drawSymbol(*painter, mirrored(icon, option.rect, option.direction), command.symbol, ink);
        const QRectF line = mirrored(option.rect.adjusted(38, 0, -12, 0), option.rect, option.direction);
        painter->setFont(Theme::font(Theme::Type::Body));
        painter->setPen(ink);
        painter->drawText(line, Qt::AlignVCenter | Qt::AlignLeft, command.title);
        painter->setFont(Theme::font(Theme::Type::Control));
        painter->setPen(chosen ? t.onAccent : t.secondary);
        painter->drawText(line, Qt::AlignVCenter | Qt::AlignRight, shortcutText(command.shortcut));
    }

private:
    PaletteList &m_list;
};

} // namespace

void PaletteList::setQuery(const QString &query)
{
    const QStringList words = query.trimmed().toLower().split(' ', Qt::SkipEmptyParts);
    m_shown.clear();
    for (int i = 0; i < m_commands.size(); ++i) {
        const QString title = m_commands[i].title.toLower();
        if (std::all_of(words.begin(), words.end(),
                        [&title](const QString &word) { return title.contains(word); }))
            m_shown.append(i);
    }
    m_selection = 0;
}

QList<const PaletteCommand *> PaletteList::filtered() const
{
    QList<const PaletteCommand *> result;
    for (int index : m_shown)
        result.append(&m_commands[index]);
    return result;
}

void PaletteList::move(int delta)
{
    if (count() > 0)
        m_selection = ((m_selection + delta) % count() + count()) % count();
}

const PaletteCommand *PaletteList::selected() const
{
    return m_selection >= 0 && m_selection < count() ? &m_commands[m_shown[m_selection]] : nullptr;
}

class CommandPalette::Rows : public QListView {
public:
    explicit Rows(PaletteList &list) : m_list(list), m_model(list)
    {
        setModel(&m_model);
        setItemDelegate(new RowDelegate(list, this));
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setMouseTracking(true);
        setUniformItemSizes(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        setAccessibleName(EditorTexts::tr("Commands"));
        QPalette clear = palette();
        clear.setColor(QPalette::Base, Qt::transparent);
        setPalette(clear);
        viewport()->setAutoFillBackground(false);
    }
    void reload()
    {
        m_model.reload();
        showSelection();
    }
    void showSelection()
    {
        setCurrentIndex(m_model.index(m_list.selection(), 0));
        viewport()->update();
    }
    std::function<void()> chosen;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        if (const QModelIndex index = indexAt(event->pos()); index.isValid()) {
            m_list.select(index.row());
            chosen();
        }
    }

private:
    PaletteList &m_list;
    Model m_model;
};

CommandPalette::CommandPalette(QWidget *over, QList<PaletteCommand> commands)
    : Sheet(over, {}, {}), m_list(std::move(commands)), m_field(new QLineEdit), m_rows(new Rows(m_list))
{
    setObjectName("palette");
    setAccessibleName(EditorTexts::tr("Command palette"));
    setCardWidth(kCardWidth);
    m_field->setObjectName("paletteField");
    m_field->setPlaceholderText(EditorTexts::tr("Type a command…"));
    m_field->setAccessibleName(m_field->placeholderText());
    m_field->addAction(symbolIcon("magnifyingglass"), QLineEdit::LeadingPosition)
        ->setText(m_field->placeholderText());
    m_field->setFont(Theme::font(Theme::Type::Title));
    m_field->setMinimumHeight(38);
    m_field->setProperty("focusRadius", -1.0);
    m_field->installEventFilter(this);

    auto *none = new QLabel(EditorTexts::tr("No matching commands"));
    none->setAlignment(Qt::AlignCenter);
    none->setForegroundRole(QPalette::PlaceholderText);
    auto *lines = new QWidget;
    lines->setFixedHeight(kRowHeight * kShownRows);
    auto *stack = new QStackedLayout(lines);
    stack->addWidget(m_rows);
    stack->addWidget(none);

    content()->addWidget(m_field);
    content()->addWidget(lines);
    m_rows->chosen = [this] { runSelected(); };
    m_rows->reload();
    connect(m_field, &QLineEdit::textChanged, this, [this, stack](const QString &query) {
        m_list.setQuery(query);
        m_rows->reload();
        stack->setCurrentIndex(m_list.count() > 0 ? 0 : 1);
    });
}

CommandPalette::~CommandPalette() = default;

void CommandPalette::runSelected()
{
    const PaletteCommand *command = m_list.selected();
    if (!command)
        return;
    const auto run = command->run;
    // On a later turn: what it opens must not be attached to a sheet that is closing.
    QTimer::singleShot(0, window(), run);
    close();
}

bool CommandPalette::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Up:
            m_list.move(-1);
            m_rows->showSelection();
            return true;
        case Qt::Key_Down:
            m_list.move(1);
            m_rows->showSelection();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            runSelected();
            return true;
        case Qt::Key_Escape:
            close();
            return true;
        default:
            break;
        }
    }
    return Sheet::eventFilter(watched, event);
}
