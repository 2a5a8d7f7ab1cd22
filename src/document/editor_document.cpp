#include "document/editor_document.h"

#include "base/colors.h"
#include "document/cutout.h"
#include "document/image_files.h"
#include "document/project_save.h"
#include "document/renderer.h"
#include "platform/pasteboard.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qsizetype longestHistory = 60;
// How far a copy is moved from its original.
constexpr double cascade = 24;

bool usesNumber(const Annotation &annotation)
{
    return annotation.kind == ToolKind::Step;
}

} // namespace

QList<Annotation> EditorDocument::s_objectClipboard;

EditorDocument::EditorDocument(const QImage &image, const QUrl &url, QObject *parent)
    : QObject(parent), m_base(image), m_fileURL(url)
{}

EditorDocument::EditorDocument(const Source &source, QObject *parent)
    : QObject(parent),
      m_base(source.base),
      m_annotations(source.annotations),
      m_effects(source.effects),
      m_fileURL(source.fileURL)
{}

EditorDocument::Source EditorDocument::load(const QString &path, const QString &projectDirectory)
{
    const QUrl url = QUrl::fromLocalFile(path);
    const auto opened = ProjectSave::open(path, projectDirectory);
    if (opened.contents) {
        const ProjectFile &project = opened.contents->project;
        return {opened.contents->base, project.objects(), project.effects(), url};
    }
    if (const auto image = ImageFiles::read(path))
        return {*image, {}, {}, url, opened.isSetAside};
    QImage blank(2, 2, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    return {blank, {}, {}, url};
}

// --- fields

template <typename T>
void EditorDocument::set(T &member, const T &value, Field field)
{
    emit aboutToChange(field);
    member = value;
    emit changed(field);
}

void EditorDocument::setBase(const QImage &base)
{
    emit aboutToChange(Field::Base);
    if (base.cacheKey() != m_base.cacheKey())
        m_pixelated = QImage();
    m_base = base;
    emit changed(Field::Base);
}

const QImage &EditorDocument::pixelated() const
{
    if (m_pixelated.isNull())
        m_pixelated = Renderer::pixelated(m_base);
    return m_pixelated;
}

void EditorDocument::setAnnotations(const QList<Annotation> &annotations)
{
    set(m_annotations, annotations, Field::Annotations);
}

void EditorDocument::setEffects(const Effects &effects)
{
    set(m_effects, effects, Field::Effects);
}

void EditorDocument::setSelectedID(const std::optional<QUuid> &id)
{
    if (id != m_selectedID)
        set(m_selectedID, id, Field::Selection);
}

std::optional<Annotation> EditorDocument::object(const QUuid &id) const
{
    const auto found = std::find_if(m_annotations.begin(), m_annotations.end(),
                                    [&](const Annotation &a) { return a.id == id; });
    return found == m_annotations.end() ? std::nullopt : std::optional(*found);
}

std::optional<Annotation> EditorDocument::selected() const
{
    return m_selectedID ? object(*m_selectedID) : std::nullopt;
}

void EditorDocument::setTool(ToolKind tool)
{
    set(m_tool, tool, Field::Tool);
}

void EditorDocument::editSelected(const std::function<void(Annotation &)> &edit)
{
    if (auto object = selected()) {
        edit(*object);
        replace(*object);
    }
}

void EditorDocument::setColor(const QColor &color)
{
    set(m_color, color, Field::Style);
    editSelected([&](Annotation &object) { object.color = color; });
}

void EditorDocument::setLineWidth(double width)
{
    set(m_lineWidth, width, Field::Style);
    editSelected([&](Annotation &object) { object.lineWidth = width; });
}

void EditorDocument::setTextFont(TextFont font)
{
    set(m_textFont, font, Field::Style);
    if (const auto object = selected(); object && Tools::usesFont(object->kind))
        editSelected([&](Annotation &object) { object.font = static_cast<int>(font); });
}

void EditorDocument::setStampValue(const QString &value)
{
    set(m_stampValue, value, Field::Style);
}

void EditorDocument::setStyle(int style, ToolKind kind)
{
    emit aboutToChange(Field::Style);
    m_toolStyles.insert(kind, style);
    emit changed(Field::Style);
    if (const auto object = selected(); object && object->kind == kind)
        editSelected([&](Annotation &object) { object.style = style; });
}

void EditorDocument::adoptStyle(const Annotation &annotation)
{
    // Without a selection meanwhile, so that nothing flows back into an object.
    const std::optional<QUuid> id = m_selectedID;
    setSelectedID({});
    setColor(annotation.color);
    setLineWidth(annotation.lineWidth);
    if (!Tools::styles(annotation.kind).isEmpty())
        setStyle(annotation.style, annotation.kind);
    if (Tools::usesFont(annotation.kind))
        setTextFont(annotation.textFont());
    setSelectedID(id);
}

void EditorDocument::setZoom(const std::optional<double> &zoom)
{
    set(m_zoom, zoom, Field::Zoom);
}
void EditorDocument::setDisplayZoom(double zoom)
{
    set(m_displayZoom, zoom, Field::DisplayZoom);
}
void EditorDocument::setPickingColor(bool on)
{
    set(m_isPickingColor, on, Field::Mode);
}
void EditorDocument::setSelectingText(bool on)
{
    set(m_isSelectingText, on, Field::Mode);
}
void EditorDocument::setShowPalette(bool on)
{
    set(m_showPalette, on, Field::Mode);
}
void EditorDocument::setBusy(bool on)
{
    set(m_isBusy, on, Field::Mode);
}
void EditorDocument::setAIResult(const std::optional<AIResult> &result)
{
    set(m_aiResult, result, Field::Mode);
}
void EditorDocument::setFileURL(const QUrl &url)
{
    set(m_fileURL, url, Field::File);
}
void EditorDocument::setDisplayName(const QString &name)
{
    set(m_displayName, name, Field::File);
}

// --- questions

std::optional<QColor> EditorDocument::sampleColor(const QPointF &point) const
{
    if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
        return {};
    const double x = std::trunc(point.x());
    const double y = std::trunc(point.y());
    if (x < 0 || y < 0 || x >= m_base.width() || y >= m_base.height())
        return {};
    return m_base.pixelColor(static_cast<int>(x), static_cast<int>(y));
}

std::optional<Annotation> EditorDocument::hitTest(const QPointF &point, double tolerance) const
{
    const auto found = std::find_if(m_annotations.rbegin(), m_annotations.rend(),
                                    [&](const Annotation &a) { return a.isHit(point, tolerance); });
    return found == m_annotations.rend() ? std::nullopt : std::optional(*found);
}

int EditorDocument::nextStepNumber() const
{
    std::optional<int> highest;
    for (const Annotation &annotation : m_annotations) {
        if (usesNumber(annotation))
            highest = std::max(highest.value_or(annotation.number), annotation.number);
    }
    return highest ? *highest + (*highest < std::numeric_limits<int>::max()) : 1;
}

// --- objects

Annotation EditorDocument::makeAnnotation(ToolKind kind, const QPointF &point) const
{
    Annotation result;
    result.id = QUuid::createUuid();
    result.kind = kind;
    result.start = result.end = point;
    result.color = m_color;
    // A dark highlighter would hide the text it is drawn over.
    if (kind == ToolKind::Highlight && brightnessComponentSafe(m_color) < 0.25)
        result.color = SystemColors::yellow();
    result.lineWidth = m_lineWidth;
    result.style = toolStyle(kind);
    result.font = static_cast<int>(m_textFont);
    if (kind == ToolKind::Stamp)
        result.text = m_stampValue;
    if (kind == ToolKind::Step)
        result.number = nextStepNumber();
    if (kind == ToolKind::Pen)
        result.points = {point};
    return result;
}

void EditorDocument::add(const Annotation &annotation)
{
    pushUndo();
    setAnnotations(m_annotations + QList{annotation});
    setSelectedID(annotation.id);
}

void EditorDocument::replace(const Annotation &annotation)
{
    for (qsizetype i = 0; i < m_annotations.size(); ++i) {
        if (m_annotations[i].id != annotation.id)
            continue;
        emit aboutToChange(Field::Annotations);
        m_annotations[i] = annotation;
        emit changed(Field::Annotations);
        return;
    }
}

void EditorDocument::deleteSelected()
{
    if (!selected())
        return;
    pushUndo();
    QList<Annotation> rest = m_annotations;
    rest.removeIf([&](const Annotation &a) { return a.id == *m_selectedID; });
    setAnnotations(rest);
    setSelectedID({});
}

void EditorDocument::duplicateSelected()
{
    auto copy = selected();
    if (!copy)
        return;
    copy->id = QUuid::createUuid();
    copy->offset(cascade, cascade);
    if (usesNumber(*copy))
        copy->number = nextStepNumber();
    add(*copy);
}

void EditorDocument::bringToFront()
{
    moveSelected(End::Front);
}

void EditorDocument::sendToBack()
{
    moveSelected(End::Back);
}

void EditorDocument::moveSelected(End end)
{
    const auto object = selected();
    if (!object)
        return;
    pushUndo();
    QList<Annotation> order = m_annotations;
    order.removeIf([&](const Annotation &a) { return a.id == object->id; });
    if (end == End::Front)
        order.append(*object);
    else
        order.prepend(*object);
    setAnnotations(order);
}

void EditorDocument::addImageObject(const QImage &image, const std::optional<QPointF> &point)
{
    if (image.isNull())
        return;
    const double scale =
        std::min({1.0, 0.6 * m_base.width() / image.width(), 0.6 * m_base.height() / image.height()});
    QRectF rect(QPointF(), QSizeF(image.size()) * scale);
    rect.moveCenter(point.value_or(imageBounds().center()));
    Annotation object;
    object.id = QUuid::createUuid();
    object.kind = ToolKind::Image;
    object.start = rect.topLeft();
    object.end = rect.bottomRight();
    object.color = Qt::white;
    object.lineWidth = m_lineWidth;
    object.image = image;
    add(object);
    setTool(ToolKind::Select);
}

void EditorDocument::copySelected(Pasteboard &pasteboard) const
{
    const auto object = selected();
    if (!object)
        return;
    s_objectClipboard = {*object};
    const QRect rect = object->bounds().intersected(imageBounds()).toAlignedRect() & m_base.rect();
    QList<Pasteboard::Flavor> flavors{{objectPasteboardType, QByteArray()}};
    if (!rect.isEmpty())
        flavors.append({"image/png", ImageFiles::encode(flattened().copy(rect), ImageFiles::Type::Png)});
    pasteboard.setFlavors(flavors);
}

void EditorDocument::paste(Pasteboard &pasteboard, const std::optional<QPointF> &point)
{
    if (pasteboard.has(objectPasteboardType) && !s_objectClipboard.isEmpty())
        pasteObjects(point);
    else if (pasteboard.hasImage())
        addImageObject(pasteboard.image(), point);
}

void EditorDocument::pasteObjects(const std::optional<QPointF> &point)
{
    pushUndo();
    for (const Annotation &original : std::as_const(s_objectClipboard)) {
        Annotation copy = original;
        copy.id = QUuid::createUuid();
        if (point) {
            const QPointF by = *point - copy.bounds().center();
            copy.offset(by.x(), by.y());
        } else {
            copy.offset(cascade, cascade);
        }
        if (usesNumber(copy))
            copy.number = nextStepNumber();
        setAnnotations(m_annotations + QList{copy});
        setSelectedID(copy.id);
    }
    for (Annotation &original : s_objectClipboard)
        original.offset(cascade, cascade); // the next paste cascades instead of stacking
}

// --- surgery

void EditorDocument::applyCrop(const QRectF &rect)
{
    if (!std::isfinite(rect.left() + rect.top() + rect.width() + rect.height()))
        return;
    const QRect area = rect.normalized().intersected(imageBounds()).toAlignedRect() & m_base.rect();
    if (area.width() < 4 || area.height() < 4)
        return;
    const QImage cut = m_base.copy(area);
    if (cut.isNull())
        return;
    pushUndo();
    setBase(cut);
    QList<Annotation> moved = m_annotations;
    for (Annotation &annotation : moved)
        annotation.offset(-area.x(), -area.y());
    setAnnotations(moved);
    setSelectedID({});
}

void EditorDocument::applyCutout(const QRectF &rect, bool columns)
{
    const auto cutout = Cutout::make(m_base, rect, columns);
    if (!cutout)
        return;
    pushUndo();
    setBase(cutout->image);
    const double removed = cutout->to - cutout->from;
    QList<Annotation> moved = m_annotations;
    for (Annotation &annotation : moved) {
        const QRectF bounds = annotation.bounds();
        if ((columns ? bounds.left() : bounds.top()) >= cutout->to)
            annotation.offset(columns ? -removed : 0, columns ? 0 : -removed);
    }
    setAnnotations(moved);
    setSelectedID({});
}

// --- results

QImage EditorDocument::flattened() const
{
    const bool blurs = std::any_of(m_annotations.begin(), m_annotations.end(),
                                   [](const Annotation &a) { return a.kind == ToolKind::Blur; });
    return Renderer::flattened(m_base, blurs ? pixelated() : QImage(), m_annotations);
}

QImage EditorDocument::exported() const
{
    return m_effects.applied(flattened());
}

ProjectFile EditorDocument::project() const
{
    return ProjectFile::describing(m_annotations, m_effects);
}

// --- history

void EditorDocument::pushUndo()
{
    emit aboutToChange(Field::History);
    m_undoStack.append({m_base, m_annotations});
    if (m_undoStack.size() > longestHistory)
        m_undoStack.removeFirst();
    m_redoStack.clear();
    emit changed(Field::History);
}

void EditorDocument::undo()
{
    swapWith(m_undoStack, m_redoStack);
}
void EditorDocument::redo()
{
    swapWith(m_redoStack, m_undoStack);
}

void EditorDocument::swapWith(QList<Snapshot> &source, QList<Snapshot> &other)
{
    if (source.isEmpty())
        return;
    emit aboutToChange(Field::History);
    const Snapshot snapshot = source.takeLast();
    other.append({m_base, m_annotations});
    emit changed(Field::History);
    if (snapshot.base.cacheKey() != m_base.cacheKey())
        setBase(snapshot.base);
    setAnnotations(snapshot.annotations);
    setSelectedID({});
}
