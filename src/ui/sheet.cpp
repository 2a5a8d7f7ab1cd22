#include "ui/sheet.h"

#include "base/log.h"
#include "ui/roles.h"
#include "ui/symbol.h"
#include "ui/texts.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

class Sheet::Card : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(t.raised);
        painter.setPen(QPen(t.raisedEdge, 1));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::Radius::panel,
                                Theme::Radius::panel);
    }
};

Sheet::Sheet(QWidget *over, const QString &symbol, const QString &title)
    : QWidget(over->window()), m_card(new Card(this)), m_content(new QVBoxLayout), m_buttons(new QHBoxLayout)
{
    setAccessibleName(title);
    Roles::set(this, QAccessible::Dialog);
    setFocusPolicy(Qt::StrongFocus);
    setProperty("focusRadius", -1.0);
    hide();

    m_content->setSpacing(Theme::Space::inside);
    m_buttons->setSpacing(Theme::Space::inside);
    m_buttons->addStretch();

    auto *column = new QVBoxLayout(m_card);
    column->setContentsMargins(20, 20, 20, Theme::Space::margin);
    column->setSpacing(Theme::Space::group);
    if (!title.isEmpty())
        column->addLayout(makeHeading(symbol, title));
    column->addLayout(m_content, 1);
    column->addLayout(m_buttons);
    setCardWidth(420);
    window()->installEventFilter(this);
}

Sheet::~Sheet() = default;

QLayout *Sheet::makeHeading(const QString &symbol, const QString &title)
{
    auto *heading = new QLabel(title);
    heading->setFont(Theme::font(Theme::Type::Title, QFont::DemiBold));
    heading->setWordWrap(true);
    auto *top = new QHBoxLayout;
    top->setSpacing(Theme::Space::inside);
    if (!symbol.isEmpty()) {
        auto *icon = new SymbolLabel(symbol, 20);
        icon->setColor(Theme::tokens(this).accentText);
        top->addWidget(icon, 0, Qt::AlignTop);
    }
    top->addWidget(heading, 1);
    return top;
}

void Sheet::setCardWidth(int width)
{
    m_card->setFixedWidth(width);
}

void Sheet::addText(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    m_content->addWidget(label);
    // Read with the title as the sheet opens.
    const QString before = accessibleDescription();
    setAccessibleDescription(before.isEmpty() ? text : before + ' ' + text);
}

QPushButton *Sheet::insertButton(const QString &title, After after)
{
    auto *button = new QPushButton(title);
    button->setAutoDefault(false);
    // Connected first, so the sheet is gone before the button's own action opens another.
    if (after == After::Closes)
        connect(button, &QPushButton::clicked, this, &Sheet::close);
    m_buttons->addWidget(button);
    return button;
}

QPushButton *Sheet::addButton(const QString &title, After after)
{
    return insertButton(title, after);
}

QPushButton *Sheet::addPrimaryButton(const QString &title, After after)
{
    m_primary = insertButton(title, after);
    m_primary->setDefault(true);
    return m_primary;
}

QPushButton *Sheet::addCancelButton(const QString &title)
{
    m_cancel = insertButton(title, After::Closes);
    return m_cancel;
}

void Sheet::fit()
{
    m_card->layout()->activate();
    const int wanted =
        m_card->hasHeightForWidth() ? m_card->heightForWidth(m_card->width()) : m_card->sizeHint().height();
    m_card->resize(m_card->width(), qMax(m_card->minimumSizeHint().height(),
                                         qMin(wanted, height() - 2 * Theme::Space::margin)));
    m_card->move((width() - m_card->width()) / 2, qMax(0, (height() - m_card->height()) / 2));
    update();
}

void Sheet::open()
{
    m_before = window()->focusWidget();
    setGeometry(parentWidget()->rect());
    fit();
    raise();
    show();
    // The content's own field first, otherwise the primary button.
    for (QWidget *child : m_card->findChildren<QWidget *>()) {
        if (child->isVisible() && (child->focusPolicy() & Qt::TabFocus) &&
            !qobject_cast<QPushButton *>(child))
            return child->setFocus(Qt::PopupFocusReason);
    }
    if (m_primary)
        m_primary->setFocus(Qt::PopupFocusReason);
    else
        setFocus(Qt::PopupFocusReason);
}

void Sheet::close()
{
    if (isHidden())
        return;
    hide();
    if (m_before)
        m_before->setFocus(Qt::PopupFocusReason);
    Q_EMIT closed();
    deleteLater();
}

void Sheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::dim());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // A soft shadow as a stack of outlines that fade the faster the farther they reach.
    const auto &t = Theme::tokens(this);
    constexpr int kSteps = 16;
    const QRectF card = QRectF(m_card->geometry()).translated(0, t.raisedShadowOffset / 2.0);
    QColor shade = t.raisedShadow;
    shade.setAlphaF(shade.alphaF() / kSteps);
    painter.setBrush(shade);
    for (int i = 1; i <= kSteps; ++i) {
        const qreal grow = t.raisedShadowBlur * std::pow(i / qreal(kSteps), 2);
        painter.drawRoundedRect(card.adjusted(-grow, -grow, grow, grow), Theme::Radius::panel + grow,
                                Theme::Radius::panel + grow);
    }
}

void Sheet::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        return m_cancel ? m_cancel->click() : close();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (auto *button = qobject_cast<QPushButton *>(window()->focusWidget());
            button && button != m_primary)
            return button->click();
        if (m_primary && m_primary->isEnabled())
            m_primary->click();
        return;
    default:
        event->accept(); // the window behind is out of reach
    }
}

void Sheet::mousePressEvent(QMouseEvent *event)
{
    event->accept();
}

bool Sheet::event(QEvent *event)
{
    // Shortcuts of the window behind are out of reach; what nobody in the sheet wants ends here.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

bool Sheet::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && watched == window()) {
        setGeometry(parentWidget()->rect());
        fit();
    }
    return QWidget::eventFilter(watched, event);
}

bool Sheet::focusNextPrevChild(bool next)
{
    QList<QWidget *> stops;
    for (QWidget *child : m_card->findChildren<QWidget *>()) {
        if (child->isVisible() && child->isEnabled() && (child->focusPolicy() & Qt::TabFocus))
            stops += child;
    }
    if (stops.isEmpty())
        return true;
    const auto at = stops.indexOf(window()->focusWidget());
    const auto count = stops.size();
    const auto to = at < 0 ? (next ? 0 : count - 1) : (at + (next ? 1 : -1) + count) % count;
    stops[to]->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void Sheet::alert(QWidget &window, const Error &error)
{
    if (error.isCancelled())
        return;
    Log::error(QStringLiteral("Dialog: ") + error.message, error);
    window.show();
    window.raise();
    window.activateWindow();
    auto *sheet = new Sheet(&window, QStringLiteral("exclamationmark.triangle.fill"), error.message);
    sheet->setObjectName(QStringLiteral("alert"));
    if (!error.detail.isEmpty())
        sheet->addText(error.detail);
    sheet->addPrimaryButton(UiTexts::tr("OK"));
    sheet->open();
}
