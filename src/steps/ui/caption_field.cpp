#include "steps/ui/caption_field.h"

#include "steps/ui/texts.h"
#include "ui/roles.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextBlock>

namespace {

constexpr int kBeside = Theme::Space::inside;
constexpr int kAbove = 5;

QString placeholder()
{
    return StepsUiTexts::tr("Describe this step");
}

} // namespace

void paintFieldFrame(QWidget *field, bool isEdited)
{
    if (!isEdited && !field->underMouse())
        return;
    const Theme::Tokens &theme = Theme::tokens(field);
    QPainter painter(field);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(isEdited ? QPen(theme.accent, 1.5) : QPen(theme.hairline, 1));
    painter.setBrush(isEdited ? theme.surface : theme.hover);
    const QRectF frame = QRectF(field->rect()).adjusted(0.75, 0.75, -0.75, -0.75);
    painter.drawRoundedRect(frame, Theme::Radius::control, Theme::Radius::control);
}

CaptionField::CaptionField(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::IBeamCursor);
    setProperty("focusRadius", -1.0); // the field itself shows it
    Roles::set(this, QAccessible::EditableText);
}

QFont CaptionField::captionFont() const
{
    return Theme::font(Theme::Type::Title, QFont::Medium);
}

void CaptionField::setName(const QString &name)
{
    setAccessibleName(name);
    if (m_edit)
        m_edit->setAccessibleName(name);
}

void CaptionField::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    // Its own words come back from whoever keeps them.
    if (m_edit && m_edit->toPlainText() != text)
        m_edit->setPlainText(text);
    setAccessibleDescription(text);
    update();
}

QRect CaptionField::textRect(int width) const
{
    return QRect(kBeside, kAbove, std::max(width - 2 * kBeside, 1), 1 << 20);
}

int CaptionField::heightForWidth(int width) const
{
    if (m_measured == std::pair(width, m_text))
        return m_height;
    const QFontMetrics metrics(captionFont());
    const QString shown = m_text.isEmpty() ? placeholder() : m_text;
    const QRect bounds =
        metrics.boundingRect(textRect(width), Qt::TextWordWrap | Qt::TextWrapAnywhere, shown);
    m_measured = std::pair(width, m_text);
    m_height = std::max(bounds.height(), metrics.height()) + 2 * kAbove;
    return m_height;
}

void CaptionField::focusInEvent(QFocusEvent *)
{
    enter();
}

bool CaptionField::event(QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress && !m_edit) {
        enter();
        // The press goes where it would have gone.
        const QPoint at = static_cast<QMouseEvent *>(event)->position().toPoint();
        m_edit->setTextCursor(m_edit->cursorForPosition(m_edit->viewport()->mapFrom(this, at)));
        return true;
    }
    return QWidget::event(event);
}

void CaptionField::enter()
{
    if (m_edit)
        return;
    m_edit = new QPlainTextEdit(m_text, this);
    m_edit->setFrameShape(QFrame::NoFrame);
    m_edit->setFont(captionFont());
    m_edit->setPlaceholderText(placeholder());
    m_edit->setAccessibleName(accessibleName());
    m_edit->setProperty("focusRadius", -1.0);
    m_edit->document()->setDocumentMargin(0);
    m_edit->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_edit->viewport()->setAutoFillBackground(false);
    m_edit->installEventFilter(this);
    m_edit->setGeometry(rect().adjusted(kBeside, kAbove, -kBeside, -kAbove));
    m_edit->show();
    setFocusProxy(m_edit);
    m_edit->setFocus(Qt::OtherFocusReason);
    m_edit->moveCursor(QTextCursor::End);
    connect(m_edit, &QPlainTextEdit::textChanged, this, [this] {
        m_text = m_edit->toPlainText();
        Q_EMIT edited(m_text);
        update();
    });
    Q_EMIT entered();
    update();
}

void CaptionField::leave()
{
    if (!m_edit)
        return;
    setFocusProxy(nullptr);
    m_edit->removeEventFilter(this);
    m_edit->hide();
    m_edit->deleteLater();
    m_edit.clear();
    update();
}

bool CaptionField::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_edit)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusOut) {
        // A menu over the field doesn't end the writing.
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            QMetaObject::invokeMethod(this, &CaptionField::leave, Qt::QueuedConnection);
    }
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Tab:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT left(1);
            return true;
        case Qt::Key_Backtab:
            Q_EMIT left(-1);
            return true;
        case Qt::Key_Escape:
            Q_EMIT left(0);
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void CaptionField::resizeEvent(QResizeEvent *)
{
    if (m_edit)
        m_edit->setGeometry(rect().adjusted(kBeside, kAbove, -kBeside, -kAbove));
}

void CaptionField::paintEvent(QPaintEvent *)
{
    paintFieldFrame(this, m_edit != nullptr);
    if (m_edit)
        return;
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.setFont(captionFont());
    painter.setPen(m_text.isEmpty() ? theme.secondary : theme.text);
    painter.drawText(textRect(width()), Qt::TextWordWrap | Qt::TextWrapAnywhere,
                     m_text.isEmpty() ? placeholder() : m_text);
}
