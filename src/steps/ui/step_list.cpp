#include "steps/ui/step_list.h"

#include "steps/steps_guide_model.h"
#include "steps/ui/caption_field.h"
#include "steps/ui/step_row.h"
#include "steps/ui/texts.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>

namespace {

constexpr int kMargin = Theme::Space::margin;
constexpr int kGap = Theme::Space::group;
constexpr int kBelow = 72;      // room for what floats over the end of the list
constexpr int kAtOnce = 4;      // cards that are made in one go: some milliseconds
constexpr int kEdge = 48;       // where a dragged card scrolls the list
constexpr int kScrollStep = 14; // points, 60 times a second
constexpr double kNudge = 10;   // pixels of the picture

} // namespace

// Holds the cards, and shows where a dragged one would go.
class StepList::Column : public QWidget {
public:
    explicit Column(StepList &list) : m_list(list)
    {
        setFocusPolicy(Qt::StrongFocus);
        setProperty("focusRadius", -1.0); // the card shows it
        setAccessibleName(StepsUiTexts::tr("Steps"));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (m_list.m_dropAt < 0 || m_list.m_order.isEmpty())
            return;
        const bool isEnd = m_list.m_dropAt >= m_list.m_order.size();
        const QRect place =
            m_list.m_places.value(isEnd ? m_list.m_order.last() : m_list.m_order[m_list.m_dropAt]);
        const int y = isEnd ? place.bottom() + kGap / 2 : place.top() - kGap / 2;
        QPainter painter(this);
        painter.fillRect(QRect(place.left(), y - 1, place.width(), 3), Theme::tokens(this).accent);
    }

private:
    StepList &m_list;
};

StepList::StepList(StepsGuideModel &model, QWidget *parent)
    : QScrollArea(parent), m_model(model), m_column(new Column(*this))
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(m_column);
    setFocusProxy(m_column);
    setFocusPolicy(Qt::NoFocus);
    m_column->installEventFilter(this);
    m_making.setInterval(0);
    connect(&m_making, &QTimer::timeout, this, &StepList::makeSome);
    m_layingOut.setSingleShot(true);
    m_layingOut.setInterval(0);
    connect(&m_layingOut, &QTimer::timeout, this, &StepList::layOut);
    m_scrolling.setInterval(16);
    connect(&model, &StepsGuideModel::stepsChanged, this, &StepList::follow);
    connect(&model, &StepsGuideModel::stepChanged, this, [this](const QUuid &step) {
        if (StepRow *changed = row(step))
            changed->follow();
    });
    connect(&model.previews(), &GuidePreviews::changed, this, [this](const QUuid &step) {
        StepRow *changed = row(step);
        if (changed && m_nearby.contains(step))
            changed->followPreview();
    });
    follow();
    m_current = m_order.value(0);
    tellStandings();
}

qsizetype StepList::indexOf(const QUuid &step) const
{
    return m_order.indexOf(step);
}

QList<QUuid> StepList::selected() const
{
    QList<QUuid> steps;
    for (const QUuid &step : m_order) {
        if (m_selected.contains(step))
            steps.append(step);
    }
    return steps;
}

void StepList::select(const QList<QUuid> &steps)
{
    m_selected = QSet<QUuid>(steps.begin(), steps.end());
    if (!steps.isEmpty())
        m_current = m_anchor = steps.last();
    tellStandings();
}

// The guide has other steps, or another order.
void StepList::follow()
{
    const qsizetype before = indexOf(m_current);
    m_order.clear();
    for (const GuideStep &step : m_model.steps())
        m_order.append(step.id);
    for (auto each = m_rows.begin(); each != m_rows.end();) {
        if (m_order.contains(each.key())) {
            ++each;
            continue;
        }
        each.value()->hide();
        each.value()->deleteLater();
        each = m_rows.erase(each);
    }
    m_selected.intersect(QSet<QUuid>(m_order.begin(), m_order.end()));
    if (!m_order.contains(m_current) && !m_order.isEmpty())
        m_current = m_order[std::clamp<qsizetype>(before, 0, m_order.size() - 1)];
    layOut();
    m_making.start();
}

void StepList::make(const QUuid &step)
{
    if (m_rows.contains(step) || !m_model.step(step))
        return;
    auto *made = new StepRow(m_model, step, m_column);
    m_rows.insert(step, made);
    connectRow(made);
    made->setGeometry(m_places.value(step));
    if (m_nearby.contains(step))
        made->followPreview();
    made->show();
}

void StepList::makeSome()
{
    int made = 0;
    for (const QUuid &step : std::as_const(m_order)) {
        if (m_rows.contains(step))
            continue;
        if (made++ == kAtOnce)
            return;
        make(step);
        const QRect place = m_places.value(step);
        if (row(step)->heightForWidth(place.width()) != place.height())
            layOutSoon();
    }
    m_making.stop();
    layOut();
}

void StepList::connectRow(StepRow *row)
{
    const QUuid step = row->step();
    connect(row, &StepRow::heightChanged, this, &StepList::layOutSoon);
    connect(row, &StepRow::pressed, this,
            [this, step](Qt::KeyboardModifiers modifiers) { press(step, modifiers); });
    connect(row, &StepRow::dragged, this, [this, step](QPoint global) { drag(step, global); });
    connect(row, &StepRow::dropped, this, [this, step] { drop(step); });
    connect(row, &StepRow::menuWanted, this, [this, step](QPoint global) { openMenu(step, global); });
    connect(row, &StepRow::captionEntered, this, [this, step] {
        m_selected.clear();
        m_current = m_anchor = step;
        tellStandings();
        show(step);
    });
    connect(row, &StepRow::captionLeft, this, [this, step](int direction) {
        const qsizetype to = indexOf(step) + direction;
        if (direction == 0)
            m_column->setFocus(Qt::OtherFocusReason);
        else if (to < 0 || to >= m_order.size())
            Q_EMIT leftByTab(direction);
        else
            enterCaption(to);
    });
}

void StepList::layOutSoon()
{
    if (!m_layingOut.isActive())
        m_layingOut.start();
}

void StepList::layOut()
{
    const int width = std::min(viewport()->width() - 2 * kMargin, kColumn);
    const int left = (viewport()->width() - width) / 2;
    int y = kMargin;
    m_places.clear();
    for (const QUuid &step : std::as_const(m_order)) {
        StepRow *made = row(step);
        const int height =
            made ? made->heightForWidth(width) : StepRow::usualHeight(*m_model.step(step), width);
        m_places.insert(step, QRect(left, y, width, height));
        if (made)
            made->setGeometry(m_places.value(step));
        y += height + kGap;
    }
    m_column->resize(viewport()->width(), y - kGap + kBelow);
    tellStandings();
    lookAt();
    m_column->update();
}

void StepList::tellStandings()
{
    const bool hasFocus = m_column->hasFocus();
    for (qsizetype i = 0; i < m_order.size(); ++i) {
        if (StepRow *made = row(m_order[i]))
            made->setStanding({int(i) + 1, i + 1 == m_order.size(), m_selected.contains(m_order[i]),
                               hasFocus && m_order[i] == m_current});
    }
}

// Cards in view are made at once; previews of these and their neighbours come before all others.
void StepList::lookAt()
{
    const QRect view(0, verticalScrollBar()->value(), viewport()->width(), viewport()->height());
    const QRect around = view.adjusted(0, -view.height() / 2, 0, view.height() / 2);
    QList<QUuid> inView;
    QList<QUuid> nearby;
    bool hasMade = false;
    for (const QUuid &step : std::as_const(m_order)) {
        const QRect card = m_places.value(step);
        if (card.intersects(view)) {
            inView.append(step);
            hasMade = hasMade || !row(step);
            make(step);
        } else if (card.intersects(around)) {
            nearby.append(step);
        }
    }
    // Only these hold their pictures: a long guide has more than fit in memory.
    const QSet<QUuid> before = std::exchange(m_nearby, QSet<QUuid>(inView.begin(), inView.end()) +
                                                           QSet<QUuid>(nearby.begin(), nearby.end()));
    for (const QUuid &step : before - m_nearby) {
        if (StepRow *left = row(step))
            left->releasePreview();
    }
    m_model.previews().wantFirst(inView + nearby);
    for (const QUuid &step : m_nearby - before) {
        if (StepRow *come = row(step))
            come->followPreview();
    }
    if (hasMade)
        layOutSoon();
}

void StepList::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    layOut();
}

void StepList::scrollContentsBy(int dx, int dy)
{
    QScrollArea::scrollContentsBy(dx, dy);
    lookAt();
}

void StepList::show(const QUuid &step)
{
    const QRect card = m_places.value(step);
    // A card that is taller than the view shows its beginning.
    const int height = std::min(card.height(), viewport()->height() - 2 * kGap);
    ensureVisible(card.left(), card.top() + height / 2, 0, height / 2 + kGap);
}

void StepList::press(const QUuid &step, Qt::KeyboardModifiers modifiers)
{
    m_column->setFocus(Qt::MouseFocusReason);
    if (modifiers & Qt::ControlModifier) {
        if (!m_selected.remove(step))
            m_selected.insert(step);
        m_anchor = step;
    } else if (modifiers & Qt::ShiftModifier) {
        return goTo(indexOf(step), true);
    } else {
        m_selected = {step};
        m_anchor = step;
    }
    m_current = step;
    tellStandings();
}

void StepList::goTo(qsizetype index, bool extends)
{
    if (m_order.isEmpty())
        return;
    index = std::clamp<qsizetype>(index, 0, m_order.size() - 1);
    m_current = m_order[index];
    const qsizetype anchor = extends ? std::max<qsizetype>(indexOf(m_anchor), 0) : index;
    m_selected.clear();
    for (qsizetype i = std::min(anchor, index); i <= std::max(anchor, index); ++i)
        m_selected.insert(m_order[i]);
    m_anchor = m_order[anchor];
    tellStandings();
    show(m_current);
}

bool StepList::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_column) {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            QMetaObject::invokeMethod(this, &StepList::tellStandings, Qt::QueuedConnection);
        if (event->type() == QEvent::KeyPress)
            return key(static_cast<QKeyEvent *>(event));
        if (event->type() == QEvent::MouseButtonPress) // beside the cards
            select({});
    }
    return QScrollArea::eventFilter(watched, event);
}

bool StepList::key(QKeyEvent *event)
{
    const qsizetype at = indexOf(m_current);
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    if (event->modifiers() & Qt::AltModifier)
        return keyWithAlt(event);
    if (event->modifiers() & Qt::ControlModifier)
        return keyWithControl(event);
    switch (event->key()) {
    case Qt::Key_Up:
        goTo(at - 1, shift);
        return true;
    case Qt::Key_Down:
        goTo(at + 1, shift);
        return true;
    case Qt::Key_Home:
        goTo(0, shift);
        return true;
    case Qt::Key_End:
        goTo(m_order.size() - 1, shift);
        return true;
    case Qt::Key_Space:
        press(m_current, Qt::ControlModifier);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
        enterCaption(at);
        return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        removeSelected();
        return true;
    case Qt::Key_Menu:
        if (StepRow *current = row(m_current))
            openMenu(m_current, current->mapToGlobal(QPoint(kMargin, kMargin)));
        return true;
    default:
        return false;
    }
}

bool StepList::keyWithAlt(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Up && event->key() != Qt::Key_Down)
        return false;
    moveCurrent(event->key() == Qt::Key_Up ? -1 : 1);
    return true;
}

bool StepList::keyWithControl(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        nudgeMarker({0, -kNudge});
        return true;
    case Qt::Key_Down:
        nudgeMarker({0, kNudge});
        return true;
    case Qt::Key_Left:
        nudgeMarker({-kNudge, 0});
        return true;
    case Qt::Key_Right:
        nudgeMarker({kNudge, 0});
        return true;
    case Qt::Key_A:
        m_selected = QSet<QUuid>(m_order.begin(), m_order.end());
        tellStandings();
        return true;
    case Qt::Key_E:
        m_model.edit(m_current);
        return true;
    default:
        return false;
    }
}

void StepList::moveCurrent(int by)
{
    const qsizetype at = indexOf(m_current);
    m_model.move(at, by);
    show(m_current);
}

void StepList::nudgeMarker(QPointF by)
{
    const GuideStep *step = m_model.step(m_current);
    if (!step || step->edited)
        return;
    const QPointF middle = QRectF(QPointF(), step->image.size()).center();
    m_model.moveMarker(m_current, step->click ? *step->click + by : middle);
}

void StepList::removeSelected()
{
    m_model.remove(m_selected.isEmpty() ? QList<QUuid>{m_current} : selected());
}

void StepList::enterCaption(qsizetype index)
{
    const QUuid step = index >= 0 && index < m_order.size() ? m_order[index] : QUuid();
    show(step);
    make(step);
    if (StepRow *entered = row(step))
        entered->caption().setFocus(Qt::TabFocusReason);
}

void StepList::drag(const QUuid &step, QPoint global)
{
    const int y = m_column->mapFromGlobal(global).y();
    qsizetype at = 0;
    while (at < m_order.size() && y > m_places.value(m_order[at]).center().y())
        ++at;
    const qsizetype from = indexOf(step);
    m_dropAt = at == from || at == from + 1 ? -1 : at; // its own place is no news
    m_column->update();
    const int inView = viewport()->mapFromGlobal(global).y();
    const int way = inView < kEdge ? -kScrollStep : inView > viewport()->height() - kEdge ? kScrollStep : 0;
    m_scrolling.disconnect();
    if (way == 0)
        return m_scrolling.stop();
    connect(&m_scrolling, &QTimer::timeout, this, [this, step, way] {
        verticalScrollBar()->setValue(verticalScrollBar()->value() + way);
        drag(step, QCursor::pos());
    });
    if (!m_scrolling.isActive())
        m_scrolling.start();
}

void StepList::drop(const QUuid &step)
{
    m_scrolling.stop();
    const qsizetype to = std::exchange(m_dropAt, -1);
    m_column->update();
    const qsizetype from = indexOf(step);
    if (to >= 0 && from >= 0)
        m_model.reorder(from, to > from ? to - 1 : to);
}

void StepList::openMenu(const QUuid &step, QPoint global)
{
    const GuideStep *shown = m_model.step(step);
    if (!shown)
        return;
    if (!m_selected.contains(step))
        press(step, {});
    const qsizetype at = indexOf(step);
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](const QString &text, const QString &keys, bool isEnabled,
                            const std::function<void()> &call) {
        QAction *action = menu->addAction(keys.isEmpty() ? text : text + QLatin1Char('\t') + keys);
        action->setEnabled(isEnabled);
        connect(action, &QAction::triggered, menu, call);
    };
    add(StepsUiTexts::tr("Edit Step"), QStringLiteral("Ctrl+E"), true, [this, step] { m_model.edit(step); });
    add(StepsUiTexts::tr("Change Caption"), QStringLiteral("F2"), true, [this, at] { enterCaption(at); });
    if (shown->edited)
        add(StepsUiTexts::tr("Revert Edits"), {}, true, [this, step] { m_model.revertEdits(step); });
    else
        add(StepsUiTexts::tr("Reset position"), {}, m_model.markerMoved(step),
            [this, step] { m_model.resetMarker(step); });
    menu->addSeparator();
    add(StepsUiTexts::tr("Move Up"), QStringLiteral("Alt+↑"), at > 0, [this, at] { m_model.move(at, -1); });
    add(StepsUiTexts::tr("Move Down"), QStringLiteral("Alt+↓"), at + 1 < m_order.size(),
        [this, at] { m_model.move(at, 1); });
    menu->addSeparator();
    add(StepsUiTexts::tr("Delete %n Step(s)", nullptr, int(m_selected.size())), StepsUiTexts::tr("Del"), true,
        [this] { removeSelected(); });
    menu->popup(global);
}
