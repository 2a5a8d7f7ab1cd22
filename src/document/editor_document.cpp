#include "document/editor_document.h"

#include "base/colors.h"
#include "base/read_file.h"
#include "document/cutout.h"
#include "document/draft.h"
#include "document/image_files.h"
#include "document/project_save.h"
#include "document/renderer.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qsizetype kLongestHistory = 60;
// How far a copy is moved from its original.
constexpr double kCascade = 24;

bool usesNumber(const Annotation &annotation)
{
    return annotation.kind == ToolKind::Step;
}

} // namespace

EditorDocument::EditorDocument(const QImage &image, const QUrl &url, QObject *parent)
    : QObject(parent), m_base(image), m_saved(contents()), m_fileURL(url)
{}

EditorDocument::EditorDocument(const Source &source, QObject *parent)
    : QObject(parent),
      m_base(source.base),
      m_annotations(source.annotations),
      m_effects(source.effects),
      m_saved(contents()),
      m_fileURL(source.fileURL),
      m_fileDigest(source.fileDigest),
      m_draftDirectory(source.draftDirectory),
      m_isFromDraft(source.draft),
      m_hasSetDraftAside(source.hasSetDraftAside)
{
    if (!source.draft)
        return;
    m_base = source.draft->base;
    m_annotations = source.draft->annotations;
    m_effects = source.draft->effects;
}

namespace {

void addDraft(EditorDocument::Source &source, const QString &directory)
{
    if (!Draft::exists(directory))
        return;
    source.draft = Draft::read(directory, source.fileDigest);
    if (source.draft)
        return;
    Draft::setAside(directory);
    source.hasSetDraftAside = true;
}

} // namespace

EditorDocument::Source EditorDocument::load(const QString &path, const QString &projectDirectory)
{
    Source source;
    source.fileURL = QUrl::fromLocalFile(path);
    source.fileDigest = ReadFile::digest(path); // before the pixels: a draft of older ones fits no newer ones
    const auto opened = ProjectSave::open(path, projectDirectory);
    source.isProjectSetAside = opened.isSetAside;
    if (opened.contents) {
        source.base = opened.contents->base;
        source.annotations = opened.contents->project.objects();
        source.effects = opened.contents->project.effects();
    } else if (const auto image = ImageFiles::read(path)) {
        source.base = *image;
    } else {
        return source;
    }
    if (!projectDirectory.isEmpty())
        addDraft(source, Draft::directoryOf(path, projectDirectory));
    return source;
}

template <typename T>
void EditorDocument::set(T &member, const T &value, Field field)
{
    Q_EMIT aboutToChange(field);
    member = value;
    Q_EMIT changed(field);
}

void EditorDocument::setBase(const QImage &base)
{
    Q_EMIT aboutToChange(Field::Base);
    if (base.cacheKey() != m_base.cacheKey())
        m_pixelated = QImage();
    m_base = base;
    Q_EMIT changed(Field::Base);
}

const QImage &EditorDocument::pixelated() const
{
    if (m_pixelated.isNull())
        m_pixelated = Renderer::pixelated(m_base);
    return m_pixelated;
}

void EditorDocument::keepPixelated(const QImage &base, const QImage &pixelated)
{
    if (base.cacheKey() == m_base.cacheKey())
        m_pixelated = pixelated;
}

void EditorDocument::setAnnotations(const QList<Annotation> &annotations)
{
    set(m_annotations, annotations, Field::Annotations);
}

void EditorDocument::setEffects(const Effects &effects)
{
    set(m_effects, effects, Field::Effects);
}

void EditorDocument::setSaved(const Contents &contents)
{
    set(m_saved, contents, Field::Saved);
}

void EditorDocument::setContents(const Contents &contents)
{
    pushUndo();
    if (contents.base.cacheKey() != m_base.cacheKey())
        setBase(contents.base);
    setAnnotations(contents.annotations);
    setEffects(contents.effects);
    setSelectedID({});
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

void EditorDocument::chooseTool(ToolKind tool)
{
    setSelectedID({});
    setTool(tool);
}

ToolKind EditorDocument::activeKind() const
{
    const auto object = selected();
    return object ? object->kind : m_tool;
}

void EditorDocument::editSelected(const std::function<void(Annotation &)> &edit)
{
    if (auto object = selected()) {
        edit(*object);
        replace(*object);
    }
}

// The object before the notice of the new style: who follows that sees both.

void EditorDocument::setColor(const QColor &color)
{
    Q_EMIT aboutToChange(Field::Style);
    colorOf(activeKind()) = color;
    editSelected([&](Annotation &object) { object.color = color; });
    Q_EMIT changed(Field::Style);
}

void EditorDocument::setLineWidth(double width)
{
    Q_EMIT aboutToChange(Field::Style);
    m_lineWidth = width;
    editSelected([&](Annotation &object) { object.lineWidth = width; });
    Q_EMIT changed(Field::Style);
}

void EditorDocument::setTextFont(TextFont font)
{
    Q_EMIT aboutToChange(Field::Style);
    m_textFont = font;
    if (const auto object = selected(); object && Tools::usesFont(object->kind))
        editSelected([&](Annotation &object) { object.font = static_cast<int>(font); });
    Q_EMIT changed(Field::Style);
}

void EditorDocument::setStampValue(const QString &value)
{
    set(m_stampValue, value, Field::Style);
}

void EditorDocument::setStyle(int style, ToolKind kind)
{
    Q_EMIT aboutToChange(Field::Style);
    m_toolStyles.insert(kind, style);
    if (const auto object = selected(); object && object->kind == kind)
        editSelected([&](Annotation &object) { object.style = style; });
    Q_EMIT changed(Field::Style);
}

void EditorDocument::adoptStyle(const Annotation &annotation)
{
    // Nothing flows back into an object: only what the next one looks like changes.
    Q_EMIT aboutToChange(Field::Style);
    colorOf(annotation.kind) = annotation.color;
    m_lineWidth = annotation.lineWidth;
    if (!Tools::styles(annotation.kind).isEmpty())
        m_toolStyles.insert(annotation.kind, annotation.style);
    if (Tools::usesFont(annotation.kind))
        m_textFont = annotation.textFont();
    Q_EMIT changed(Field::Style);
}

void EditorDocument::setFileURL(const QUrl &url)
{
    set(m_fileURL, url, Field::File);
}
void EditorDocument::setDisplayName(const QString &name)
{
    set(m_displayName, name, Field::File);
}

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

Annotation EditorDocument::makeAnnotation(ToolKind kind, const QPointF &point) const
{
    Annotation result;
    result.id = QUuid::createUuid();
    result.kind = kind;
    result.start = result.end = point;
    result.color = colorOf(kind);
    // A dark highlighter would hide the text it is drawn over.
    if (kind == ToolKind::Highlight && brightnessComponentSafe(result.color) < 0.25)
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
        Q_EMIT aboutToChange(Field::Annotations);
        m_annotations[i] = annotation;
        Q_EMIT changed(Field::Annotations);
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
    copy->offset(kCascade, kCascade);
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

void EditorDocument::addCopies(const QList<Annotation> &originals)
{
    if (originals.isEmpty())
        return;
    pushUndo();
    QList<Annotation> all = m_annotations;
    int number = nextStepNumber();
    for (Annotation copy : originals) {
        copy.id = QUuid::createUuid();
        if (usesNumber(copy))
            copy.number = number++;
        all.append(copy);
    }
    setAnnotations(all);
    setSelectedID(all.last().id);
}

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

void EditorDocument::pushUndo()
{
    Q_EMIT aboutToChange(Field::History);
    m_undoStack.append({m_base, m_annotations});
    if (m_undoStack.size() > kLongestHistory)
        m_undoStack.removeFirst();
    m_redoStack.clear();
    Q_EMIT changed(Field::History);
}

void EditorDocument::undo()
{
    swapWith(m_undoStack, m_redoStack);
}
void EditorDocument::redo()
{
    swapWith(m_redoStack, m_undoStack);
}

void EditorDocument::dropLastStep()
{
    undo();
    if (!m_redoStack.isEmpty())
        m_redoStack.removeLast();
}

void EditorDocument::swapWith(QList<Snapshot> &source, QList<Snapshot> &other)
{
    if (source.isEmpty())
        return;
    Q_EMIT aboutToChange(Field::History);
    const Snapshot snapshot = source.takeLast();
    other.append({m_base, m_annotations});
    Q_EMIT changed(Field::History);
    if (snapshot.base.cacheKey() != m_base.cacheKey())
        setBase(snapshot.base);
    setAnnotations(snapshot.annotations);
    setSelectedID({});
}
