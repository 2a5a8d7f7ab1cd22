#include "shell/status_row.h"

#include "shell/permission_monitor.h"
#include "shell/pieces.h"
#include "shell/texts.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSystemTrayIcon>

namespace {

constexpr int kSymbolSize = 20;

struct PermissionWords {
    Permission permission;
    const char *title;
    const char *symbol;
    const char *explanation;
};

constexpr PermissionWords kPermissionWords[] = {
    {Permission::ScreenRecording, QT_TRANSLATE_NOOP("ShellTexts", "Screen Recording"),
     "rectangle.dashed.badge.record",
     QT_TRANSLATE_NOOP("ShellTexts", "Required — lets Lumenpost see your screen to capture it.")},
    {Permission::Accessibility, QT_TRANSLATE_NOOP("ShellTexts", "Accessibility"), "accessibility",
     QT_TRANSLATE_NOOP("ShellTexts", "Optional — auto-scrolling capture and showing keystrokes in recordings.")},
    {Permission::Microphone, QT_TRANSLATE_NOOP("ShellTexts", "Microphone"), "mic",
     QT_TRANSLATE_NOOP("ShellTexts", "Optional — record your voice in screen recordings.")},
    {Permission::Camera, QT_TRANSLATE_NOOP("ShellTexts", "Camera"), "video",
     QT_TRANSLATE_NOOP("ShellTexts", "Optional — webcam bubble in recordings.")},
    {Permission::Speech, QT_TRANSLATE_NOOP("ShellTexts", "Speech Recognition"), "captions.bubble",
     QT_TRANSLATE_NOOP("ShellTexts", "Optional — automatic captions for recordings.")},
};

struct PartWords {
    DesktopPart::Kind kind;
    const char *title;
    const char *symbol;
    const char *explanation;
    const char *missing; // what doesn't work then
};

constexpr PartWords kPartWords[] = {
    {DesktopPart::Kind::AccessibilityBus, QT_TRANSLATE_NOOP("ShellTexts", "Accessibility bus"), "accessibility",
     QT_TRANSLATE_NOOP("ShellTexts", "Guides name the buttons and fields that you click."),
     QT_TRANSLATE_NOOP("ShellTexts", "Guides can't name what you click.")},
    {DesktopPart::Kind::SoundServer, QT_TRANSLATE_NOOP("ShellTexts", "Sound server"), "speaker.wave.2",
     QT_TRANSLATE_NOOP("ShellTexts", "Recordings can have the computer's sound and your voice."),
     QT_TRANSLATE_NOOP("ShellTexts", "Recordings have no sound.")},
    {DesktopPart::Kind::Camera, QT_TRANSLATE_NOOP("ShellTexts", "Camera"), "web.camera",
     QT_TRANSLATE_NOOP("ShellTexts", "Recordings can show you in a bubble."),
     QT_TRANSLATE_NOOP("ShellTexts", "No camera is connected: recordings have no webcam bubble.")},
    {DesktopPart::Kind::RecognitionData, QT_TRANSLATE_NOOP("ShellTexts", "Text recognition"), "text.viewfinder",
     QT_TRANSLATE_NOOP("ShellTexts", "Text in captures is found, copied and redacted."),
     QT_TRANSLATE_NOOP("ShellTexts", "There is no language data: text in captures isn't recognized.")},
    {DesktopPart::Kind::SpeechModel, QT_TRANSLATE_NOOP("ShellTexts", "Speech model"), "captions.bubble",
     QT_TRANSLATE_NOOP("ShellTexts", "Captions are made from what is said in recordings."),
     QT_TRANSLATE_NOOP("ShellTexts", "Captions can't be made from speech.")},
    {DesktopPart::Kind::Portals, QT_TRANSLATE_NOOP("ShellTexts", "Desktop portals"), "app.dashed",
     QT_TRANSLATE_NOOP("ShellTexts", "Lumenpost follows the desktop's light or dark look."),
     QT_TRANSLATE_NOOP("ShellTexts", "The desktop's light or dark look isn't followed.")},
    {DesktopPart::Kind::SecretService, QT_TRANSLATE_NOOP("ShellTexts", "Keyring"), "key.fill",
     QT_TRANSLATE_NOOP("ShellTexts", "Your API key is kept with the desktop's passwords."),
     QT_TRANSLATE_NOOP("ShellTexts", "Your API key is kept in a file that only you can read.")},
};

} // namespace

StatusRow::StatusRow(const QString &symbol, const QString &title, const QString &explanation, QWidget *parent)
    : QWidget(parent),
      m_title(title),
      m_tag(new QLabel),
      m_explanation(new NoteLabel(explanation)),
      m_markSymbol(new SymbolLabel({}, Theme::Size::rowIcon)),
      m_markWord(new QLabel),
      m_button(new QPushButton)
{
    auto *heading = new QLabel(title);
    heading->setFont(Theme::font(Theme::Type::Body, QFont::Medium));
    m_tag->setFont(Theme::font(Theme::Type::Caption, QFont::Medium));
    m_tag->hide();
    m_markWord->setFont(Theme::font(Theme::Type::Control, QFont::Medium));
    m_button->setAutoDefault(false);
    m_button->hide();

    auto *first = new QHBoxLayout;
    first->setSpacing(Theme::Space::inside);
    first->addWidget(heading);
    first->addWidget(m_tag);
    first->addStretch();
    auto *words = new QVBoxLayout;
    words->setSpacing(2);
    words->addLayout(first);
    words->addWidget(m_explanation);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Theme::Space::group);
    line->addWidget(new SymbolLabel(symbol, kSymbolSize), 0, Qt::AlignVCenter);
    line->addLayout(words, 1);
    auto *mark = new QHBoxLayout;
    mark->setSpacing(6);
    mark->addWidget(m_markSymbol, 0, Qt::AlignVCenter);
    mark->addWidget(m_markWord, 0, Qt::AlignVCenter);
    line->addLayout(mark);
    line->addWidget(m_button, 0, Qt::AlignVCenter);
    recolor();
}

void StatusRow::setTag(const QString &tag)
{
    m_tag->setText(tag);
    m_tag->setVisible(!tag.isEmpty());
}

void StatusRow::setExplanation(const QString &explanation)
{
    m_explanation->setText(explanation);
}

void StatusRow::showMark(Mark mark, const QString &word)
{
    m_mark = mark;
    m_markSymbol->setSymbol(mark == Mark::Good ? QStringLiteral("checkmark.circle.fill")
                                               : QStringLiteral("exclamationmark.circle"));
    m_markWord->setText(word);
    m_markSymbol->show();
    m_markWord->show();
    m_button->hide();
    recolor();
}

void StatusRow::showButton(const QString &text, const QString &help)
{
    m_button->setText(text);
    m_button->setAccessibleName(QStringLiteral("%1: %2").arg(m_title, text));
    TipCenter::describe(m_button, {text, help, {}});
    m_button->show();
    m_markSymbol->hide();
    m_markWord->hide();
}

void StatusRow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        recolor();
}

void StatusRow::recolor()
{
    const auto &t = Theme::tokens(this);
    m_markSymbol->setColor(m_mark == Mark::Good ? t.success : t.warning);
    for (const auto &[label, color] : {std::pair(m_markWord, t.secondary), std::pair(m_tag, t.accentText)}) {
        QPalette own = label->palette();
        if (own.color(QPalette::WindowText) == color)
            continue;
        own.setColor(QPalette::WindowText, color);
        label->setPalette(own);
    }
}

StatusRow *makePermissionRow(Permission permission, Permissions &permissions, PermissionMonitor &monitor)
{
    const auto *words = std::ranges::find(kPermissionWords, permission, &PermissionWords::permission);
    auto *row = new StatusRow(QLatin1String(words->symbol), ShellTexts::tr(words->title),
                              ShellTexts::tr(words->explanation));
    if (permission == Permission::ScreenRecording)
        row->setTag(ShellTexts::tr("Required"));
    const bool canPrompt = permission != Permission::ScreenRecording && permission != Permission::Accessibility;
    const auto show = [row, permission, canPrompt, &monitor] {
        switch (monitor.status(permission)) {
        case PermissionStatus::Granted:
            row->showMark(StatusRow::Mark::Good, ShellTexts::tr("Granted"));
            break;
        case PermissionStatus::NotAsked:
            if (canPrompt) {
                row->showButton(ShellTexts::tr("Allow…"), ShellTexts::tr("Shows the macOS permission prompt."));
                break;
            }
            [[fallthrough]];
        case PermissionStatus::Denied:
            row->showButton(ShellTexts::tr("Open Settings"),
                            ShellTexts::tr("Opens System Settings › Privacy & Security. Turn Lumenpost on, then come "
                                           "back."));
            break;
        }
    };
    show();
    QObject::connect(&monitor, &PermissionMonitor::changed, row, show);
    QObject::connect(row->button(), &QPushButton::clicked, row,
                     [permission, &permissions] { permissions.request(permission); });
    return row;
}

StatusRow *makePartRow(const DesktopPart &part)
{
    const auto *words = std::ranges::find(kPartWords, part.kind, &PartWords::kind);
    QString explanation = ShellTexts::tr(words->explanation);
    if (part.state == DesktopPart::State::Missing)
        explanation = ShellTexts::tr(words->missing);
    switch (part.state) {
    case DesktopPart::State::Works:
        if (!part.detail.isEmpty())
            explanation += QLatin1Char(' ') + ShellTexts::tr("Languages: %1.").arg(part.detail);
        break;
    case DesktopPart::State::Missing:
        if (!part.package.isEmpty())
            explanation += QLatin1Char(' ') + ShellTexts::tr("The package “%1” brings it.").arg(part.package);
        break;
    case DesktopPart::State::Barred:
        explanation = ShellTexts::tr("It is there, but not for you: join the group “video” and log in again.");
        break;
    }
    auto *row = new StatusRow(QLatin1String(words->symbol), ShellTexts::tr(words->title), explanation);
    const bool works = part.state == DesktopPart::State::Works;
    row->showMark(works ? StatusRow::Mark::Good : StatusRow::Mark::Missing,
                  works                                      ? ShellTexts::tr("Works")
                  : part.state == DesktopPart::State::Barred ? ShellTexts::tr("Barred")
                                                             : ShellTexts::tr("Missing"));
    return row;
}

StatusRow *makeTrayRow()
{
    const bool isThere = QSystemTrayIcon::isSystemTrayAvailable();
    auto *row = new StatusRow(
        QStringLiteral("camera.viewfinder"), ShellTexts::tr("Tray"),
        isThere ? ShellTexts::tr("The Lumenpost icon opens the capture panel and the menu.")
                : ShellTexts::tr("This desktop shows no tray. Start Lumenpost again, or use the panel's shortcut, to "
                                 "open the capture panel."));
    row->showMark(isThere ? StatusRow::Mark::Good : StatusRow::Mark::Missing,
                  isThere ? ShellTexts::tr("Works") : ShellTexts::tr("Missing"));
    return row;
}
