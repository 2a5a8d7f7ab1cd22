#include "library/ui/library_grid.h"

#include "library/library_names.h"
#include "library/ui/card_painter.h"
#include "library/ui/texts.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QLocale>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

constexpr qreal kReach = CardPainter::kReach;

LibraryGrid::LibraryGrid(LibraryModel &model, LibraryActions &actions, Movies &movies, QWidget *parent)
    : QAbstractScrollArea(parent), m_model(model), m_actions(actions), m_pictures(movies), m_player(movies)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(LibraryUiTexts::tr("Captures"));
    viewport()->setMouseTracking(true);
    viewport()->setAcceptDrops(true);
    setAcceptDrops(true);
    m_pictures.isWanted = [this](const QString &path) {
        const int index = m_model.visibleIndex(path);
        return index >= 0 && cardRect(index).intersects(QRectF(viewport()->rect()));
    };
    connect(&m_pictures, &CardPictures::ready, this, &LibraryGrid::updateCard);
    connect(&m_player, &FilmPlayer::changed, this, [this] { updateCard(m_player.path()); });
    connect(&model, &LibraryModel::visibleChanged, this, &LibraryGrid::layOut);
    connect(&model, &LibraryModel::cardSizeChanged, this, &LibraryGrid::layOut);
    connect(&model, &LibraryModel::selectionChanged, this, [this] { viewport()->update(); });
    // The keyboard goes along with the preview.
    connect(&model, &LibraryModel::previewingChanged, this, [this] {
        if (!m_model.previewing())
            return;
        m_current = *m_model.previewing();
        if (current() >= 0)
            makeVisible(current());
    });
    connect(&model, &LibraryModel::cardsChanged, this, [this](const QStringList &paths) {
        for (const QString &path : paths)
            updateCard(path);
    });
    layOut();
}

qreal LibraryGrid::offset() const
{
    return verticalScrollBar()->value();
}

void LibraryGrid::layOut()
{
    // What was at the top stays there when the cards change their size.
    const bool fromTheRight = layoutDirection() == Qt::RightToLeft;
    const qreal first = CardLayout::kMargin + 1;
    const int anchor =
        m_layout.cardAt({fromTheRight ? viewport()->width() - first : first, offset() + CardLayout::kMargin});
    const bool keepsCards = anchor >= 0 && m_layout.count() == m_model.visibleCount() && offset() > 0;
    m_layout = CardLayout(m_model.sections(), viewport()->width(), m_model.cardSize(), layoutDirection());
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setRange(0, std::max(0, qCeil(m_layout.height()) - viewport()->height()));
    if (keepsCards)
        verticalScrollBar()->setValue(qRound(m_layout.card(anchor).top() - CardLayout::kMargin));
    viewport()->update();
}

void LibraryGrid::resizeEvent(QResizeEvent *)
{
    setProperty("focusRect", rect().adjusted(6, 6, -6, -6)); // inside: it reaches from edge to edge
    layOut();
}

void LibraryGrid::scrollContentsBy(int, int)
{
    viewport()->update();
}

void LibraryGrid::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

void LibraryGrid::updateCard(const QString &path)
{
    const int index = m_model.visibleIndex(path);
    if (index >= 0 && index < m_layout.count())
        viewport()->update(cardRect(index).adjusted(-kReach, -kReach, kReach, kReach).toAlignedRect());
}

int LibraryGrid::pictureEdge() const
{
    const QRectF rect = m_layout.picture(0);
    // A wide picture that fills its card is wider than that.
    return qCeil(std::max(rect.width(), rect.height()) * devicePixelRatioF() *
                 (1 + CardPainter::kMostCropped));
}

QString LibraryGrid::description(int index) const
{
    const LibraryItem item = m_model.visibleItem(index);
    QStringList parts{LibraryNames::baseOf(item.path), cardDetail(item, nullptr)};
    if (item.date.isValid())
        parts.append(QLocale().toString(item.date, QLocale::ShortFormat));
    if (m_model.isVisibleFavorite(index))
        parts.append(LibraryUiTexts::tr("Favorite"));
    return parts.join(QStringLiteral(", "));
}

CardPainter::Card LibraryGrid::cardAt(int index)
{
    const LibraryItem item = m_model.visibleItem(index);
    return {.item = item,
            .picture = pictureRect(index),
            .content = m_pictures.find(item, pictureEdge()),
            .isFavorite = m_model.isVisibleFavorite(index),
            .isSelected = m_model.isSelected(item.path),
            .isCurrent = hasFocus() && item.path == m_current,
            .isHovered = item.path == m_hovered,
            .film = item.path == m_player.path() ? m_player.picture() : QImage(),
            .pointer = m_pointer};
}

std::optional<CardAction> LibraryGrid::actionAt(int index, const QPointF &position) const
{
    if (index < 0)
        return std::nullopt;
    return cardActionAt(position, pictureRect(index), m_model.visiblePath(index));
}

void LibraryGrid::paintEvent(QPaintEvent *event)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(viewport());
    painter.fillRect(event->rect(), theme.window);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF dirty = QRectF(event->rect()).translated(0, offset());

    for (int section = 0; section < m_layout.sectionCount(); ++section) {
        const QRectF heading = m_layout.heading(section);
        if (heading.isEmpty() || !heading.intersects(dirty))
            continue;
        painter.setFont(Theme::font(Theme::Type::Title, QFont::DemiBold));
        painter.setPen(theme.text);
        painter.drawText(heading.translated(0, -offset()), Qt::AlignVCenter | Qt::AlignLeft,
                         m_model.sections()[section].title);
    }
    CardPainter cardPainter(painter, theme);
    // From the last to the first, because what is asked for last is made first.
    const std::vector<int> cards = m_layout.cardsIn(dirty.adjusted(-kReach, -kReach, kReach, kReach));
    for (auto card = cards.rbegin(); card != cards.rend(); ++card) {
        if (*card < m_model.visibleCount())
            cardPainter.paint(cardAt(*card));
    }
    if (m_press == Press::Band) {
        const QRectF band = QRectF(m_pressedAt, inContent(m_pointer)).normalized().translated(0, -offset());
        painter.setPen(QPen(theme.accent, 1));
        painter.setBrush(theme.accentWash);
        painter.drawRect(band);
    }
}

void LibraryGrid::makeVisible(int index)
{
    const QRectF card = m_layout.card(index).adjusted(0, -12, 0, 12);
    if (card.top() < offset())
        verticalScrollBar()->setValue(qFloor(index == 0 ? 0 : card.top()));
    else if (card.bottom() > offset() + viewport()->height())
        verticalScrollBar()->setValue(qCeil(card.bottom() - viewport()->height()));
}

bool LibraryGrid::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const int index = m_layout.cardAt(inContent(help->pos()));
        if (const auto action = actionAt(index, help->pos()))
            QToolTip::showText(help->globalPos(), title(*action) + QLatin1Char('\n') + tip(*action),
                               viewport());
        else if (index >= 0 && !m_layout.picture(index).contains(inContent(help->pos())))
            QToolTip::showText(help->globalPos(), LibraryNames::nameOf(m_model.visiblePath(index)),
                               viewport());
        else
            QToolTip::hideText();
        return true;
    }
    if (event->type() == QEvent::Leave) {
        hover(-1);
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void LibraryGrid::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void LibraryGrid::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}
