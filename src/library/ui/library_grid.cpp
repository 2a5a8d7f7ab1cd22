#include "library/ui/library_grid.h"

#include "library/ui/library_actions.h"
#include "library/ui/texts.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QFileInfo>
#include <QHelpEvent>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QToolTip>

namespace {

constexpr qreal kRing = 3;
constexpr qreal kRingDistance = 2;
constexpr qreal kActionSize = 28;
constexpr int kScrollInterval = 16; // milliseconds
// A picture may lose this part of itself to fill its card; others are shown whole.
constexpr qreal kMostCropped = 0.3;

QStringList filesOf(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    return paths;
}

} // namespace

LibraryGrid::LibraryGrid(LibraryModel &model, LibraryActions &actions, QWidget *parent)
    : QAbstractScrollArea(parent), m_model(model), m_actions(actions)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(LibraryUiTexts::tr("Captures"));
    setProperty("focusRadius", -1); // the card has the ring
    viewport()->setMouseTracking(true);
    viewport()->setAcceptDrops(true);
    setAcceptDrops(true);
    m_pictures.isWanted = [this](const QString &path) {
        const int index = m_model.visibleIndex(path);
        return index >= 0 && cardRect(index).intersects(QRectF(viewport()->rect()));
    };
    connect(&m_pictures, &CardPictures::ready, this, &LibraryGrid::updateCard);
    connect(&model, &LibraryModel::visibleChanged, this, &LibraryGrid::layOut);
    connect(&model, &LibraryModel::cardSizeChanged, this, &LibraryGrid::layOut);
    connect(&model, &LibraryModel::selectionChanged, this, [this] { viewport()->update(); });
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
    const int anchor = m_layout.cardAt({CardLayout::kMargin + 1, offset() + CardLayout::kMargin});
    const bool keepsCards = anchor >= 0 && m_layout.count() == m_model.visibleCount() && offset() > 0;
    m_layout = CardLayout(m_model.sections(), viewport()->width(), m_model.cardSize());
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setRange(0, std::max(0, qCeil(m_layout.height()) - viewport()->height()));
    if (keepsCards)
        verticalScrollBar()->setValue(qRound(m_layout.card(anchor).top() - CardLayout::kMargin));
    viewport()->update();
}

void LibraryGrid::resizeEvent(QResizeEvent *)
{
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
        viewport()->update(cardRect(index).adjusted(-8, -8, 8, 8).toAlignedRect());
}

int LibraryGrid::pictureEdge() const
{
    const QRectF rect = m_layout.picture(0);
    // A wide picture that fills its card is wider than that.
    return qCeil(std::max(rect.width(), rect.height()) * devicePixelRatioF() * (1 + kMostCropped));
}

QString LibraryGrid::detailOf(const LibraryItem &item, const CardPictures::Card *card) const
{
    QStringList parts;
    if (Library::isVideo(item.path))
        parts.append(QFileInfo(item.path).suffix().toUpper());
    if (card && !card->pixelSize.isEmpty())
        parts.append(QStringLiteral("%1 × %2").arg(card->pixelSize.width()).arg(card->pixelSize.height()));
    parts.append(QLocale().formattedDataSize(item.bytes, 1, QLocale::DataSizeSIFormat));
    return parts.join(QStringLiteral(" · "));
}

QString LibraryGrid::description(int index) const
{
    const LibraryItem item = m_model.visibleItem(index);
    QStringList parts{QFileInfo(item.path).completeBaseName(), detailOf(item, nullptr)};
    if (item.date.isValid())
        parts.append(QLocale().toString(item.date, QLocale::ShortFormat));
    if (m_model.isVisibleFavorite(index))
        parts.append(LibraryUiTexts::tr("Favorite"));
    return parts.join(QStringLiteral(", "));
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
    // From the last to the first, because what is asked for last is made first.
    const std::vector<int> cards = m_layout.cardsIn(dirty.adjusted(-8, -8, 8, 8));
    for (auto card = cards.rbegin(); card != cards.rend(); ++card) {
        if (*card < m_model.visibleCount())
            paintCard(painter, *card);
    }
    if (m_press == Press::Band) {
        const QRectF band = QRectF(m_pressedAt, inContent(m_pointer)).normalized().translated(0, -offset());
        painter.setPen(QPen(theme.accent, 1));
        painter.setBrush(theme.accentWash);
        painter.drawRect(band);
    }
}

void LibraryGrid::paintPicture(QPainter &painter, const QRectF &rect, const LibraryItem &item)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    const CardPictures::Card *card = m_pictures.find(item, pictureEdge());
    QPainterPath shape;
    shape.addRoundedRect(rect, Theme::Radius::card, Theme::Radius::card);
    painter.fillPath(shape, theme.surface);
    if (card && !card->picture.isNull()) {
        const QSizeF size = card->picture.size();
        const QSizeF whole = size.scaled(rect.size(), Qt::KeepAspectRatio);
        const QSizeF filling = size.scaled(rect.size(), Qt::KeepAspectRatioByExpanding);
        const bool fills = rect.width() * rect.height() >=
                           (1 - kMostCropped) * filling.width() * filling.height();
        painter.save();
        painter.setClipPath(shape);
        if (fills) {
            // Pages are told by their beginning.
            const QRectF target(rect.topLeft(), filling);
            painter.drawImage(target, card->picture);
        } else {
            const QSizeF inner = QSizeF(whole).scaled(rect.size() - QSizeF(24, 24), Qt::KeepAspectRatio);
            QRectF target(QPointF(), inner);
            target.moveCenter(rect.center());
            painter.drawImage(target, card->picture);
            painter.setPen(QPen(theme.hairline, 1));
            painter.drawRect(target);
        }
        painter.restore();
    } else if (card || Library::isVideo(item.path)) {
        const QString symbol =
            Library::isVideo(item.path) ? QStringLiteral("film") : QStringLiteral("photo");
        QRectF place(0, 0, 36, 36);
        place.moveCenter(rect.center());
        drawSymbol(painter, place, symbol, theme.disabled);
    }
    if (Library::isVideo(item.path)) {
        const QRectF badge(rect.left() + 8, rect.bottom() - 30, 22, 22);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::material(true));
        painter.drawEllipse(badge);
        drawSymbol(painter, badge.adjusted(6, 6, -6, -6), QStringLiteral("play.fill"), Theme::onMaterial());
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), Theme::Radius::card, Theme::Radius::card);
}

void LibraryGrid::paintCard(QPainter &painter, int index)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    const LibraryItem item = m_model.visibleItem(index);
    const QRectF picture = m_layout.picture(index).translated(0, -offset());
    paintPicture(painter, picture, item);

    if (m_model.isSelected(item.path)) {
        const qreal distance = kRingDistance + kRing / 2;
        const qreal radius = Theme::Radius::card + distance;
        painter.setPen(QPen(theme.accent, kRing));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(picture.adjusted(-distance, -distance, distance, distance), radius, radius);
    } else if (hasFocus() && item.path == m_current) {
        painter.setPen(QPen(theme.accent, 1, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(picture.adjusted(-3, -3, 3, 3), Theme::Radius::card + 3,
                                Theme::Radius::card + 3);
    }
    if (item.path == m_hovered)
        paintActions(painter, picture, item.path);

    const bool isFavorite = m_model.isVisibleFavorite(index);
    QRectF name(picture.left() + 2, picture.bottom() + 8, picture.width() - 4, 18);
    if (isFavorite) {
        drawSymbol(painter, QRectF(name.right() - 14, name.top() + 2, 14, 14), QStringLiteral("star.fill"),
                   theme.warning);
        name.setRight(name.right() - 20);
    }
    painter.setFont(Theme::font(Theme::Type::Control, QFont::Medium));
    painter.setPen(theme.text);
    painter.drawText(name, Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(QFileInfo(item.path).completeBaseName(),
                                                      Qt::ElideMiddle, qFloor(name.width())));
    const QRectF detail(picture.left() + 2, name.bottom() + 1, picture.width() - 4, 16);
    painter.setFont(Theme::font(Theme::Type::Caption));
    painter.setPen(theme.secondary);
    painter.drawText(detail, Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(detailOf(item, m_pictures.find(item, pictureEdge())),
                                                      Qt::ElideRight, qFloor(detail.width())));
}

std::vector<LibraryGrid::Action> LibraryGrid::actionsOf(const QString &path) const
{
    if (Library::isImage(path))
        return {Action::Favorite, Action::Pin, Action::Copy, Action::Open};
    return {Action::Favorite, Action::Copy, Action::Open};
}

QRectF LibraryGrid::actionRect(const QRectF &picture, size_t place, size_t count) const
{
    const qreal left = picture.right() - 8 - static_cast<qreal>(count - place) * (kActionSize + 4) + 4;
    return {left, picture.bottom() - 8 - kActionSize, kActionSize, kActionSize};
}

std::optional<LibraryGrid::Action> LibraryGrid::actionAt(int index, const QPointF &position) const
{
    if (index < 0)
        return std::nullopt;
    const QRectF picture = m_layout.picture(index).translated(0, -offset());
    const std::vector<Action> actions = actionsOf(m_model.visiblePath(index));
    for (size_t place = 0; place < actions.size(); ++place) {
        if (actionRect(picture, place, actions.size()).contains(position))
            return actions[place];
    }
    return std::nullopt;
}

const char *LibraryGrid::symbolOf(Action action, const QString &path) const
{
    switch (action) {
    case Action::Favorite:
        return m_model.isVisibleFavorite(m_model.visibleIndex(path)) ? "star.fill" : "star";
    case Action::Pin:
        return "pin";
    case Action::Copy:
        return "doc.on.doc";
    case Action::Open:
        return "square.and.pencil";
    }
    Q_UNREACHABLE();
}

QString LibraryGrid::titleOf(Action action)
{
    switch (action) {
    case Action::Favorite:
        return LibraryUiTexts::tr("Favorite");
    case Action::Pin:
        return LibraryUiTexts::tr("Pin to screen");
    case Action::Copy:
        return LibraryUiTexts::tr("Copy");
    case Action::Open:
        return LibraryUiTexts::tr("Open");
    }
    Q_UNREACHABLE();
}

QString LibraryGrid::tipOf(Action action)
{
    switch (action) {
    case Action::Favorite:
        return LibraryUiTexts::tr("Star it so it shows in Favorites and is never auto-deleted.");
    case Action::Pin:
        return LibraryUiTexts::tr("Float it above all windows as a reference.");
    case Action::Copy:
        return LibraryUiTexts::tr("Copy the image to paste anywhere.");
    case Action::Open:
        return LibraryUiTexts::tr("Open it in the editor.");
    }
    Q_UNREACHABLE();
}

void LibraryGrid::paintActions(QPainter &painter, const QRectF &picture, const QString &path)
{
    painter.save();
    QPainterPath shape;
    shape.addRoundedRect(picture, Theme::Radius::card, Theme::Radius::card);
    QLinearGradient shade(picture.left(), picture.bottom() - 72, picture.left(), picture.bottom());
    QColor dark = Theme::material(true);
    shade.setColorAt(1, dark);
    dark.setAlpha(0);
    shade.setColorAt(0, dark);
    painter.setClipPath(shape);
    painter.fillRect(QRectF(picture.left(), picture.bottom() - 72, picture.width(), 72), shade);
    painter.restore();
    const std::vector<Action> actions = actionsOf(path);
    for (size_t place = 0; place < actions.size(); ++place) {
        const QRectF rect = actionRect(picture, place, actions.size());
        if (rect.contains(m_pointer)) {
            QColor wash = Theme::onMaterial();
            wash.setAlphaF(0.2F);
            painter.setPen(Qt::NoPen);
            painter.setBrush(wash);
            painter.drawRoundedRect(rect, Theme::Radius::control, Theme::Radius::control);
        }
        drawSymbol(painter, rect.adjusted(6, 6, -6, -6), QLatin1String(symbolOf(actions[place], path)),
                   Theme::onMaterial());
    }
}

void LibraryGrid::perform(Action action, const QString &path)
{
    switch (action) {
    case Action::Favorite:
        m_actions.setFavorite({path}, !m_model.isVisibleFavorite(m_model.visibleIndex(path)));
        break;
    case Action::Pin:
        m_actions.pin(path);
        break;
    case Action::Copy:
        m_actions.copy(path);
        break;
    case Action::Open:
        m_actions.open({path});
        break;
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

void LibraryGrid::moveTo(int index, Qt::KeyboardModifiers modifiers)
{
    if (m_model.visibleCount() == 0)
        return;
    index = std::clamp(index, 0, m_model.visibleCount() - 1);
    m_current = m_model.visiblePath(index);
    m_model.click(m_current, modifiers & Qt::ShiftModifier);
    makeVisible(index);
    QAccessibleEvent focus(this, QAccessible::Focus);
    focus.setChild(index);
    QAccessible::updateAccessibility(&focus);
    Q_EMIT currentChanged();
}

void LibraryGrid::keyPressEvent(QKeyEvent *event)
{
    // Without a place yet, every key leads to what is selected, or to the first card.
    int at = current();
    if (at < 0) {
        const QStringList selected = m_model.selectedPaths();
        at = selected.isEmpty() ? -1 : m_model.visibleIndex(selected.first());
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const int rows = std::max(1, static_cast<int>(viewport()->height() /
                                                  std::max(1.0, m_layout.card(0).height() + CardLayout::kGap)));
    const int right = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    if (event->matches(QKeySequence::SelectAll))
        return m_model.selectAll();
    if (event->matches(QKeySequence::Copy)) {
        if (const QStringList selected = m_model.selectedPaths(); selected.size() == 1)
            m_actions.copy(selected.first());
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        return moveTo(at < 0 ? 0 : at - right, modifiers);
    case Qt::Key_Right:
        return moveTo(at < 0 ? 0 : at + right, modifiers);
    case Qt::Key_Up:
        return moveTo(m_layout.moved(at, -1), modifiers);
    case Qt::Key_Down:
        return moveTo(m_layout.moved(at, 1), modifiers);
    case Qt::Key_PageUp:
        return moveTo(m_layout.moved(at, -rows), modifiers);
    case Qt::Key_PageDown:
        return moveTo(m_layout.moved(at, rows), modifiers);
    case Qt::Key_Home:
        return moveTo(0, modifiers);
    case Qt::Key_End:
        return moveTo(m_model.visibleCount() - 1, modifiers);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return m_actions.open(m_model.selectedPaths());
    case Qt::Key_Delete: {
        m_actions.trash(m_model.selectedPaths());
        // Goes on where it was.
        const int next = std::min(at, m_model.visibleCount() - 1);
        m_current = next >= 0 ? m_model.visiblePath(next) : QString();
        return;
    }
    case Qt::Key_F2:
        if (const QStringList selected = m_model.selectedPaths(); selected.size() == 1)
            m_actions.rename(selected.first());
        return;
    case Qt::Key_Escape:
        if (!m_model.selection().isEmpty())
            return m_model.setSelection({});
        break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

void LibraryGrid::mousePressEvent(QMouseEvent *event)
{
    m_pointer = event->position();
    m_pressedAt = inContent(m_pointer);
    m_pressedWith = event->modifiers();
    const int index = m_layout.cardAt(m_pressedAt);
    if (event->button() != Qt::LeftButton)
        return;
    if (index < 0) {
        m_press = Press::Band;
        m_beforeBand = m_pressedWith & (Qt::ControlModifier | Qt::ShiftModifier) ? m_model.selection()
                                                                                  : QSet<QString>();
        m_model.setSelection(m_beforeBand);
        return;
    }
    const QString path = m_model.visiblePath(index);
    if (path == m_hovered && actionAt(index, m_pointer)) {
        m_press = Press::Action;
        return;
    }
    m_current = path;
    // A click on one of several may be the begin of a drag of them all.
    if (m_model.isSelected(path) && !m_pressedWith) {
        m_press = Press::SelectedCard;
        return;
    }
    m_press = Press::Card;
    m_model.click(path, m_pressedWith);
    Q_EMIT currentChanged();
}

void LibraryGrid::mouseMoveEvent(QMouseEvent *event)
{
    m_pointer = event->position();
    const int index = m_layout.cardAt(inContent(m_pointer));
    switch (m_press) {
    case Press::Nothing: {
        const QString before = std::exchange(m_hovered, index < 0 ? QString() : m_model.visiblePath(index));
        updateCard(before);
        updateCard(m_hovered);
        break;
    }
    case Press::Card:
    case Press::SelectedCard:
        if ((inContent(m_pointer) - m_pressedAt).manhattanLength() >= QApplication::startDragDistance())
            startDrag();
        break;
    case Press::Action:
        break;
    case Press::Band:
        stretchBand();
        if (viewport()->rect().contains(m_pointer.toPoint()))
            m_scrolling.stop();
        else if (!m_scrolling.isActive())
            m_scrolling.start(kScrollInterval, this);
        break;
    }
}

void LibraryGrid::stretchBand()
{
    QSet<QString> selection = m_beforeBand;
    // A straight line is a band, too.
    const QRectF band = QRectF(m_pressedAt, inContent(m_pointer)).normalized().adjusted(0, 0, 0.5, 0.5);
    for (const int index : m_layout.cardsIn(band)) {
        const QString path = m_model.visiblePath(index);
        if (m_pressedWith & Qt::ControlModifier && m_beforeBand.contains(path))
            selection.remove(path);
        else
            selection.insert(path);
    }
    m_model.setSelection(selection);
    viewport()->update();
}

void LibraryGrid::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_scrolling.timerId())
        return QAbstractScrollArea::timerEvent(event);
    const qreal over = m_pointer.y() < 0 ? m_pointer.y() : m_pointer.y() - viewport()->height();
    if (m_pointer.y() < 0 || over > 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + std::clamp(qRound(over / 2), -40, 40));
    stretchBand();
}

void LibraryGrid::startDrag()
{
    m_press = Press::Nothing;
    QList<QUrl> urls;
    for (const QString &path : m_model.selectedPaths())
        urls.append(QUrl::fromLocalFile(path));
    if (urls.isEmpty())
        return;
    auto *data = new QMimeData;
    data->setUrls(urls);
    auto *drag = new QDrag(this);
    drag->setMimeData(data);
    if (const int index = current(); index >= 0) {
        const CardPictures::Card *card = m_pictures.find(m_model.visibleItem(index), pictureEdge());
        if (card && !card->picture.isNull())
            drag->setPixmap(QPixmap::fromImage(
                card->picture.scaled(160, 120, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    }
    drag->exec(Qt::CopyAction);
}

void LibraryGrid::mouseReleaseEvent(QMouseEvent *event)
{
    m_pointer = event->position();
    m_scrolling.stop();
    const Press press = std::exchange(m_press, Press::Nothing);
    const int index = m_layout.cardAt(inContent(m_pointer));
    const QString path = index < 0 ? QString() : m_model.visiblePath(index);
    switch (press) {
    case Press::Action:
        if (const auto action = actionAt(index, m_pointer); action && path == m_hovered)
            perform(*action, path);
        break;
    case Press::SelectedCard:
        if (!path.isEmpty())
            m_model.click(path, Qt::NoModifier);
        break;
    case Press::Band:
        viewport()->update();
        break;
    case Press::Nothing:
    case Press::Card:
        break;
    }
}

void LibraryGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    const int index = m_layout.cardAt(inContent(event->position()));
    if (event->button() != Qt::LeftButton || index < 0 || actionAt(index, event->position()))
        return mousePressEvent(event);
    m_actions.open({m_model.visiblePath(index)});
}

void LibraryGrid::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const int index = byKey ? current() : m_layout.cardAt(inContent(event->pos()));
    if (index < 0 || index >= m_model.visibleCount())
        return;
    const QString path = m_model.visiblePath(index);
    if (!m_model.isSelected(path))
        m_model.click(path, Qt::NoModifier);
    m_current = path;
    QMenu *menu = m_actions.makeMenu(m_model.selectedPaths());
    menu->popup(byKey ? viewport()->mapToGlobal(cardRect(index).center().toPoint()) : event->globalPos());
}

bool LibraryGrid::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const int index = m_layout.cardAt(inContent(help->pos()));
        if (const auto action = actionAt(index, help->pos()))
            QToolTip::showText(help->globalPos(), titleOf(*action) + QLatin1Char('\n') + tipOf(*action), viewport());
        else if (index >= 0 && !m_layout.picture(index).contains(inContent(help->pos())))
            QToolTip::showText(help->globalPos(), QFileInfo(m_model.visiblePath(index)).fileName(), viewport());
        else
            QToolTip::hideText();
        return true;
    }
    if (event->type() == QEvent::Leave) {
        const QString before = std::exchange(m_hovered, QString());
        updateCard(before);
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

void LibraryGrid::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->source() != this && !filesOf(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void LibraryGrid::dragMoveEvent(QDragMoveEvent *event)
{
    event->acceptProposedAction();
}

void LibraryGrid::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_actions.importFiles(filesOf(event->mimeData()));
}
