#include "editor/stamp_picker.h"

#include "artwork/fonts.h"
#include "base/colors.h"
#include "document/annotation.h"
#include "editor/annotation_description.h"
#include "editor/texts.h"
#include "ui/controls.h"
#include "ui/floating.h"
#include "ui/roles.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

constexpr int kColumns = 7;
constexpr int kCell = 40;

class StampButton : public QAbstractButton {
public:
    StampButton(const QString &value, bool isCurrent) : m_value(value)
    {
        setCheckable(true);
        setChecked(isCurrent);
        setFixedSize(kCell, kCell);
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_Hover);
        setAccessibleName(stampWords(value));
        Roles::set(this, QAccessible::RadioButton);
        setProperty("focusRadius", -1.0); // it draws its own, in a window too narrow for another
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isChecked() ? t.accentWash : underMouse() ? t.hover : QColor(Qt::transparent));
        painter.drawRoundedRect(rect(), Theme::Radius::control, Theme::Radius::control);
        if (hasFocus()) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(t.accent, 2));
            painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), Theme::Radius::control,
                                    Theme::Radius::control);
        }
        const QString what = m_value.mid(m_value.indexOf(':') + 1);
        if (m_value.startsWith("sym:")) {
            drawSymbol(painter, QRectF(9, 9, kCell - 18, kCell - 18), what,
                       isChecked() ? t.accentText : t.text);
        } else if (m_value.startsWith("emoji:")) {
            painter.setPen(t.text); // without a pen nothing is written
            painter.setFont(Fonts::emoji(22));
            painter.drawText(rect(), Qt::AlignCenter, what);
        } else {
            const QRectF cap(4, 8, kCell - 8, kCell - 16);
            painter.setPen(QPen(t.hairline, 1));
            painter.setBrush(t.dark ? QColor(0xE9E9EE) : QColor(0xFAFAFA));
            painter.drawRoundedRect(cap, 5, 5);
            painter.setPen(QColor(0x26262C));
            painter.setFont(Theme::font(what.size() < 3 ? 14.0 : 10.0, QFont::Bold));
            painter.drawText(cap, Qt::AlignCenter, what);
        }
    }

    // The picker knows rows and columns, the button only neighbours.
    void keyPressEvent(QKeyEvent *event) override
    {
        switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            return event->ignore();
        default:
            QAbstractButton::keyPressEvent(event);
        }
    }

private:
    QString m_value;
};

} // namespace

StampPicker::StampPicker(const QString &current, QWidget *parent)
    : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_tabs(new SegmentedPicker),
      m_pages(new QStackedLayout)
{
    setObjectName("stampPicker");
    Roles::set(this, QAccessible::Dialog);
    setAccessibleName(EditorTexts::tr("Choose Stamp"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_TranslucentBackground, Floating::isComposited());
    m_tabs->setSegments(
        {{EditorTexts::tr("Symbols"), {}}, {EditorTexts::tr("Emoji"), {}}, {EditorTexts::tr("Keys"), {}}});
    m_tabs->setStretches(true);
    m_tabs->setIsTabs(true);
    m_tabs->setAccessibleName(EditorTexts::tr("Kind of stamp"));
    const QList<QStringList> pages{StampLibrary::symbols(), StampLibrary::emoji(), StampLibrary::keys()};
    for (const QStringList &values : pages)
        m_pages->addWidget(makePage(values, current));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(Theme::Space::inside);
    column->addWidget(m_tabs);
    column->addLayout(m_pages);
    connect(m_tabs, &SegmentedPicker::chosen, this, &StampPicker::showPage);
    for (int i = 0; i < pages.size(); ++i) {
        if (pages[i].contains(current)) {
            m_tabs->setCurrent(i);
            showPage(i);
        }
    }
}

QWidget *StampPicker::makePage(const QStringList &values, const QString &current)
{
    auto *page = new QWidget;
    Roles::set(page, QAccessible::Grouping);
    page->setAccessibleName(EditorTexts::tr("Stamps"));
    auto *grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(2);
    for (int i = 0; i < values.size(); ++i) {
        auto *button = new StampButton(values[i], values[i] == current);
        connect(button, &QAbstractButton::clicked, this, [this, value = values[i]] {
            Q_EMIT chosen(value);
            close();
        });
        grid->addWidget(button, i / kColumns, i % kColumns);
    }
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(kColumns, 1);
    return page;
}

void StampPicker::showPage(int index)
{
    m_pages->setCurrentIndex(index);
}

void StampPicker::openUnder(QWidget *anchor)
{
    adjustSize();
    Floating::applyShape(this, Theme::Radius::panel);
    move(anchor->mapToGlobal(QPoint(0, anchor->height() + Theme::Space::unit)));
    show();
    for (auto *button : m_pages->currentWidget()->findChildren<QAbstractButton *>()) {
        if (button->isChecked())
            button->setFocus();
    }
}

void StampPicker::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(t.raised);
    painter.setPen(QPen(t.raisedEdge, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::Radius::panel,
                            Theme::Radius::panel);
}

// Arrow keys walk the grid.
void StampPicker::keyPressEvent(QKeyEvent *event)
{
    const auto buttons = m_pages->currentWidget()->findChildren<QAbstractButton *>();
    const auto at = buttons.indexOf(qobject_cast<QAbstractButton *>(focusWidget()));
    int step = 0;
    switch (event->key()) {
    case Qt::Key_Left:
        step = -1;
        break;
    case Qt::Key_Right:
        step = 1;
        break;
    case Qt::Key_Up:
        step = -kColumns;
        break;
    case Qt::Key_Down:
        step = kColumns;
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (at >= 0)
            buttons[at]->click();
        return;
    default:
        return QFrame::keyPressEvent(event);
    }
    const auto to = at < 0 ? 0 : at + step;
    if (to >= 0 && to < buttons.size())
        buttons[to]->setFocus(Qt::TabFocusReason);
}
