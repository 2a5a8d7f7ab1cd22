#include "editor/status_line.h"

#include "document/editor_document.h"
#include "editor/annotation_description.h"
#include "editor/editor_window_controller.h"
#include "editor/texts.h"
#include "ui/controls.h"
#include "ui/roles.h"
#include "ui/shortcut_text.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int kLineHeight = 34;
constexpr int kLongestDescription = 60;

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent) : QWidget(parent)
{
    setFont(Theme::font(Theme::Type::Control));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    Roles::set(this, QAccessible::StaticText);
}

void ElidedLabel::setText(const QString &text)
{
    if (std::exchange(m_text, text) == text)
        return;
    setAccessibleName(text);
    update();
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(m_text), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(Theme::tokens(this).secondary);
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(m_text, Qt::ElideRight, width()));
}

StatusLine::StatusLine(EditorWindowController &controller)
    : m_controller(controller),
      m_document(controller.document()),
      m_session(controller.session()),
      m_spinner(new Spinner(14)),
      m_hint(new ElidedLabel),
      m_counts(new NumberLabel),
      m_zoom(new NumberLabel)
{
    setFixedHeight(kLineHeight);
    setAccessibleName(EditorTexts::tr("Status"));
    Roles::set(this, QAccessible::StatusBar);
    m_hint->setObjectName("hint");
    m_counts->setObjectName("counts");
    m_zoom->setObjectName("zoom");
    m_zoom->setAlignment(Qt::AlignHCenter);
    m_zoom->setMinimumWidth(76);
    TipCenter::describe(m_zoom, {EditorMenus::kZoom.shownTitle(), EditorMenus::kZoom.shownTip(), {}});

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(16, 1, 8, 0);
    row->setSpacing(Theme::Space::inside);
    row->addWidget(m_spinner);
    row->addWidget(m_hint, 1);
    row->addWidget(m_counts);
    row->addSpacing(Theme::Space::unit);
    row->addWidget(new Hairline(Qt::Vertical));
    auto *zooms = new QHBoxLayout;
    zooms->setSpacing(2);
    addZoomButton(zooms, EditorCommand::ZoomOut);
    zooms->addWidget(m_zoom);
    addZoomButton(zooms, EditorCommand::ZoomIn);
    addZoomButton(zooms, EditorCommand::ActualSize);
    addZoomButton(zooms, EditorCommand::ZoomToFit);
    row->addLayout(zooms);
    connect(&m_document, &EditorDocument::changed, this, &StatusLine::follow);
    connect(&m_session, &EditorSession::changed, this, &StatusLine::follow);
    follow();
}

BarButton *StatusLine::addZoomButton(QHBoxLayout *row, EditorCommand command)
{
    const EditorCommandInfo &shown = info(command);
    auto *button = new BarButton(shown.symbol, shown.shownTitle(), BarButton::Label::None);
    button->setObjectName(QStringLiteral("command-") + QString::fromUtf8(shown.title));
    button->setFixedSize(Theme::Size::target, Theme::Size::target);
    TipCenter::describe(
        button, {shown.shownTitle(), EditorMenus::kZoom.shownTip(), QString::fromUtf8(shown.shortcut)});
    connect(button, &QAbstractButton::clicked, this, [this, command] { m_controller.run(command); });
    row->addWidget(button);
    return button;
}

QString StatusLine::hint() const
{
    if (m_session.isBusy())
        return EditorTexts::tr("Working…");
    if (m_session.isPlacing())
        return withShortcutWords(
            m_session.mode() == EditorSession::Mode::PickingColor
                ? EditorTexts::tr("Arrow keys move the point, ⇧ faster · Return picks its color · Esc cancels")
                : EditorTexts::tr("Arrow keys move the frame, with Alt size it, ⇧ faster · Return takes it · Esc cancels"));
    switch (m_session.mode()) {
    case EditorSession::Mode::SelectingText:
        return EditorTexts::tr("Drag over text in the image to copy it · Esc to cancel");
    case EditorSession::Mode::PickingColor:
        return EditorTexts::tr("Click anywhere on the image to pick its color · Esc to cancel");
    case EditorSession::Mode::Editing:
        break;
    }
    return withShortcutWords(Tools::hint(m_document.tool()) + EditorTexts::tr("  ·  ⌘K for all commands") +
                             EditorTexts::tr("  ·  F6 for the bars"));
}

QString StatusLine::counts() const
{
    QStringList parts;
    if (const auto selected = m_document.selected()) {
        const QString words = statusWords(*selected);
        parts += words.size() > kLongestDescription ? words.left(kLongestDescription - 1) + u'…' : words;
    }
    parts += EditorTexts::tr("%n object(s)", nullptr, static_cast<int>(m_document.annotations().size()));
    parts += EditorTexts::tr("%1 × %2 px").arg(m_document.base().width()).arg(m_document.base().height());
    return parts.join(QStringLiteral("  ·  "));
}

QString StatusLine::zoom() const
{
    const QString percent = QStringLiteral("%1%").arg(qRound(m_session.displayZoom() * 100));
    return m_session.zoom() ? percent : EditorTexts::tr("Fit · %1").arg(percent);
}

void StatusLine::follow()
{
    m_spinner->setVisible(m_session.isBusy());
    m_hint->setText(hint());
    m_counts->setText(counts());
    m_zoom->setText(zoom());
}

void StatusLine::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.fillRect(rect(), t.surface);
    Theme::fillHairline(painter, QRectF(0, 0, width(), 1), t.hairline);
}
