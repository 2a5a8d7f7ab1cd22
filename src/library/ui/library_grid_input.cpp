#include "library/ui/dragged_files.h"
#include "library/ui/library_actions.h"
#include "library/ui/library_grid.h"
#include "ui/theme_style.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>

// What the grid does at keys, at the pointer, and at what is dragged.

namespace {

constexpr int kScrollInterval = 16; // milliseconds

} // namespace

void LibraryGrid::perform(CardAction action, const QString &path)
{
    switch (action) {
    case CardAction::Favorite:
        m_actions.setFavorite({path}, !m_model.isVisibleFavorite(m_model.visibleIndex(path)));
        break;
    case CardAction::Pin:
        m_actions.pin(path);
        break;
    case CardAction::Copy:
        m_actions.copy(path);
        break;
    case CardAction::Open:
        m_actions.open({path});
        break;
    }
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

// Where keys go on: without a place yet, at what is selected.
int LibraryGrid::place() const
{
    if (const int index = current(); index >= 0)
        return index;
    const QStringList selected = m_model.selectedPaths();
    return selected.isEmpty() ? -1 : m_model.visibleIndex(selected.first());
}

void LibraryGrid::keyPressEvent(QKeyEvent *event)
{
    const int at = place();
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const int rows =
        std::max(1, static_cast<int>(viewport()->height() /
                                     std::max(1.0, m_layout.card(0).height() + CardLayout::kGap)));
    const int right = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    if (event->matches(QKeySequence::SelectAll))
        return m_model.selectAll();
    if (event->matches(QKeySequence::Undo))
        return m_actions.undoTrash();
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
    case Qt::Key_Space:
        if (const QStringList selected = m_model.selectedPaths(); !selected.isEmpty())
            m_model.setPreviewing(selected.contains(m_current) ? m_current : selected.first());
        return;
    }
    const QString text = event->text();
    if (!text.isEmpty() && text.at(0).isPrint() && !(modifiers & (Qt::ControlModifier | Qt::MetaModifier)))
        return Q_EMIT typed(text);
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
        m_beforeBand =
            m_pressedWith & (Qt::ControlModifier | Qt::ShiftModifier) ? m_model.selection() : QSet<QString>();
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
    case Press::Nothing:
        hover(index);
        break;
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

void LibraryGrid::hover(int index)
{
    const QString path = index < 0 ? QString() : m_model.visiblePath(index);
    const QString before = std::exchange(m_hovered, path);
    updateCard(before);
    updateCard(path);
    if (path == before)
        return;
    m_player.stop();
    // Where motion is unwanted the picture stands for the film.
    if (LibraryActions::isFilm(path) && motionDuration(this, 1) > 0) {
        const int edge = pictureEdge();
        m_player.play(path, {edge, edge});
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
    const int index = byKey ? place() : m_layout.cardAt(inContent(event->pos()));
    if (index < 0 || index >= m_model.visibleCount())
        return;
    const QString path = m_model.visiblePath(index);
    if (!m_model.isSelected(path))
        m_model.click(path, Qt::NoModifier);
    m_current = path;
    QMenu *menu = m_actions.makeMenu(m_model.selectedPaths());
    menu->popup(byKey ? viewport()->mapToGlobal(cardRect(index).center().toPoint()) : event->globalPos());
}

void LibraryGrid::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->source() != this && !localFiles(event->mimeData()).isEmpty())
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
    m_actions.importFiles(localFiles(event->mimeData()));
}
