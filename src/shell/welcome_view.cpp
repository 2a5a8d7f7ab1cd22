#include "shell/welcome_view.h"

#include "platform/shortcut_holders.h"
#include "settings/app_settings.h"
#include "shell/permission_monitor.h"
#include "shell/pieces.h"
#include "shell/shortcut_words.h"
#include "shell/status_row.h"
#include "shell/texts.h"
#include "ui/controls.h"
#include "ui/style_painting.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

constexpr int kSide = 40; // of every page, left and right
constexpr int kHeroSymbol = 56;
constexpr int kFeatureSymbol = 24;

QLabel *makeHeading(const QString &text, Theme::Type type)
{
    auto *label = new QLabel(text);
    label->setFont(Theme::font(type, QFont::DemiBold));
    label->setAlignment(Qt::AlignHCenter);
    label->setWordWrap(true);
    return label;
}

NoteLabel *makeLine(const QString &text)
{
    auto *line = new NoteLabel(text, Theme::Type::Body);
    line->setAlignment(Qt::AlignHCenter);
    return line;
}

SymbolLabel *makeAccentSymbol(const QString &name, int size, const QWidget *like)
{
    auto *symbol = new SymbolLabel(name, size);
    symbol->setColor(Theme::tokens(like).accent);
    return symbol;
}

QWidget *makeFeature(const QString &symbol, const QString &text, const QWidget *like)
{
    auto *row = new QWidget;
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Theme::Space::margin);
    line->addWidget(makeAccentSymbol(symbol, kFeatureSymbol, like), 0, Qt::AlignVCenter);
    auto *words = new QLabel(text);
    words->setFont(Theme::font(Theme::Type::Body));
    words->setWordWrap(true);
    line->addWidget(words, 1);
    return row;
}

// A combination as keys of a keyboard look.
class KeyCapLabel : public QLabel {
public:
    KeyCapLabel()
    {
        setFont(Theme::font(Theme::Type::Heading, QFont::DemiBold));
        setAlignment(Qt::AlignCenter);
        setContentsMargins(Theme::Space::section, Theme::Space::group, Theme::Space::section, Theme::Space::group);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        StylePainting::fillRounded(&painter, rect(), Theme::Radius::card, t.surface, t.hairline);
        painter.end();
        QLabel::paintEvent(event);
    }
};

} // namespace

// Which page it is, for the eye alone.
class WelcomeView::Dots : public QWidget {
public:
    Dots() { setFixedSize(kPageCount * kStep, kStep); }
    void setCurrent(int page)
    {
        m_page = page;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        for (int i = 0; i < kPageCount; ++i) {
            const QRectF dot(i * kStep + (kStep - kDot) / 2.0, (height() - kDot) / 2.0, kDot, kDot);
            StylePainting::fillRounded(&painter, dot, kDot / 2.0, i == m_page ? t.accent : t.pressed);
        }
    }

private:
    static constexpr int kStep = 16;
    static constexpr int kDot = 8;
    int m_page = 0;
};

WelcomeView::WelcomeView(Parts parts, QWidget *parent)
    : QWidget(parent),
      m_parts(std::move(parts)),
      m_monitor(new PermissionMonitor(m_parts.permissions, this)),
      m_pages(new QStackedWidget),
      m_back(new QPushButton(ShellTexts::tr("Back"))),
      m_next(new QPushButton),
      m_dots(new Dots),
      m_shortcut(new KeyCapLabel)
{
    setWindowTitle(ShellTexts::tr("Welcome to Lumenpost"));
    m_pages->addWidget(makeIntro());
    m_pages->addWidget(makePermissions());
    m_pages->addWidget(makeTryIt());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, Theme::Space::section, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_pages, 1);
    column->addWidget(new Hairline(Qt::Horizontal));
    column->addWidget(makeControls());
    connect(&m_parts.prefs, &AppSettings::hotkeysChanged, this, &WelcomeView::showShortcut);
    showShortcut();
    setPage(0);
}

QWidget *WelcomeView::makeControls()
{
    auto *controls = new QWidget;
    auto *line = new QHBoxLayout(controls);
    line->setContentsMargins(Theme::Space::margin, Theme::Space::group, Theme::Space::margin, Theme::Space::group);
    m_next->setDefault(true);
    // Equally wide sides keep the dots in the middle.
    auto *left = new QHBoxLayout;
    left->addWidget(m_back);
    left->addStretch();
    auto *right = new QHBoxLayout;
    right->addStretch();
    right->addWidget(m_next);
    line->addLayout(left, 1);
    line->addWidget(m_dots);
    line->addLayout(right, 1);
    connect(m_back, &QPushButton::clicked, this, [this] { setPage(page() - 1); });
    connect(m_next, &QPushButton::clicked, this, [this] {
        if (page() == kPageCount - 1)
            m_parts.finish();
        else
            setPage(page() + 1);
    });
    return controls;
}

QWidget *WelcomeView::makeIntro()
{
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(kSide, 0, kSide, Theme::Space::margin);
    column->setSpacing(Theme::Space::group);
    column->addStretch();
    column->addWidget(makeAccentSymbol(QStringLiteral("camera.viewfinder"), kHeroSymbol, this), 0, Qt::AlignHCenter);
    column->addWidget(makeHeading(ShellTexts::tr("Welcome to Lumenpost"), Theme::Type::Welcome));
    column->addWidget(makeLine(ShellTexts::tr("Capture, mark up and share anything on your screen.")));
    column->addSpacing(Theme::Space::group);
    const std::pair<const char *, QString> features[] = {
        {"rectangle.dashed", ShellTexts::tr("Capture a region, window, full screen or a long scrolling page")},
        {"record.circle", ShellTexts::tr("Record your screen with audio, webcam and click highlights")},
        {"pencil.and.outline", ShellTexts::tr("Annotate with arrows, callouts, steps, blur and more")},
        {"square.grid.2x2", ShellTexts::tr("Find everything later in your searchable Library")},
    };
    for (const auto &[symbol, text] : features)
        column->addWidget(makeFeature(QLatin1String(symbol), text, this));
    column->addStretch();
    return page;
}

QWidget *WelcomeView::makePermissions()
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(kSide, 0, kSide, Theme::Space::margin);
    column->setSpacing(Theme::Space::group);
    column->addWidget(makeHeading(ShellTexts::tr("Permissions"), Theme::Type::Heading));
    column->addWidget(makeLine(
        ShellTexts::tr("macOS asks before any app can see your screen. Only Screen Recording is required; the rest "
                       "turn on extra features and can be granted later in Settings.")));
    column->addSpacing(Theme::Space::unit);
    for (const Permission permission : kPermissions)
        column->addWidget(makePermissionRow(permission, m_parts.permissions, *m_monitor));
    auto *note = new NoteLabel(ShellTexts::tr("After granting Screen Recording for the first time, macOS may ask you "
                                              "to quit and reopen Lumenpost."));
    column->addWidget(note);
    const auto show = [note, this] {
        note->setVisible(m_monitor->status(Permission::ScreenRecording) == PermissionStatus::Granted);
    };
    show();
    connect(m_monitor, &PermissionMonitor::changed, note, show);
    column->addStretch();
    auto *scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    return scroll;
}

QWidget *WelcomeView::makeTryIt()
{
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(kSide, 0, kSide, Theme::Space::margin);
    column->setSpacing(Theme::Space::margin);
    column->addStretch();
    column->addWidget(
        makeLine(ShellTexts::tr("Press the shortcut anywhere, or click the Lumenpost icon in the menu bar.")));
    column->addWidget(m_shortcut, 0, Qt::AlignHCenter);
    auto *hint = new NoteLabel(
        ShellTexts::tr("Drag to select · click a window · Return for full screen · Esc to cancel"),
        Theme::Type::Control);
    hint->setAlignment(Qt::AlignHCenter);
    column->addWidget(hint);
    auto *capture = new AccentButton(QStringLiteral("viewfinder"), ShellTexts::tr("Capture Now"));
    connect(capture, &QPushButton::clicked, this, [this] { m_parts.tryCapture(); });
    column->addWidget(capture, 0, Qt::AlignHCenter);
    column->addStretch();

    auto *print = new ToggleSwitch;
    print->setAccessibleName(ShellTexts::tr("Use the Print key as well"));
    print->setChecked(m_parts.prefs.printKeys());
    connect(print, &QAbstractButton::toggled, this, [this](bool on) { m_parts.prefs.setPrintKeys(on); });
    auto *title = new QLabel(ShellTexts::tr("Use the Print key as well"));
    title->setFont(Theme::font(Theme::Type::Body, QFont::Medium));
    auto *words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(title);
    words->addWidget(new NoteLabel(ShellTexts::tr("Print takes a region, Shift+Print the screen, Alt+Print the window "
                                                  "in front, Ctrl+Print a region after 3 seconds.") +
                                   QLatin1Char(' ') + m_parts.holders.howToFree()));
    auto *line = new QHBoxLayout;
    line->setSpacing(Theme::Space::margin);
    line->addLayout(words, 1);
    line->addWidget(print, 0, Qt::AlignVCenter);
    column->addLayout(line);
    return page;
}

void WelcomeView::showShortcut()
{
    const QString words = shortcutWords(m_parts.prefs.hotkey(HotKeyAction::Capture));
    m_shortcut->setText(words);
    m_shortcut->setAccessibleName(words);
}

int WelcomeView::page() const
{
    return m_pages->currentIndex();
}

void WelcomeView::setPage(int page)
{
    m_pages->setCurrentIndex(page);
    m_back->setVisible(page > 0);
    m_next->setText(page == kPageCount - 1 ? ShellTexts::tr("Done") : ShellTexts::tr("Continue"));
    m_dots->setCurrent(page);
    m_next->setFocus(Qt::OtherFocusReason);
}

void WelcomeView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        m_next->click();
    else if (event->matches(QKeySequence::Close))
        window()->close();
    else
        QWidget::keyPressEvent(event);
}
