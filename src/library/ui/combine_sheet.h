#pragma once

#include "library/ui/batch_sheet.h"
#include "library/ui/library_actions.h"

#include <QColor>
#include <QImage>
#include <optional>

class PicturePane;
class SegmentedPicker;
class ValueSlider;

// Makes one picture of several and opens it.
class CombineSheet : public BatchSheet {
    Q_OBJECT
public:
    CombineSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths);

protected:
    void begin() override;

private:
    void loadThumbs();
    void refresh();
    std::optional<QColor> background() const;

    LibraryPorts m_ports;
    QStringList m_paths;
    PicturePane *m_preview;
    SegmentedPicker *m_layout;
    SegmentedPicker *m_background;
    ValueSlider *m_spacing;
    struct Thumbs {
        QList<QImage> pictures;
        double scale = 1; // of the first, as the spacing is scaled
    };
    Thumbs m_thumbs;
    int m_generation = 0; // of the preview
};
