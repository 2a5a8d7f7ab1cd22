#pragma once

#include "document/editor_document.h"

#include <QWidget>

class BarButton;
class EditorWindowController;
class Hairline;
class PresetStore;
class QLabel;
class SegmentedPicker;
class Swatch;
class ValueSlider;

// The options of the selected object's kind, or of the active tool: colour, size, style, typeface, stamp, and
// the presets. One row that keeps its height.
class OptionsBar : public QWidget {
    Q_OBJECT
public:
    OptionsBar(EditorWindowController &controller, PresetStore &presets);

    // Whose options are shown.
    ToolKind kind() const;

    struct NamedColor {
        const char *name;
        QColor color;
    };
    static const QList<NamedColor> &swatchColors();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *makeColors();
    void makeFontButton();
    void makeStampButton();
    void addPresets();
    void chooseColor(QWidget *anchor);
    void fillPresetMenu();
    void follow();
    void fit();
    void followStyles(ToolKind kind);

    EditorWindowController &m_controller;
    EditorDocument &m_document;
    PresetStore &m_presets;
    QWidget *m_colors;
    QList<Swatch *> m_swatches;
    ValueSlider *m_size;
    SegmentedPicker *m_styles;
    BarButton *m_font;
    BarButton *m_stamp;
    BarButton *m_presetButton;
    QLabel *m_note;
    QLabel *m_what;
    std::optional<ToolKind> m_shownStyles;
};
