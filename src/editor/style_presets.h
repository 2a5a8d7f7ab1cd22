#pragma once

#include <QJsonArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

class Defaults;
class EditorDocument;

// A named look: a tool with its colour, size, style and font.
struct StylePreset {
    QUuid id;
    QString name;
    QString tool; // raw value of a ToolKind; one that this program doesn't know is kept, and does nothing
    QList<double> rgba; // sRGB, 0 to 1; any count but four leaves the colour as it is
    double lineWidth = 6;
    int style = 0;
    int font = 0;

    bool operator==(const StylePreset &) const = default;
};

// The presets, shared by all editors and kept in the user's defaults as they change.
class PresetStore : public QObject {
    Q_OBJECT
public:
    static constexpr const char *kKey = "stylePresets";

    // Reads them, or begins with four that show what presets are for.
    explicit PresetStore(Defaults &defaults, QObject *parent = nullptr);

    const QList<StylePreset> &presets() const { return m_presets; }
    // Never restyles a selected object.
    static void apply(const StylePreset &preset, EditorDocument &document);
    void saveCurrent(const EditorDocument &document, const QString &name);
    void remove(const QUuid &id);

Q_SIGNALS:
    void changed();

private:
    void setPresets(const QList<StylePreset> &presets);

    Defaults &m_defaults;
    QList<StylePreset> m_presets;
};
