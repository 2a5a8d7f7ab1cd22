#include "editor/options_bar.h"

#include "editor/editor_window_controller.h"
#include "editor/stamp_picker.h"
#include "editor/style_presets.h"
#include "editor/texts.h"
#include "ui/color_panel.h"
#include "ui/controls.h"
#include "ui/roles.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>

namespace {

constexpr int kBarHeight = 44;
constexpr int kLeastSize = 2, kMostSize = 30;

struct FontLabel {
    TextFont font;
    const char *label;
};
constexpr std::array kFontLabels{FontLabel{TextFont::System, QT_TRANSLATE_NOOP("EditorTexts", "System")},
                                 FontLabel{TextFont::Rounded, QT_TRANSLATE_NOOP("EditorTexts", "Rounded")},
                                 FontLabel{TextFont::Serif, QT_TRANSLATE_NOOP("EditorTexts", "Serif")},
                                 FontLabel{TextFont::Mono, QT_TRANSLATE_NOOP("EditorTexts", "Mono")},
                                 FontLabel{TextFont::Marker, QT_TRANSLATE_NOOP("EditorTexts", "Marker")}};

QString fontLabel(TextFont font)
{
    for (const FontLabel &entry : kFontLabels) {
        if (entry.font == font)
            return EditorTexts::tr(entry.label);
    }
    return EditorTexts::tr(kFontLabels.front().label);
}

QString selectedWords(ToolKind kind)
{
    return EditorTexts::tr("Selected %1").arg(Tools::shortTitle(kind));
}

QIcon presetIcon(const StylePreset &preset)
{
    const auto tool = Tools::fromRawValue(preset.tool);
    if (!tool || preset.rgba.size() != 4)
        return tool ? symbolIcon(Tools::symbol(*tool)) : QIcon();
    QPixmap pixmap(32, 32);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const auto part = [&preset](int i) { return static_cast<float>(qBound(0.0, preset.rgba[i], 1.0)); };
    drawSymbol(painter, QRectF(0, 0, 16, 16), Tools::symbol(*tool),
               QColor::fromRgbF(part(0), part(1), part(2)));
    return pixmap;
}

} // namespace

const QList<OptionsBar::NamedColor> &OptionsBar::swatchColors()
{
    static const QList<NamedColor> colors{{QT_TRANSLATE_NOOP("EditorTexts", "Red"), QColor(255, 59, 48)},
                                          {QT_TRANSLATE_NOOP("EditorTexts", "Orange"), QColor(255, 149, 0)},
                                          {QT_TRANSLATE_NOOP("EditorTexts", "Yellow"), QColor(255, 204, 0)},
                                          {QT_TRANSLATE_NOOP("EditorTexts", "Green"), QColor(40, 205, 65)},
                                          {QT_TRANSLATE_NOOP("EditorTexts", "Blue"), QColor(0, 122, 255)},
                                          {QT_TRANSLATE_NOOP("EditorTexts", "Purple"), QColor(175, 82, 222)},
                                          {QT_TRANSLATE_NOOP("EditorTexts", "Black"), QColor(0, 0, 0)},
                                          {QT_TRANSLATE_NOOP("EditorTexts", "White"), QColor(255, 255, 255)}};
    return colors;
}

OptionsBar::OptionsBar(EditorWindowController &controller, PresetStore &presets)
    : m_controller(controller), m_document(controller.document()), m_presets(presets)
{
    setFixedHeight(kBarHeight);
    setMinimumWidth(1);
    setAccessibleName(EditorTexts::tr("Options"));
    Roles::set(this, QAccessible::ToolBar);
    m_what = new QLabel;
    m_what->setFont(Theme::font(Theme::Type::Control, QFont::DemiBold));
    m_colors = makeColors();
    m_size = new ValueSlider(EditorTexts::tr("Width"), kLeastSize, kMostSize);
    m_size->setObjectName("size");
    connect(m_size, &ValueSlider::changed, this, [this](int value) { m_document.setLineWidth(value); });
    m_styles = new SegmentedPicker;
    m_styles->setObjectName("style");
    connect(m_styles, &SegmentedPicker::chosen, this,
            [this](int index) { m_document.setStyle(index, kind()); });

    makeFontButton();
    makeStampButton();

    m_note = new QLabel(EditorTexts::tr("Nothing selected — click an object to change it"));
    m_note->setFont(Theme::font(Theme::Type::Control));
    m_note->setForegroundRole(QPalette::PlaceholderText);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(16, 0, 12, 1);
    row->setSpacing(Theme::Space::group);
    row->addWidget(m_what);
    row->addWidget(m_note);
    row->addWidget(m_colors);
    row->addWidget(m_size);
    row->addWidget(m_styles);
    row->addWidget(m_font);
    row->addWidget(m_stamp);
    row->addStretch();
    addPresets();
    row->addWidget(m_presetButton);

    connect(&m_document, &EditorDocument::changed, this, [this](EditorDocument::Field field) {
        switch (field) {
        case EditorDocument::Field::Selection:
        case EditorDocument::Field::Tool:
        case EditorDocument::Field::Style:
            return follow();
        case EditorDocument::Field::Base:
        case EditorDocument::Field::Annotations:
        case EditorDocument::Field::Effects:
        case EditorDocument::Field::File:
        case EditorDocument::Field::History:
        case EditorDocument::Field::Saved:
            return;
        }
    });
    follow();
}

void OptionsBar::makeFontButton()
{
    m_font = new BarButton("textformat", fontLabel(TextFont::System), BarButton::Label::Beside);
    m_font->setObjectName("font");
    TipCenter::describe(m_font,
                        {EditorTexts::tr("Font"), EditorTexts::tr("Typeface for text and callouts."), {}});
    m_font->setAccessibleName(EditorTexts::tr("Font"));
    auto *fonts = new QMenu;
    for (const FontLabel &entry : kFontLabels)
        fonts
            ->addAction(EditorTexts::tr(entry.label), this,
                        [this, font = entry.font] { m_document.setTextFont(font); })
            ->setCheckable(true);
    m_font->setMenu(fonts);
    connect(m_font, &BarButton::menuAboutToOpen, this, [this, fonts] {
        for (QAction *item : fonts->actions())
            item->setChecked(item->text() == fontLabel(m_document.textFont()));
    });
}

void OptionsBar::makeStampButton()
{
    m_stamp = new BarButton("seal", EditorTexts::tr("Choose Stamp"), BarButton::Label::Beside);
    m_stamp->setObjectName("stamp");
    TipCenter::describe(m_stamp,
                        {EditorTexts::tr("Choose Stamp"),
                         EditorTexts::tr("Pick a symbol, emoji or keyboard key to place on the image."),
                         {}});
    connect(m_stamp, &QAbstractButton::clicked, this, [this] {
        auto *picker = new StampPicker(m_document.stampValue(), this);
        connect(picker, &StampPicker::chosen, this,
                [this](const QString &value) { m_document.setStampValue(value); });
        picker->openUnder(m_stamp);
    });
}

void OptionsBar::resizeEvent(QResizeEvent *)
{
    fit();
}

// What there is no room for becomes shorter: first the words in front, then those beside symbols.
void OptionsBar::fit()
{
    const auto needed = [this] {
        layout()->invalidate();
        return layout()->minimumSize().width();
    };
    // As wide as the widest words, so that nothing beside it moves when an object is selected.
    int widest = 0;
    for (ToolKind tool : Tools::toolbarTools())
        widest = std::max(widest, m_what->fontMetrics().horizontalAdvance(selectedWords(tool)) + 2);
    m_what->setMinimumWidth(widest);
    m_presetButton->setLabel(BarButton::Label::Beside);
    m_styles->setShowsText(true);
    if (needed() > width())
        m_presetButton->setLabel(BarButton::Label::None);
    if (needed() > width())
        m_styles->setShowsText(false);
    if (needed() > width())
        m_what->setMinimumWidth(1);
}

void OptionsBar::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.fillRect(rect(), t.window);
    Theme::fillHairline(painter, QRectF(0, height() - 1, width(), 1), t.hairline);
}

QWidget *OptionsBar::makeColors()
{
    auto *colors = new QWidget;
    colors->setAccessibleName(EditorTexts::tr("Color"));
    Roles::set(colors, QAccessible::Grouping);
    auto *row = new QHBoxLayout(colors);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (const NamedColor &named : swatchColors()) {
        auto *swatch = new Swatch(named.color, EditorTexts::tr(named.name));
        swatch->setObjectName(QStringLiteral("color-%1").arg(named.name));
        TipCenter::describe(swatch, {EditorTexts::tr(named.name), {}, {}});
        connect(swatch, &QAbstractButton::clicked, this, [this, color = named.color] {
            m_document.setColor(color);
            follow();
        });
        m_swatches.append(swatch);
        row->addWidget(swatch);
    }
    row->addSpacing(Theme::Space::unit);
    const QString moreColors = EditorTexts::tr("More Colors");
    auto *more = new BarButton("paintpalette", moreColors, BarButton::Label::None);
    more->setObjectName("moreColors");
    TipCenter::describe(more,
                        {moreColors, EditorTexts::tr("Open the color picker to choose any color."), {}});
    connect(more, &QAbstractButton::clicked, this, [this, more] { chooseColor(more); });
    row->addWidget(more);
    const EditorCommandInfo &pick = info(EditorCommand::PickColor);
    auto *eyedropper = new BarButton(pick.symbol, pick.shownTitle(), BarButton::Label::None);
    eyedropper->setObjectName("eyedropper");
    TipCenter::describe(eyedropper, {pick.shownTitle(), pick.shownTip(), {}});
    connect(eyedropper, &QAbstractButton::clicked, this,
            [this] { m_controller.run(EditorCommand::PickColor); });
    row->addWidget(eyedropper);
    return colors;
}

void OptionsBar::chooseColor(QWidget *anchor)
{
    auto *panel = new ColorPanel(m_document.color(), this);
    connect(panel, &ColorPanel::changed, this, [this](const QColor &color) { m_document.setColor(color); });
    // It was opened for what is selected now, and for nothing else.
    connect(&m_document, &EditorDocument::changed, panel, [panel](EditorDocument::Field field) {
        if (field == EditorDocument::Field::Selection || field == EditorDocument::Field::Tool)
            panel->close();
    });
    panel->openUnder(anchor);
}

void OptionsBar::addPresets()
{
    m_presetButton = new BarButton(EditorMenus::kPresets.symbol, EditorMenus::kPresets.shownTitle(),
                                   BarButton::Label::Beside);
    m_presetButton->setObjectName("presets");
    TipCenter::describe(m_presetButton,
                        {EditorMenus::kPresets.shownTitle(), EditorMenus::kPresets.shownTip(), {}});
    m_presetButton->setMenu(new QMenu);
    connect(m_presetButton, &BarButton::menuAboutToOpen, this, &OptionsBar::fillPresetMenu);
    fillPresetMenu();
}

void OptionsBar::fillPresetMenu()
{
    QMenu *menu = m_presetButton->menu();
    menu->clear();
    const auto title = [](const StylePreset &preset) {
        const QString name = preset.name.size() > 40 ? preset.name.left(39) + "…" : preset.name;
        return QString(name).replace('&', "&&");
    };
    for (const StylePreset &preset : m_presets.presets())
        menu->addAction(presetIcon(preset), title(preset), this,
                        [this, preset] { PresetStore::apply(preset, m_document); });
    if (!m_presets.presets().isEmpty())
        menu->addSeparator();
    menu->addAction(EditorTexts::tr("Save Current Style as Preset…"), this,
                    [this] { m_controller.promptSavePreset(); });
    QMenu *remove = menu->addMenu(EditorTexts::tr("Delete Preset"));
    for (const StylePreset &preset : m_presets.presets())
        remove->addAction(presetIcon(preset), title(preset), this,
                          [this, id = preset.id] { m_presets.remove(id); });
    remove->setEnabled(!m_presets.presets().isEmpty());
}

ToolKind OptionsBar::kind() const
{
    const auto selected = m_document.selected();
    return selected ? selected->kind : m_document.tool();
}

void OptionsBar::follow()
{
    const auto selected = m_document.selected();
    const ToolKind shown = kind();
    const bool idle = shown == ToolKind::Select;
    m_what->setText(selected ? selectedWords(shown) : Tools::shortTitle(shown));
    m_what->setVisible(!idle);
    m_note->setVisible(idle);
    m_colors->setVisible(Tools::usesColor(shown));
    for (Swatch *swatch : m_swatches)
        swatch->setChecked(swatch->color().rgba() == m_document.color().toRgb().rgba());
    m_size->setVisible(Tools::usesSize(shown));
    m_size->setName(Tools::holdsText(shown) ? EditorTexts::tr("Size") : EditorTexts::tr("Width"));
    m_size->setValue(qRound(m_document.lineWidth()));
    TipCenter::describe(
        m_size, {Tools::holdsText(shown) ? EditorTexts::tr("Size") : EditorTexts::tr("Width"),
                 Tools::holdsText(shown) ? EditorTexts::tr("Text size.") : EditorTexts::tr("Line thickness."),
                 {}});
    m_font->setVisible(Tools::usesFont(shown));
    m_font->setText(fontLabel(m_document.textFont()));
    m_font->updateGeometry();
    m_stamp->setVisible(shown == ToolKind::Stamp);
    const QString stamp = m_document.stampValue();
    m_stamp->setSymbol(stamp.startsWith("sym:") ? stamp.mid(4) : QStringLiteral("seal"));
    followStyles(shown);
    fit();
}

void OptionsBar::followStyles(ToolKind shown)
{
    const auto styles = Tools::styles(shown);
    m_styles->setVisible(!styles.isEmpty());
    if (styles.isEmpty())
        return;
    if (m_shownStyles != shown) {
        QList<SegmentedPicker::Segment> segments;
        for (const Tools::Style &style : styles)
            segments.append({style.name, style.symbol});
        m_styles->setSegments(segments);
        m_styles->setAccessibleName(EditorTexts::tr("Style"));
        TipCenter::describe(m_styles, {EditorTexts::tr("Style"),
                                       EditorTexts::tr("Style for new %1 objects and the one selected.")
                                           .arg(Tools::shortTitle(shown).toLower()),
                                       {}});
        m_shownStyles = shown;
    }
    const auto selected = m_document.selected();
    m_styles->setCurrent(selected ? selected->style : m_document.toolStyle(shown));
}
