#include "shell/preset_editor.h"

#include "settings/capture_preset_store.h"
#include "shell/key_recorder.h"
#include "shell/mode_words.h"
#include "shell/pieces.h"
#include "shell/settings_page.h"
#include "shell/shortcut_field.h"
#include "shell/texts.h"
#include "ui/controls.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

struct Option {
    const char *title;
    bool CaptureOptions::*field;
};

constexpr Option kOptions[] = {
    {QT_TRANSLATE_NOOP("ShellTexts", "Editor"), &CaptureOptions::editor},
    {QT_TRANSLATE_NOOP("ShellTexts", "Clipboard"), &CaptureOptions::clipboard},
    {QT_TRANSLATE_NOOP("ShellTexts", "Cursor"), &CaptureOptions::cursor},
    {QT_TRANSLATE_NOOP("ShellTexts", "Delay"), &CaptureOptions::delay},
    {QT_TRANSLATE_NOOP("ShellTexts", "Backdrop"), &CaptureOptions::backdrop},
    {QT_TRANSLATE_NOOP("ShellTexts", "System Audio"), &CaptureOptions::systemAudio},
    {QT_TRANSLATE_NOOP("ShellTexts", "Mic"), &CaptureOptions::microphone},
    {QT_TRANSLATE_NOOP("ShellTexts", "Clicks"), &CaptureOptions::showClicks},
    {QT_TRANSLATE_NOOP("ShellTexts", "Keys"), &CaptureOptions::showKeys},
    {QT_TRANSLATE_NOOP("ShellTexts", "Webcam"), &CaptureOptions::webcam},
};

} // namespace

PresetEditor::PresetEditor(const SettingsParts &parts, const QUuid &id, QWidget *parent)
    : QWidget(parent), m_parts(parts), m_id(id)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Theme::Space::inside);
    column->addWidget(makeNameAndMode());
    column->addWidget(makeSwitches());
    column->addWidget(makeShortcut());
    refresh();
}

void PresetEditor::change(const std::function<void(CapturePreset &)> &edit)
{
    if (auto preset = m_parts.presets.preset(m_id)) {
        edit(*preset);
        m_parts.presets.update(*preset);
    }
}

void PresetEditor::refresh()
{
    const auto preset = m_parts.presets.preset(m_id).value_or(CapturePreset{});
    for (const auto &show : std::as_const(m_shows))
        show(preset);
}

QWidget *PresetEditor::makeNameAndMode()
{
    auto *line = new QWidget;
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    auto *name = new QLineEdit;
    name->setPlaceholderText(ShellTexts::tr("Name"));
    name->setAccessibleName(ShellTexts::tr("Name"));
    connect(name, &QLineEdit::textEdited, this, [this](const QString &text) {
        change([&text](CapturePreset &preset) { preset.name = text; });
    });
    m_shows += [name](const CapturePreset &preset) {
        if (name->text() != preset.name)
            name->setText(preset.name);
    };
    auto *mode = new Picker;
    mode->setAccessibleName(ShellTexts::tr("Mode"));
    for (const ModeWords &words : kModeWords)
        mode->addItem(symbolIcon(QLatin1String(words.presetSymbol)), CapturePresetStore::word(words.mode));
    connect(mode, &QComboBox::activated, this, [this](int index) {
        change([index](CapturePreset &preset) { preset.mode = rawValue(kModeWords[size_t(index)].mode); });
    });
    m_shows += [mode](const CapturePreset &preset) {
        mode->setCurrentIndex(static_cast<int>(&modeWords(preset.captureMode()) - kModeWords.data()));
    };
    row->addWidget(name, 1);
    row->addWidget(mode);
    return line;
}

QWidget *PresetEditor::makeSwitches()
{
    auto *box = new QWidget;
    auto *flow = new FlowLayout(box);
    for (const Option &option : kOptions) {
        auto *chip = new Chip(ShellTexts::tr(option.title), QStringLiteral("circle"));
        flow->addWidget(chip);
        connect(chip, &QAbstractButton::toggled, this, [this, field = option.field](bool on) {
            change([field, on](CapturePreset &preset) { preset.options.*field = on; });
        });
        m_shows += [chip, field = option.field](const CapturePreset &preset) {
            const QSignalBlocker blocker(chip);
            chip->setChecked(preset.options.*field);
            chip->update();
        };
    }
    return box;
}

QWidget *PresetEditor::makeShortcut()
{
    auto *line = new QWidget;
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    auto *field = new ShortcutField(m_parts, {}, m_id.toString(), this);
    auto *problem = new SettingsRow(ShellTexts::tr("Shortcut"), {}, field->recorder());
    problem->layout()->setContentsMargins(0, 0, 0, 0);
    field->setRow(problem);
    connect(field, &ShortcutField::chosen, this, [this](const KeyCombo &combo) {
        change([&combo](CapturePreset &preset) { preset.hotkey = combo; });
    });
    auto *remove = new BarButton(QStringLiteral("xmark"), ShellTexts::tr("Remove Shortcut"), BarButton::Label::None);
    TipCenter::describe(remove, {ShellTexts::tr("Remove Shortcut"), {}, {}});
    connect(remove, &QAbstractButton::clicked, this,
            [this] { change([](CapturePreset &preset) { preset.hotkey.reset(); }); });
    auto *add = new QPushButton(ShellTexts::tr("Add Shortcut"));
    TipCenter::describe(add, {ShellTexts::tr("Add Shortcut"),
                              ShellTexts::tr("Gives this preset a global shortcut. Click the shortcut afterwards to "
                                             "change it."),
                              {}});
    connect(add, &QPushButton::clicked, this, [this] {
        change([this](CapturePreset &preset) {
            const auto &presets = m_parts.presets.presets();
            const auto at = std::ranges::find(presets, m_id, &CapturePreset::id);
            preset.hotkey = CapturePresetStore::suggestedHotkey(at - presets.begin());
        });
    });
    auto *drop = new BarButton(QStringLiteral("trash"), ShellTexts::tr("Delete Preset"), BarButton::Label::None);
    TipCenter::describe(drop, {ShellTexts::tr("Delete Preset"), {}, {}});
    connect(drop, &QAbstractButton::clicked, this, [this] {
        if (const auto preset = m_parts.presets.preset(m_id))
            m_parts.presets.remove(*preset);
    });
    row->addWidget(problem, 1);
    row->addWidget(add);
    row->addStretch();
    row->addWidget(remove);
    row->addWidget(drop);
    m_shows += [field, problem, remove, add](const CapturePreset &preset) {
        const bool has = preset.hotkey.has_value();
        problem->setVisible(has);
        remove->setVisible(has);
        add->setVisible(!has);
        if (has)
            field->show(*preset.hotkey);
    };
    return line;
}
