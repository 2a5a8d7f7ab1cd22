#include "editor/inline_text_field.h"

#include "base/colors.h"
#include "editor/texts.h"
#include "ui/shortcut_text.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextBlock>

namespace {

constexpr int kPadding = 2;
constexpr int kCaretRoom = 16; // so that the next letter has a place before the field grows

} // namespace

InlineTextField::InlineTextField(const QString &text, QWidget *parent) : QTextEdit(parent)
{
    setObjectName("inlineText");
    setAccessibleName(EditorTexts::tr("Text of the object"));
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    setProperty("focusRadius", -1.0);
    document()->setDocumentMargin(kPadding);
    setPlainText(text);
    selectAll();
    connect(this, &QTextEdit::textChanged, this, &InlineTextField::fit);
}

void InlineTextField::setLook(const InlineText &look)
{
    if (std::exchange(m_look, look) == look)
        return;
    setFont(look.font);
    setPlaceholderText(withShortcutWords(look.placeholder));
    // White in both themes: it lies on the picture.
    QPalette colors = palette();
    colors.setColor(QPalette::Base, QColor::fromRgbF(1, 1, 1, 0.9f));
    colors.setColor(QPalette::Text, look.color);
    colors.setColor(QPalette::PlaceholderText, QColor(0x77777F));
    colors.setColor(QPalette::Highlight, brandColor(0.35));
    colors.setColor(QPalette::HighlightedText, look.color);
    setPalette(colors);
    viewport()->setAutoFillBackground(false);
    setLineWrapMode(look.wraps ? QTextEdit::WidgetWidth : QTextEdit::NoWrap);
    if (look.centered)
        setAlignment(Qt::AlignHCenter);
    fit();
}

void InlineTextField::fit()
{
    QRectF frame = m_look.frame;
    const QSizeF words = document()->size();
    if (!m_look.wraps)
        frame.setWidth(std::max({frame.width(), document()->idealWidth() + kCaretRoom,
                                 toPlainText().isEmpty()
                                     ? fontMetrics().horizontalAdvance(placeholderText()) + kCaretRoom
                                     : 0.0}));
    frame.setHeight(std::max({frame.height(), words.height(), fontMetrics().height() + 2.0 * kPadding}));
    setGeometry(frame.toAlignedRect());
}

void InlineTextField::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(palette().base());
    painter.setPen(QPen(brandColor(), 1));
    painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter.end();
    QTextEdit::paintEvent(event);
}

void InlineTextField::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && (event->modifiers() & (Qt::AltModifier | Qt::ShiftModifier))) {
        textCursor().insertBlock();
        ensureCursorVisible();
    } else if (isReturn || event->key() == Qt::Key_Escape) {
        Q_EMIT finished();
    } else {
        QTextEdit::keyPressEvent(event);
    }
}

void InlineTextField::focusOutEvent(QFocusEvent *event)
{
    QTextEdit::focusOutEvent(event);
    // A menu of the field or another program is only a visit.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        Q_EMIT finished();
}

void InlineTextField::insertFromMimeData(const QMimeData *source)
{
    if (source->hasText())
        insertPlainText(source->text());
}
