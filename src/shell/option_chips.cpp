#include "shell/option_chips.h"

#include "shell/texts.h"
#include "ui/mirroring.h"
#include "ui/style_painting.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QPainter>

namespace {

using Switch = CaptureSettings::Switch;

constexpr int kDelay = 5; // seconds
constexpr int kInset = 10;
constexpr int kMark = 14;
constexpr int kGap = 6;

QList<Switch> optionsOf(CaptureMode mode)
{
    switch (mode) {
    case CaptureMode::AllInOne:
    case CaptureMode::Screen:
        return {Switch::PreviewInEditor, Switch::CopyToClipboard, Switch::IncludeCursor, Switch::Delay};
    case CaptureMode::Scrolling:
        return {Switch::PreviewInEditor, Switch::CopyToClipboard, Switch::Delay};
    case CaptureMode::Video:
        return {Switch::PreviewInEditor, Switch::IncludeCursor, Switch::Delay,    Switch::SystemAudio,
                Switch::Microphone,      Switch::ShowClicks,    Switch::ShowKeys, Switch::Webcam};
    case CaptureMode::Steps:
        return {Switch::StepsMarkClicks, Switch::StepsAutoRedact, Switch::Delay};
    case CaptureMode::Text:
        return {Switch::Delay};
    }
    Q_UNREACHABLE();
}

OptionChip chipOf(Switch option)
{
    switch (option) {
    case Switch::PreviewInEditor:
        return {option, ShellTexts::tr("Editor"), QStringLiteral("rectangle.and.pencil.and.ellipsis"),
                ShellTexts::tr("Open each capture in the editor so you can mark it up.")};
    case Switch::CopyToClipboard:
        return {option, ShellTexts::tr("Clipboard"), QStringLiteral("doc.on.clipboard"),
                ShellTexts::tr("Copy each capture to the clipboard automatically.")};
    case Switch::IncludeCursor:
        return {option, ShellTexts::tr("Cursor"), QStringLiteral("cursorarrow"),
                ShellTexts::tr("Include the mouse pointer in the capture.")};
    case Switch::Delay:
        return {option, ShellTexts::tr("%1s Delay").arg(kDelay), QStringLiteral("timer"),
                ShellTexts::tr("Wait %1 seconds first — time to open a menu or hover something.").arg(kDelay)};
    case Switch::SystemAudio:
        return {option, ShellTexts::tr("System Audio"), QStringLiteral("speaker.wave.2"),
                ShellTexts::tr("Record sound playing on your Mac.")};
    case Switch::Microphone:
        return {option, ShellTexts::tr("Microphone"), QStringLiteral("mic"),
                ShellTexts::tr("Record your voice through the microphone. Needed for captions of your narration.")};
    case Switch::ShowClicks:
        return {option, ShellTexts::tr("Show Clicks"), QStringLiteral("cursorarrow.click.2"),
                ShellTexts::tr("Draw a ripple wherever you click, so viewers can follow along.")};
    case Switch::ShowKeys:
        return {option, ShellTexts::tr("Show Keys"), QStringLiteral("command"),
                ShellTexts::tr("Show keyboard shortcuts you press (like ⌘C) on screen. Plain typing is never shown.")};
    case Switch::Webcam:
        return {option, ShellTexts::tr("Webcam"), QStringLiteral("web.camera"),
                ShellTexts::tr("Add a round webcam bubble you can drag anywhere.")};
    case Switch::StepsMarkClicks:
        return {option, ShellTexts::tr("Mark Clicks"), QStringLiteral("cursorarrow.rays"),
                ShellTexts::tr("Circle each click and number the steps.")};
    case Switch::StepsAutoRedact:
        return {option, ShellTexts::tr("Auto-Redact"), QStringLiteral("eye.slash"),
                ShellTexts::tr("Hide emails, numbers and API keys in every step (done on your Mac).")};
    }
    Q_UNREACHABLE();
}

} // namespace

QList<OptionChip> optionChips(CaptureMode mode)
{
    QList<OptionChip> chips;
    for (const Switch option : optionsOf(mode))
        chips += chipOf(option);
    return chips;
}

OptionButton::OptionButton(const OptionChip &chip, QWidget *parent) : QAbstractButton(parent), m_symbol(chip.symbol)
{
    setText(chip.title);
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setFont(Theme::font(Theme::Type::Control, QFont::Medium));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    TipCenter::describe(this, {chip.title, chip.detail, {}});
}

QSize OptionButton::sizeHint() const
{
    return {Theme::Size::barButton * 4, Theme::Size::barButton};
}

void OptionButton::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = isChecked() ? t.accentWash : t.track;
    if (underMouse())
        fill = isChecked() ? t.accentHover : t.pressed;
    StylePainting::fillRounded(&painter, rect(), Theme::Radius::control, fill);
    const QColor ink = isChecked() ? t.accentText : t.text;
    const QRectF mark(width() - kInset - kMark, (height() - kMark) / 2.0, kMark, kMark);
    drawSymbol(painter, mirrored(mark, rect(), layoutDirection()),
               isChecked() ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("circle"),
               isChecked() ? t.accentText : t.secondary);
    painter.setFont(font());
    painter.setPen(ink);
    // A long name takes the symbol's place before it is cut.
    int left = kInset + Theme::Size::rowIcon + kGap;
    const int room = int(mark.left()) - kGap;
    if (painter.fontMetrics().horizontalAdvance(text()) > room - left)
        left = kInset;
    else
        drawSymbol(painter,
                   mirrored(QRectF(kInset, (height() - Theme::Size::rowIcon) / 2.0, Theme::Size::rowIcon,
                                   Theme::Size::rowIcon),
                            rect(), layoutDirection()),
                   m_symbol, ink);
    painter.drawText(mirrored(QRectF(left, 0, room - left, height()), rect(), layoutDirection()), Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(text(), Qt::ElideRight, room - left));
}
