#include "library/ui/combine_sheet.h"

#include "base/async.h"
#include "document/image_files.h"
#include "library/ui/library_work.h"
#include "library/ui/picture_pane.h"
#include "library/ui/texts.h"
#include "ui/controls.h"
#include "ui/segmented_picker.h"

#include <QPushButton>

namespace {

constexpr int kWidestSpacing = 200; // pixels
constexpr int kThumb = 256;         // pixels
constexpr int kMostPreviewed = 60;  // more can't be told apart

} // namespace

CombineSheet::CombineSheet(const LibraryPorts &ports, QWidget *over, const QStringList &paths)
    : BatchSheet(over, QStringLiteral("rectangle.split.2x1"),
                 LibraryUiTexts::tr("Combine %n Capture(s)", nullptr, static_cast<int>(paths.size()))),
      m_ports(ports),
      m_paths(paths),
      m_preview(new PicturePane),
      m_layout(new SegmentedPicker),
      m_background(new SegmentedPicker),
      m_spacing(new ValueSlider(LibraryUiTexts::tr("Spacing"), 0, kWidestSpacing))
{
    m_preview->setTallest(180);
    m_preview->setFixedHeight(180);
    m_preview->setAccessibleName(LibraryUiTexts::tr("Preview"));
    addWide(m_preview);
    QList<SegmentedPicker::Segment> layouts;
    for (const Combiner::Layout layout : Combiner::kLayouts)
        layouts.append({Combiner::title(layout), Combiner::symbol(layout)});
    m_layout->setSegments(layouts);
    m_layout->setStretches(true);
    m_layout->setAccessibleName(LibraryUiTexts::tr("Layout"));
    addWide(m_layout);
    m_background->setSegments({{LibraryUiTexts::tr("White"), {}},
                               {LibraryUiTexts::tr("Dark"), {}},
                               {LibraryUiTexts::tr("Transparent"), {}}});
    m_background->setStretches(true);
    addField(LibraryUiTexts::tr("Background"), m_background);
    m_spacing->setValue(40);
    addWide(m_spacing);
    finishWith(LibraryUiTexts::tr("Create & Open"));
    connect(m_layout, &SegmentedPicker::chosen, this, &CombineSheet::refresh);
    connect(m_background, &SegmentedPicker::chosen, this, &CombineSheet::refresh);
    connect(m_spacing, &ValueSlider::changed, this, &CombineSheet::refresh);
    loadThumbs();
}

std::optional<QColor> CombineSheet::background() const
{
    switch (m_background->current()) {
    case 0:
        return Combiner::white();
    case 1:
        return Combiner::dark();
    default:
        return std::nullopt;
    }
}

void CombineSheet::loadThumbs()
{
    const auto load = [paths = m_paths.mid(0, kMostPreviewed)] {
        Thumbs thumbs;
        for (const QString &path : paths) {
            const auto thumb = ImageFiles::cachedThumbnail(path, kThumb);
            if (!thumb || thumb->isNull())
                continue;
            if (thumbs.pictures.isEmpty()) {
                const QSize size = ImageFiles::pixelSize(path).value_or(thumb->size());
                thumbs.scale = double(std::max(thumb->width(), thumb->height())) /
                               std::max({size.width(), size.height(), 1});
            }
            thumbs.pictures.append(*thumb);
        }
        return thumbs;
    };
    whenDone(runInBackground(load), this, [this](const Thumbs &thumbs) {
        m_thumbs = thumbs;
        refresh();
    });
}

void CombineSheet::refresh()
{
    const int generation = ++m_generation;
    const auto layout = Combiner::kLayouts[static_cast<size_t>(m_layout->current())];
    const auto make = [thumbs = m_thumbs, layout, spacing = m_spacing->value(), ground = background()] {
        return Combiner::combine(thumbs.pictures, layout, spacing * thumbs.scale, ground);
    };
    whenDone(runInBackground(make), this, [this, generation](const std::optional<QImage> &picture) {
        if (generation == m_generation)
            m_preview->setPicture(picture.value_or(QImage()));
    });
}

void CombineSheet::begin()
{
    watch(m_ports.work.combine({
        .paths = m_paths,
        .layout = Combiner::kLayouts[static_cast<size_t>(m_layout->current())],
        .spacing = double(m_spacing->value()),
        .background = background(),
    }));
}
