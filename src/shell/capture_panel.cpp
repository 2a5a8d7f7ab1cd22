#include "shell/capture_panel.h"

#include "base/notice.h"
#include "document/image_files.h"
#include "library/clipboard.h"
#include "library/library.h"
#include "platform/workspace.h"
#include "settings/capture_preset_store.h"
#include "shell/mode_words.h"
#include "shell/option_chips.h"
#include "shell/pieces.h"
#include "shell/recent_captures.h"
#include "shell/texts.h"
#include "ui/controls.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr int kInner = CapturePanel::kWidth - 2 * Theme::Space::margin;
constexpr int kPresetLines = 3; // before the presets scroll

void empty(QLayout *layout)
{
    while (QLayoutItem *item = layout->takeAt(0)) {
        // A chip may be removed by its own click.
        if (QWidget *widget = item->widget()) {
            widget->hide();
            widget->deleteLater();
        }
        delete item;
    }
}

} // namespace

CapturePanel::CapturePanel(Parts parts, CapturePanelActions actions, QWidget *parent)
    : QWidget(parent),
      m_parts(parts),
      m_actions(std::move(actions)),
      m_modes(new SegmentedPicker),
      m_detail(new NoteLabel({}, Theme::Type::Control)),
      m_chips(new QWidget),
      m_chipGrid(new QGridLayout(m_chips)),
      m_capture(new AccentButton({}, {})),
      m_presets(new QWidget),
      m_recent(new QWidget),
      m_recentLine(new QHBoxLayout(m_recent)),
      m_captures(new RecentCaptures(parts.library, this))
{
    setFixedWidth(kWidth);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(ShellTexts::tr("Capture panel"));
    QList<SegmentedPicker::Segment> segments;
    for (const ModeWords &mode : kModeWords)
        segments += {ShellTexts::tr(mode.label), QLatin1String(mode.symbol)};
    m_modes->setSegments(segments);
    m_modes->setStretches(true);
    m_modes->setLabelsUnder(true);
    m_modes->setAccessibleName(ShellTexts::tr("Capture mode"));
    m_modes->setFixedWidth(kInner);
    m_detail->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_chipGrid->setContentsMargins(0, 0, 0, 0);
    m_chipGrid->setSpacing(Theme::Space::inside);
    m_chipGrid->setColumnStretch(0, 1);
    m_chipGrid->setColumnStretch(1, 1);
    m_recentLine->setContentsMargins(0, 0, 0, 0);
    m_recentLine->setSpacing(Theme::Space::inside);
    new FlowLayout(m_presets);
    m_presets->setFixedWidth(kInner);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::margin, Theme::Space::group, Theme::Space::margin,
                               Theme::Space::inside);
    column->setSpacing(Theme::Space::group);
    column->addWidget(makeHeader());
    column->addWidget(m_modes);
    column->addWidget(m_detail);
    column->addWidget(m_chips);
    column->addWidget(m_capture);
    auto *presets = new QVBoxLayout;
    presets->setSpacing(Theme::Space::unit);
    presets->addWidget(makeStripHeading(
        ShellTexts::tr("Presets"), ShellTexts::tr("Save Current…"),
        ShellTexts::tr("Save the mode and options above as a one-click preset. Give it a shortcut in Settings."),
        [this] { m_actions.savePreset(); }));
    auto *scroll = new QScrollArea;
    scroll->setWidget(m_presets);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->viewport()->setAutoFillBackground(false);
    m_presets->setAutoFillBackground(false);
    presets->addWidget(scroll);
    column->addLayout(presets);
    auto *recent = new QVBoxLayout;
    recent->setSpacing(Theme::Space::unit);
    m_recentHeading = makeStripHeading(
        ShellTexts::tr("Recent"), ShellTexts::tr("See All"),
        ShellTexts::tr("Click to open · drag out · right-click to pin or copy."),
        [this] { leaveFor(m_actions.openLibrary); });
    recent->addWidget(m_recentHeading);
    recent->addWidget(m_recent);
    column->addLayout(recent);
    column->addWidget(new Hairline(Qt::Horizontal));
    column->addWidget(makeFooter());

    connect(m_modes, &SegmentedPicker::chosen, this,
            [this](int index) { m_parts.settings.setMode(kModeWords[size_t(index)].mode); });
    connect(m_capture, &QPushButton::clicked, this, [this] { leaveFor(m_actions.capture); });
    connect(&m_parts.settings, &CaptureSettings::changed, this, &CapturePanel::showMode);
    connect(&m_parts.presets, &CapturePresetStore::changed, this, &CapturePanel::showPresets);
    connect(m_captures, &RecentCaptures::changed, this, &CapturePanel::showRecent);

    // The longest of the details sets the height, so that only the chips change it.
    int detailHeight = 0;
    for (const ModeWords &mode : kModeWords) {
        m_detail->setText(ShellTexts::tr(mode.detail));
        detailHeight = qMax(detailHeight, m_detail->heightForWidth(kInner));
    }
    m_detail->setFixedHeight(detailHeight);
    showMode();
    showPresets();
    showRecent();
}

CapturePanel::~CapturePanel() = default;

QWidget *CapturePanel::makeHeader()
{
    auto *header = new QWidget;
    auto *line = new QHBoxLayout(header);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Theme::Space::inside);
    auto *symbol = new SymbolLabel(QStringLiteral("camera.viewfinder"), Theme::Size::barIcon + 2);
    symbol->setColor(Theme::tokens(this).accent);
    auto *name = new QLabel(QStringLiteral("Lumenpost"));
    name->setFont(Theme::font(Theme::Type::Title, QFont::DemiBold));
    auto *reset =
        new BarButton(QStringLiteral("arrow.counterclockwise"), ShellTexts::tr("Reset"), BarButton::Label::Beside);
    TipCenter::describe(reset, {ShellTexts::tr("Reset"), ShellTexts::tr("Put every option back to its default."), {}});
    connect(reset, &QAbstractButton::clicked, this, [this] { m_parts.settings.reset(); });
    line->addWidget(symbol);
    line->addWidget(name);
    line->addStretch();
    line->addWidget(reset);
    return header;
}

QWidget *CapturePanel::makeStripHeading(const QString &title, const QString &action, const QString &tip,
                                        const std::function<void()> &call)
{
    auto *heading = new QWidget;
    auto *line = new QHBoxLayout(heading);
    line->setContentsMargins(0, 0, 0, 0);
    auto *label = new NoteLabel(title, Theme::Type::Control);
    label->setWordWrap(false);
    auto *button = new WordButton(action);
    TipCenter::describe(button, {action, tip, {}});
    connect(button, &QAbstractButton::clicked, this, call);
    line->addWidget(label);
    line->addStretch();
    line->addWidget(button);
    return heading;
}

QWidget *CapturePanel::makeFooter()
{
    auto *footer = new QWidget;
    auto *line = new QHBoxLayout(footer);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    const auto add = [&](const QString &symbol, const TipContent &tip, const std::function<void()> *action) {
        auto *button = new BarButton(symbol, tip.title, BarButton::Label::Under);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        TipCenter::describe(button, tip);
        if (action)
            connect(button, &QAbstractButton::clicked, this, [this, action] { leaveFor(*action); });
        line->addWidget(button, 1);
        return button;
    };
    add(QStringLiteral("photo"),
        {ShellTexts::tr("Open Image"), ShellTexts::tr("Open any image file in the editor."), {}},
        &m_actions.openImage);
    add(QStringLiteral("square.grid.2x2"),
        {ShellTexts::tr("Library"), ShellTexts::tr("Browse, search and organize all your captures."), {}},
        &m_actions.openLibrary);
    add(QStringLiteral("gearshape"),
        {ShellTexts::tr("Settings"), ShellTexts::tr("Shortcuts, save folder, recording, AI and more."),
         QStringLiteral("⌘,")},
        &m_actions.openSettings);
    auto *menu = new QMenu;
    const auto entry = [&](const QString &title, const std::function<void()> *action) {
        connect(menu->addAction(title), &QAction::triggered, this, [this, action] { leaveFor(*action); });
    };
    entry(ShellTexts::tr("Screen Recording Permission…"), &m_actions.openPermissions);
    entry(ShellTexts::tr("Quit Lumenpost"), &m_actions.quit);
    add(QStringLiteral("ellipsis.circle"),
        {ShellTexts::tr("More"), ShellTexts::tr("Screen Recording permission and Quit."), {}}, nullptr)
        ->setMenu(menu);
    return footer;
}

void CapturePanel::leaveFor(const std::function<void()> &action)
{
    Q_EMIT leaving();
    if (action)
        action();
}

void CapturePanel::setRecording(bool recording)
{
    m_isRecording = recording;
    showMode();
}

void CapturePanel::setAvailable(const std::function<bool(CaptureMode)> &isAvailable)
{
    for (const ModeWords &mode : kModeWords)
        m_modes->setSegmentEnabled(static_cast<int>(&mode - kModeWords.data()), isAvailable(mode.mode));
}

void CapturePanel::showMode()
{
    const CaptureMode mode = m_parts.settings.mode();
    const ModeWords &words = modeWords(mode);
    m_modes->setCurrent(static_cast<int>(&words - kModeWords.data()));
    m_detail->setText(ShellTexts::tr(words.detail));
    QString title = ShellTexts::tr("Capture"), symbol = QStringLiteral("camera.viewfinder");
    QString tip = ShellTexts::tr(words.detail);
    if (m_isRecording) {
        title = ShellTexts::tr("Stop Recording");
        symbol = QStringLiteral("stop.fill");
        tip = ShellTexts::tr("Stop and open the recording.");
    } else if (mode == CaptureMode::Video) {
        title = ShellTexts::tr("Record");
        symbol = QStringLiteral("record.circle");
    } else if (mode == CaptureMode::Steps) {
        title = ShellTexts::tr("Start Steps");
        symbol = QStringLiteral("list.number");
    }
    m_capture->setText(title);
    m_capture->setSymbol(symbol);
    m_capture->setAccessibleName(title);
    TipCenter::describe(m_capture, {title, tip + ShellTexts::tr(" Return also starts it."), {}});
    showChips();
}

void CapturePanel::showChips()
{
    const QList<OptionChip> chips = optionChips(m_parts.settings.mode());
    // The same chips only change their state: the one that has the keyboard stays.
    if (m_shownMode != m_parts.settings.mode()) {
        m_shownMode = m_parts.settings.mode();
        empty(m_chipGrid);
        m_buttons.clear();
        for (const OptionChip &chip : chips) {
            auto *button = new OptionButton(chip);
            const int at = static_cast<int>(m_buttons.size());
            m_chipGrid->addWidget(button, at / 2, at % 2);
            connect(button, &QAbstractButton::toggled, this, [this, option = chip.option](bool on) {
                m_parts.settings.setOn(option, on);
            });
            button->show();
            m_buttons += button;
        }
    }
    for (qsizetype i = 0; i < chips.size(); ++i) {
        const QSignalBlocker blocker(m_buttons[i]);
        m_buttons[i]->setChecked(m_parts.settings.isOn(chips[i].option));
        m_buttons[i]->update();
    }
}

void CapturePanel::showPresets()
{
    QLayout *flow = m_presets->layout();
    empty(flow);
    for (const CapturePreset &preset : m_parts.presets.presets()) {
        auto *chip = new Chip(preset.name, QLatin1String(modeWords(preset.captureMode()).presetSymbol));
        chip->setCheckable(false);
        TipCenter::describe(chip, {preset.name, preset.summary(),
                                   preset.hotkey ? preset.hotkey->display() : QString()});
        connect(chip, &QAbstractButton::clicked, this, [this, id = preset.id] {
            if (const auto now = m_parts.presets.preset(id))
                leaveFor([this, now] { m_actions.runPreset(*now); });
        });
        flow->addWidget(chip);
        chip->show();
    }
    const int height = flow->heightForWidth(kInner);
    const int most = kPresetLines * Theme::Size::target + (kPresetLines - 1) * flow->spacing();
    m_presets->setFixedHeight(height);
    auto *scroll = static_cast<QScrollArea *>(m_presets->parentWidget()->parentWidget());
    scroll->setFixedHeight(qMin(height, most));
    scroll->setVisible(height > 0);
}

void CapturePanel::showRecent()
{
    empty(m_recentLine);
    for (const QString &path : m_captures->items()) {
        auto *thumb = new RecentThumb(path);
        TipCenter::describe(thumb, {thumb->text(),
                                    ShellTexts::tr("Click to open · drag out · right-click to pin or copy."),
                                    {}});
        connect(thumb, &QAbstractButton::clicked, this,
                [this, path] { leaveFor([this, path] { m_actions.openItem(path); }); });
        connect(thumb, &RecentThumb::menuWanted, this, [this, path](const QPoint &at) { openMenu(path, at); });
        m_recentLine->addWidget(thumb);
        thumb->show();
    }
    m_recentLine->addStretch();
    const bool isAny = !m_captures->items().isEmpty();
    m_recent->setVisible(isAny);
    m_recentHeading->setVisible(isAny);
}

void CapturePanel::openMenu(const QString &path, const QPoint &at)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const QString &symbol, const QString &title, const std::function<void()> &call) {
        connect(menu->addAction(symbolIcon(symbol), title), &QAction::triggered, this, call);
    };
    add(QStringLiteral("photo"), ShellTexts::tr("Open"),
        [this, path] { leaveFor([this, path] { m_actions.openItem(path); }); });
    if (Library::isImage(path))
        add(QStringLiteral("pin"), ShellTexts::tr("Pin to Screen"),
            [this, path] { leaveFor([this, path] { m_actions.pinItem(path); }); });
    add(QStringLiteral("doc.on.doc"), ShellTexts::tr("Copy Image"), [this, path] { copy(path); });
    add(QStringLiteral("folder"), ShellTexts::tr("Show in Finder"), [this, path] {
        leaveFor([this, path] {
            if (const auto shown = m_parts.workspace.reveal(path); !shown)
                m_parts.notices.post(shown.error().message, QStringLiteral("exclamationmark.triangle.fill"));
        });
    });
    menu->popup(at);
}

void CapturePanel::copy(const QString &path)
{
    if (!Library::isImage(path)) {
        Clipboard::copyFile(m_parts.pasteboard, path);
        return;
    }
    // The panel lives as long as the program, so the copy ends when it is closed meanwhile.
    const auto read = [path] { return ImageFiles::read(path).value_or(QImage()); };
    whenDone(Clipboard::copy(m_parts.pasteboard, read, this), this, [this](const Result<void> &copied) {
        if (copied)
            m_parts.notices.post(ShellTexts::tr("Image copied to clipboard"), QStringLiteral("doc.on.clipboard"));
        else if (!copied.error().isCancelled())
            m_parts.notices.post(copied.error().message, QStringLiteral("exclamationmark.triangle.fill"));
    });
}

void CapturePanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        m_capture->click();
    else if (event->key() == Qt::Key_Comma && event->modifiers() == Qt::ControlModifier)
        leaveFor(m_actions.openSettings);
    else
        QWidget::keyPressEvent(event);
}

void CapturePanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_captures->setWatched(true);
    m_modes->setFocus(Qt::OtherFocusReason);
}

void CapturePanel::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_captures->setWatched(false);
}
