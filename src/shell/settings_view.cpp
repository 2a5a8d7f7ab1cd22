#include "shell/settings_view.h"

#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"
#include "settings/capture_settings.h"
#include "shell/settings_page.h"
#include "shell/settings_pages.h"
#include "shell/texts.h"
#include "ui/controls.h"
#include "ui/mirroring.h"
#include "ui/roles.h"
#include "ui/style_painting.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int kSidebarWidth = 204;

struct Tab {
    const char *id;
    const char *label;
    const char *symbol;
    SettingsPage *(*make)(const SettingsParts &);
};

constexpr std::array<Tab, SettingsView::kPageCount> kTabs{{
    {"general", QT_TRANSLATE_NOOP("ShellTexts", "General"), "gearshape", &SettingsPages::makeGeneral},
    {"shortcuts", QT_TRANSLATE_NOOP("ShellTexts", "Shortcuts"), "keyboard", &SettingsPages::makeShortcuts},
    {"presets", QT_TRANSLATE_NOOP("ShellTexts", "Presets"), "square.stack.3d.down.right",
     &SettingsPages::makePresets},
    {"recording", QT_TRANSLATE_NOOP("ShellTexts", "Recording"), "record.circle", &SettingsPages::makeRecording},
    {"ai", QT_TRANSLATE_NOOP("ShellTexts", "AI & Sharing"), "sparkles", &SettingsPages::makeAiAndSharing},
    {"help", QT_TRANSLATE_NOOP("ShellTexts", "Permissions & Help"), "lock.shield",
     &SettingsPages::makePermissionsAndHelp},
}};

// A page's name in the list at the left.
class TabButton : public QAbstractButton {
public:
    TabButton(const QString &symbol, const QString &text) : m_symbol(symbol)
    {
        setText(text);
        setCheckable(true);
        setAttribute(Qt::WA_Hover);
        setFocusPolicy(Qt::TabFocus);
        setFont(Theme::font(Theme::Type::Body));
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        Roles::set(this, QAccessible::RadioButton); // one of several pages
    }
    QSize sizeHint() const override { return {kSidebarWidth - 2 * Theme::Space::inside, Theme::Size::barButton}; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor fill = isChecked()   ? (underMouse() ? t.accentHover : t.accentWash)
                            : isDown()     ? t.pressed
                            : underMouse() ? t.hover
                                           : QColor(Qt::transparent);
        StylePainting::fillRounded(&painter, rect(), Theme::Radius::control, fill);
        const QColor ink = isChecked() ? t.accentText : t.text;
        const QRectF icon(Theme::Space::inside, (height() - Theme::Size::rowIcon) / 2.0, Theme::Size::rowIcon,
                          Theme::Size::rowIcon);
        drawSymbol(painter, mirrored(icon, rect(), layoutDirection()), m_symbol, ink);
        painter.setFont(font());
        painter.setPen(ink);
        const int left = Theme::Space::inside * 2 + Theme::Size::rowIcon;
        const QRectF words(left, 0, width() - left - Theme::Space::unit, height());
        painter.drawText(mirrored(words, rect(), layoutDirection()), Qt::AlignVCenter | Qt::AlignLeft,
                         painter.fontMetrics().elidedText(text(), Qt::ElideRight, int(words.width())));
    }

private:
    QString m_symbol;
};

// The ground of the list, with a line towards the page.
class Sidebar : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        painter.fillRect(rect(), t.surface);
        Theme::fillHairline(painter, QRectF(width() - 1, 0, 1, height()), t.hairline);
    }
};

} // namespace

SettingsView::SettingsView(const SettingsParts &parts, QWidget *parent)
    : QWidget(parent),
      m_parts(parts),
      m_search(new QLineEdit),
      m_tabs(new QButtonGroup(this)),
      m_scroll(new QScrollArea),
      m_nothing(new EmptyState(QStringLiteral("magnifyingglass"), ShellTexts::tr("Nothing found"),
                               ShellTexts::tr("No setting has these words."))),
      m_refresh(new QTimer(this))
{
    setWindowTitle(ShellTexts::tr("Lumenpost Settings"));
    auto *content = new QWidget;
    m_column = new QVBoxLayout(content);
    m_column->setContentsMargins(Theme::Space::margin, Theme::Space::margin, Theme::Space::margin,
                                 Theme::Space::section);
    m_column->setSpacing(Theme::Space::section);
    m_column->addWidget(m_nothing);
    m_nothing->hide();
    m_column->addStretch();
    m_scroll->setWidget(content);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);

    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(makeSidebar());
    line->addWidget(m_scroll, 1);

    // Several changes at once are shown once, and never inside the change.
    m_refresh->setSingleShot(true);
    m_refresh->setInterval(0);
    connect(m_refresh, &QTimer::timeout, this, [this] {
        for (SettingsPage *page : m_pages) {
            if (page)
                page->refresh();
        }
    });
    const auto later = [this] { m_refresh->start(); };
    connect(&m_parts.prefs, &AppSettings::changed, this, later);
    connect(&m_parts.prefs, &AppSettings::hotkeysChanged, this, later);
    connect(&m_parts.capture, &CaptureSettings::changed, this, later);
    connect(&m_parts.presets, &CapturePresetStore::changed, this, later);
    connect(&m_parts.prefs, &AppSettings::changed, this, &SettingsView::showTab);
    showTab();
}

QWidget *SettingsView::makeSidebar()
{
    auto *sidebar = new Sidebar;
    sidebar->setFixedWidth(kSidebarWidth);
    auto *column = new QVBoxLayout(sidebar);
    column->setContentsMargins(Theme::Space::inside, Theme::Space::margin, Theme::Space::inside,
                               Theme::Space::margin);
    column->setSpacing(2);
    m_search->setPlaceholderText(ShellTexts::tr("Search settings"));
    m_search->setAccessibleName(ShellTexts::tr("Search settings"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(symbolIcon(QStringLiteral("magnifyingglass")), QLineEdit::LeadingPosition)
        ->setText(m_search->placeholderText());
    connect(m_search, &QLineEdit::textChanged, this, &SettingsView::arrange);
    column->addWidget(m_search);
    column->addSpacing(Theme::Space::inside);
    for (int i = 0; i < kPageCount; ++i) {
        auto *button = new TabButton(QLatin1String(kTabs[size_t(i)].symbol), ShellTexts::tr(kTabs[size_t(i)].label));
        m_tabs->addButton(button, i);
        column->addWidget(button);
    }
    column->addStretch();
    connect(m_tabs, &QButtonGroup::idClicked, this, [this](int index) {
        m_search->clear();
        m_parts.prefs.setSettingsTab(QLatin1String(kTabs[size_t(index)].id));
    });
    return sidebar;
}

SettingsPage *SettingsView::page(int index)
{
    SettingsPage *&page = m_pages[size_t(index)];
    if (!page) {
        page = kTabs[size_t(index)].make(m_parts);
        page->hide();
        // Before the stretch, in the order of the tabs.
        int at = 0;
        for (int i = 0; i < index; ++i)
            at += m_pages[size_t(i)] ? 1 : 0;
        m_column->insertWidget(at, page);
    }
    return page;
}

void SettingsView::showTab()
{
    const auto *tab = std::ranges::find_if(
        kTabs, [this](const Tab &tab) { return m_parts.prefs.settingsTab() == QLatin1String(tab.id); });
    const int index = tab == kTabs.end() ? 0 : static_cast<int>(tab - kTabs.begin());
    if (m_tabs->checkedId() == index && m_pages[size_t(index)])
        return;
    m_tabs->button(index)->setChecked(true);
    page(index);
    arrange();
    m_scroll->verticalScrollBar()->setValue(0);
}

void SettingsView::search(const QString &text)
{
    m_search->setText(text);
}

void SettingsView::arrange()
{
    const QStringList words = m_search->text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    bool isAnyFound = false;
    for (int i = 0; i < kPageCount; ++i) {
        if (!words.isEmpty())
            page(i);
        SettingsPage *shown = m_pages[size_t(i)];
        if (!shown)
            continue;
        const bool isFound = shown->filter(words) && (!words.isEmpty() || i == m_tabs->checkedId());
        shown->setVisible(isFound);
        isAnyFound = isAnyFound || isFound;
    }
    m_nothing->setVisible(!isAnyFound);
}

void SettingsView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Find)) {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    } else if (event->key() == Qt::Key_Escape) {
        m_search->text().isEmpty() ? void(window()->close()) : m_search->clear();
    } else if (event->matches(QKeySequence::Close)) {
        window()->close();
    } else {
        QWidget::keyPressEvent(event);
    }
}
