#include "document/project_file.h"

#include "base/atomic_file.h"
#include "base/file_errors.h"
#include "base/file_tree.h"
#include "base/json.h"
#include "base/read_file.h"
#include "document/image_files.h"
#include "document/texts.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <cmath>

namespace {

// All pictures of a project's objects together, in pixels; what would go beyond stays undecoded.
constexpr qint64 kMostObjectPixels = 200'000'000;
// Those pictures, written out, and more than a hand can draw.
constexpr qint64 kMostDescriptionBytes = 1'000'000'000;

QJsonArray json(const QPointF &point)
{
    return {point.x(), point.y()};
}

QJsonArray json(const QList<double> &numbers)
{
    QJsonArray array;
    for (const double number : numbers)
        array.append(number);
    return array;
}

std::optional<QPointF> point(const QJsonValue &value)
{
    const QJsonArray array = value.toArray();
    if (!value.isArray() || array.size() != 2 || !array[0].isDouble() || !array[1].isDouble())
        return {};
    return QPointF(array[0].toDouble(), array[1].toDouble());
}

std::optional<QList<QPointF>> points(const QJsonValue &value)
{
    if (!value.isArray())
        return {};
    QList<QPointF> result;
    const QJsonArray array = value.toArray();
    result.reserve(array.size());
    for (const auto &element : array) {
        const auto p = point(element);
        if (!p)
            return {};
        result.append(*p);
    }
    return result;
}

std::optional<QList<double>> numbers(const QJsonValue &value)
{
    if (!value.isArray())
        return {};
    QList<double> result;
    const QJsonArray array = value.toArray();
    for (const auto &element : array) {
        if (!element.isDouble())
            return {};
        result.append(element.toDouble());
    }
    return result;
}

// A key that may be missing or null, but not of another type.
template <typename Read>
bool optionally(const QJsonObject &object, const char *key, Read read)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isUndefined() || value.isNull() || read(value);
}

QList<double> rgbaOf(const QColor &color)
{
    const QColor rgb = color.toRgb();
    // Five decimals hold the sixteen bits of a channel and read back to the same.
    const auto rounded = [](float value) { return std::round(double(value) * 1e5) / 1e5; };
    return {rounded(rgb.redF()), rounded(rgb.greenF()), rounded(rgb.blueF()), rounded(rgb.alphaF())};
}

QColor colorOf(const QList<double> &rgba)
{
    if (rgba.size() != 4)
        return SystemColors::red();
    const auto channel = [&](int i) {
        return static_cast<float>(std::isfinite(rgba[i]) ? std::clamp(rgba[i], 0.0, 1.0) : 0.0);
    };
    return QColor::fromRgbF(channel(0), channel(1), channel(2), channel(3));
}

QJsonObject json(const ProjectFile::Item &item)
{
    QJsonArray points;
    for (const QPointF &point : item.points)
        points.append(json(point));
    QJsonObject object{{"kind", item.kind}, {"start", json(item.start)}, {"end", json(item.end)},
                       {"points", points},  {"rgba", json(item.rgba)},   {"lineWidth", item.lineWidth},
                       {"text", item.text}, {"number", item.number}};
    if (item.style)
        object.insert("style", *item.style);
    if (item.font)
        object.insert("font", *item.font);
    if (item.imagePNG)
        object.insert("imagePNG", QString::fromLatin1(item.imagePNG->toBase64()));
    return object;
}

std::optional<ProjectFile::Item> itemOf(const QJsonValue &value)
{
    if (!value.isObject())
        return {};
    const QJsonObject object = value.toObject();
    ProjectFile::Item item;
    const auto kind = Json::string(object, "kind");
    const auto start = point(object.value("start"));
    const auto end = point(object.value("end"));
    const auto stroke = points(object.value("points"));
    const auto rgba = numbers(object.value("rgba"));
    const auto lineWidth = Json::number(object, "lineWidth");
    const auto text = Json::string(object, "text");
    const auto number = Json::integer(object, "number");
    if (!kind || !start || !end || !stroke || !rgba || !lineWidth || !text || !number)
        return {};
    const bool well = optionally(object, "style",
                                 [&](const QJsonValue &) {
                                     item.style = Json::integer(object, "style");
                                     return item.style.has_value();
                                 }) &&
                      optionally(object, "font",
                                 [&](const QJsonValue &) {
                                     item.font = Json::integer(object, "font");
                                     return item.font.has_value();
                                 }) &&
                      optionally(object, "imagePNG", [&](const QJsonValue &value) {
                          if (!value.isString())
                              return false;
                          const auto bytes = QByteArray::fromBase64Encoding(value.toString().toLatin1());
                          item.imagePNG = bytes.decodingStatus == QByteArray::Base64DecodingStatus::Ok
                                              ? bytes.decoded
                                              : QByteArray();
                          return true;
                      });
    if (!well)
        return {};
    item.kind = *kind;
    item.start = *start;
    item.end = *end;
    item.points = *stroke;
    item.rgba = *rgba;
    item.lineWidth = *lineWidth;
    item.text = *text;
    item.number = *number;
    return item;
}

// Decodes a picture if there is still room for it, which its header tells.
QImage pictureOf(const QByteArray &png, qint64 &room)
{
    const auto size = ImageFiles::pixelSizeOf(png);
    if (!size || qint64(size->width()) * size->height() > room)
        return {};
    const auto decoded = ImageFiles::decode(png);
    if (!decoded)
        return {};
    room -= qint64(decoded->width()) * decoded->height();
    return *decoded;
}

} // namespace

ProjectFile ProjectFile::describing(const QList<Annotation> &annotations, const Effects &effects)
{
    ProjectFile project;
    for (const Annotation &a : annotations) {
        Item item{Tools::rawValue(a.kind),
                  a.start,
                  a.end,
                  a.points,
                  rgbaOf(a.color),
                  a.lineWidth,
                  a.text,
                  a.number,
                  a.style,
                  a.font,
                  {}};
        if (!a.image.isNull()) {
            if (const QByteArray png = ImageFiles::encode(a.image, ImageFiles::Type::Png); !png.isEmpty())
                item.imagePNG = png;
        } else if (!a.unshownImage.isEmpty()) {
            item.imagePNG = a.unshownImage;
        }
        project.annotations.append(item);
    }
    project.border = effects.border;
    project.borderRGBA = rgbaOf(effects.borderColor);
    project.shadow = effects.shadow;
    project.rounded = effects.rounded;
    project.backdrop = effects.backdrop;
    project.backdropStyle = effects.backdropStyle;
    return project;
}

QList<Annotation> ProjectFile::objects() const
{
    QList<Annotation> result;
    qint64 room = kMostObjectPixels;
    for (const Item &item : annotations) {
        const auto kind = Tools::fromRawValue(item.kind);
        if (!kind)
            continue;
        Annotation a;
        a.id = QUuid::createUuid();
        a.kind = *kind;
        a.start = item.start;
        a.end = item.end;
        a.points = item.points;
        a.color = colorOf(item.rgba);
        a.lineWidth = item.lineWidth;
        a.text = item.text;
        a.number = item.number;
        a.style = item.style.value_or(0);
        a.font = item.font.value_or(0);
        if (item.imagePNG) {
            a.image = pictureOf(*item.imagePNG, room);
            if (a.image.isNull())
                a.unshownImage = *item.imagePNG;
        }
        result.append(a);
    }
    return result;
}

QString ProjectFile::unshownPictures(const QList<Annotation> &annotations)
{
    const auto count = std::count_if(annotations.begin(), annotations.end(),
                                     [](const Annotation &a) { return !a.unshownImage.isEmpty(); });
    if (count == 0)
        return {};
    return DocumentTexts::tr(
        "%n pasted picture(s) can't be shown: too large or damaged. What is stored of them "
        "stays.",
        nullptr, static_cast<int>(count));
}

Effects ProjectFile::effects() const
{
    return {border, colorOf(borderRGBA), shadow, rounded, backdrop, backdropStyle};
}

QByteArray ProjectFile::encoded() const
{
    QJsonArray items;
    for (const Item &item : annotations)
        items.append(json(item));
    const QJsonObject object{
        {"annotations", items}, {"border", border},     {"borderRGBA", json(borderRGBA)}, {"shadow", shadow},
        {"rounded", rounded},   {"backdrop", backdrop}, {"backdropStyle", backdropStyle}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

Result<ProjectFile> ProjectFile::decoded(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (!document.isObject())
        return fail(DocumentTexts::tr("This is no readable project, it is not one JSON object."),
                    error.errorString());
    const QJsonObject object = document.object();
    const auto items = Json::array(object, "annotations");
    const auto border = Json::boolean(object, "border");
    const auto borderRGBA = numbers(object.value("borderRGBA"));
    const auto shadow = Json::boolean(object, "shadow");
    const auto rounded = Json::boolean(object, "rounded");
    const auto backdrop = Json::boolean(object, "backdrop");
    const auto backdropStyle = Json::integer(object, "backdropStyle");
    if (!items || !border || !borderRGBA || !shadow || !rounded || !backdrop || !backdropStyle)
        return fail(
            DocumentTexts::tr("This is no readable project, a key is missing or has the wrong type."));

    ProjectFile project;
    for (const auto &value : *items) {
        const auto item = itemOf(value);
        if (!item)
            return fail(DocumentTexts::tr(
                "This is no readable project, a key of an object is missing or has the wrong type."));
        project.annotations.append(*item);
    }
    project.border = *border;
    project.borderRGBA = *borderRGBA;
    project.shadow = *shadow;
    project.rounded = *rounded;
    project.backdrop = *backdrop;
    project.backdropStyle = *backdropStyle;
    return project;
}

Result<ProjectFile> ProjectFile::readDescription(const QString &path)
{
    const auto bytes = ReadFile::whole(path, kMostDescriptionBytes);
    if (!bytes)
        return std::unexpected(bytes.error());
    auto project = decoded(*bytes);
    if (!project)
        return fail(path + ": " + project.error().message, project.error().detail);
    return project;
}

Result<ProjectFile::Contents> ProjectFile::read(const QString &directory)
{
    const QDir dir(directory);
    if (directory.isEmpty() || !FileTree::exists(directory))
        return fail(Error::Kind::NotFound, DocumentTexts::tr("There is no project at %1.").arg(directory));
    auto base = ImageFiles::read(dir.filePath("base.png"));
    if (!base)
        return std::unexpected(base.error());
    auto project = readDescription(dir.filePath("project.json"));
    if (!project)
        return std::unexpected(project.error());
    return Contents{*std::move(base), *std::move(project)};
}

Result<void> ProjectFile::write(const QString &directory, const QImage &base, const ProjectFile &project)
{
    if (!FileTree::makeFolder(directory))
        return FileErrors::cannotWrite(directory, errno);
    const QDir dir(directory);
    if (const auto written = ImageFiles::write(base, dir.filePath("base.png")); !written)
        return written;
    return AtomicFile::write(dir.filePath("project.json"), project.encoded());
}
