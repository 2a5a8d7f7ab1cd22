#include "document/project_file.h"

#include "document/project_save.h"

#include "document/editor_document.h"
#include "document/image_files.h"
#include "pixels.h"
#include "support/pictures.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace {

QJsonObject item(const char *kind = "rectangle")
{
    return {{"kind", kind},
            {"start", QJsonArray{1, 2}},
            {"end", QJsonArray{30.5, 40}},
            {"points", QJsonArray{}},
            {"rgba", QJsonArray{0.25, 0.5, 0.75, 1}},
            {"lineWidth", 4},
            {"text", ""},
            {"number", 0}};
}

QJsonObject project(const QJsonArray &items)
{
    return {{"annotations", items}, {"border", true},   {"borderRGBA", QJsonArray{0.2, 0.2, 0.2, 1}},
            {"shadow", false},      {"rounded", false}, {"backdrop", true},
            {"backdropStyle", 3}};
}

Result<ProjectFile> decoded(const QJsonObject &object)
{
    return ProjectFile::decoded(QJsonDocument(object).toJson());
}

QJsonObject with(QJsonObject object, const char *key, const QJsonValue &value)
{
    object.insert(QLatin1String(key), value);
    return object;
}

} // namespace

TEST(ProjectFile, BringsBackEveryFieldOfEveryKind)
{
    QList<Annotation> objects;
    for (const ToolKind kind : Tools::kAll) {
        Annotation a;
        a.id = QUuid::createUuid();
        a.kind = kind;
        a.start = {1.25, -2e5};
        a.end = {3.1, 4};
        a.points = {{0.1, 0.2}, {7, 8}};
        a.color = QColor::fromRgbF(0.45f, 0.38f, 0.98f, 0.5f);
        a.lineWidth = 5.5;
        a.text = QString::fromUtf8("sym:\"x\" \n 🎉 \\");
        a.number = -3;
        a.style = 2;
        a.font = 7;
        if (kind == ToolKind::Image)
            a.image = filled({20, 10}, Qt::green);
        objects.append(a);
    }
    const Effects effects{true, QColor(1, 2, 3, 200), true, true, true, 9};
    const auto read = ProjectFile::decoded(ProjectFile::describing(objects, effects).encoded());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->effects(), effects);
    const QList<Annotation> again = read->objects();
    ASSERT_EQ(again.size(), objects.size());
    for (qsizetype i = 0; i < objects.size(); ++i) {
        EXPECT_NE(again[i].id, objects[i].id);
        Annotation same = again[i];
        same.id = objects[i].id;
        EXPECT_EQ(same.color.rgba(), objects[i].color.rgba());
        same.color = objects[i].color;
        if (same.kind == ToolKind::Image)
            EXPECT_TRUE(isUnchanged(same.image, objects[i].image, objects[i].image.rect(), 0));
        same.image = objects[i].image;
        EXPECT_EQ(same, objects[i]) << Tools::rawValue(objects[i].kind).toStdString();
    }
    EXPECT_NE(read->objects()[0].id, again[0].id);
}

TEST(ProjectFile, WritesTheKeysThatOthersRead)
{
    Annotation a;
    a.color = QColor(255, 0, 51);
    const auto object = QJsonDocument::fromJson(ProjectFile::describing({a}, Effects()).encoded()).object();
    EXPECT_EQ(object.keys(), (QStringList{"annotations", "backdrop", "backdropStyle", "border", "borderRGBA",
                                          "rounded", "shadow"}));
    const QJsonObject first = object["annotations"].toArray()[0].toObject();
    EXPECT_EQ(first.keys(), (QStringList{"end", "font", "kind", "lineWidth", "number", "points", "rgba",
                                         "start", "style", "text"}));
    EXPECT_EQ(first["rgba"].toArray(), (QJsonArray{1, 0, 0.2, 1}));
    EXPECT_EQ(object["borderRGBA"].toArray(), (QJsonArray{0.2, 0.2, 0.2, 1}));
    EXPECT_EQ(ProjectFile::describing({a}, Effects()).encoded().count('\n'), 0);
}

TEST(ProjectFile, NeedsEveryRequiredKeyInItsType)
{
    ASSERT_TRUE(decoded(project({item()})));
    for (const QString &key : item().keys()) {
        QJsonObject lacking = item();
        lacking.remove(key);
        EXPECT_FALSE(decoded(project({item(), lacking}))) << key.toStdString();
    }
    for (const QString &key : project({}).keys()) {
        QJsonObject lacking = project({item()});
        lacking.remove(key);
        EXPECT_FALSE(decoded(lacking)) << key.toStdString();
    }
    const QList<std::pair<const char *, QJsonValue>> wrong{{"kind", 3},
                                                           {"start", QJsonArray{1}},
                                                           {"start", QJsonArray{1, 2, 3}},
                                                           {"end", "1,2"},
                                                           {"points", QJsonArray{1}},
                                                           {"points", QJsonArray{QJsonArray{1, "2"}}},
                                                           {"rgba", "red"},
                                                           {"rgba", QJsonArray{1, "0", 0, 1}},
                                                           {"lineWidth", "6"},
                                                           {"text", 7},
                                                           {"number", 1.5},
                                                           {"number", 1e12},
                                                           {"style", "1"},
                                                           {"font", 0.5},
                                                           {"imagePNG", 5}};
    for (const auto &[key, value] : wrong)
        EXPECT_FALSE(decoded(project({with(item(), key, value)}))) << key;
    EXPECT_FALSE(decoded(with(project({}), "border", 1)));
    EXPECT_FALSE(decoded(project({"text"})));
    EXPECT_FALSE(ProjectFile::decoded(QJsonDocument(project({item()})).toJson().chopped(9)));
    EXPECT_FALSE(ProjectFile::decoded("[]"));
    EXPECT_FALSE(ProjectFile::decoded({}));
}

TEST(ProjectFile, IsTolerantWhereItMayBe)
{
    const auto read = decoded(
        project({item("hologram"), with(item("arrow"), "glow", 1), with(item(), "rgba", QJsonArray{0, 0, 1}),
                 with(item("image"), "imagePNG", "bm90IGEgcGljdHVyZQ=="),
                 with(item("image"), "imagePNG", "%%%"), with(item(), "style", QJsonValue())}));
    ASSERT_TRUE(read);
    const QList<Annotation> objects = read->objects();
    ASSERT_EQ(objects.size(), 5);
    EXPECT_EQ(objects[0].kind, ToolKind::Arrow);
    EXPECT_EQ(objects[0].style, 0);
    EXPECT_EQ(objects[0].font, 0);
    EXPECT_EQ(objects[1].color, SystemColors::red());
    EXPECT_TRUE(objects[2].image.isNull());
    EXPECT_EQ(objects[2].rect(), QRectF(1, 2, 29.5, 38));
    EXPECT_TRUE(objects[3].image.isNull());

    const auto odd = decoded(
        with(project({with(item(), "rgba", QJsonArray{-5, 0.5, 99, 1})}), "borderRGBA", QJsonArray{1, 1, 1}));
    ASSERT_TRUE(odd);
    EXPECT_EQ(odd->objects()[0].color, QColor::fromRgbF(0, 0.5f, 1));
    EXPECT_EQ(odd->effects().borderColor, SystemColors::red()); // not the grey of a new document
}

TEST(ProjectFile, HoldsTensOfThousandsOfObjectsAndBoundsTheirPictures)
{
    QJsonArray items;
    for (int i = 0; i < 20000; ++i)
        items.append(item(i % 2 ? "step" : "text"));
    const auto read = decoded(project(items));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->objects().size(), 20000);

    // Pictures far larger than their files: as many as there is room for, the rest stays empty.
    QImage wide(20000, 1500, QImage::Format_Grayscale8);
    wide.fill(Qt::white);
    const QString png = ImageFiles::encode(wide, ImageFiles::Type::Png).toBase64();
    QJsonArray pictures;
    for (int i = 0; i < 12; ++i)
        pictures.append(with(item("image"), "imagePNG", png));
    const auto heavy = decoded(project(pictures));
    ASSERT_TRUE(heavy);
    qint64 pixels = 0;
    const QList<Annotation> shown = heavy->objects();
    for (const Annotation &a : shown)
        pixels += qint64(a.image.width()) * a.image.height();
    EXPECT_GT(pixels, 0);
    EXPECT_LE(pixels, 200'000'000);
    // The next save loses none of those that aren't shown, and somebody is told of them.
    EXPECT_TRUE(ProjectFile::unshownPictures(shown).startsWith("6 pasted picture"))
        << ProjectFile::unshownPictures(shown).toStdString();
    const ProjectFile saved = ProjectFile::describing(shown, {});
    EXPECT_EQ(saved.annotations.last().imagePNG, heavy->annotations.last().imagePNG);
    for (const ProjectFile::Item &item : saved.annotations)
        EXPECT_TRUE(item.imagePNG && !item.imagePNG->isEmpty());
    EXPECT_EQ(ProjectFile::unshownPictures({}), "");
}

TEST(ProjectFile, OpensAsEditableElseAsFlatElseAsABlankPicture)
{
    const TemporaryFolder folder;
    const QString path = folder.path("a.png");
    const QString directory = folder.path("project");
    Annotation a;
    a.color = Qt::blue;
    Effects effects;
    effects.rounded = true;
    const auto project = ProjectFile::describing({a}, effects);
    ASSERT_TRUE(
        ProjectSave::write(path, filled({20, 10}, Qt::red), directory, filled({20, 10}, Qt::green), project));

    EditorDocument::Source source = EditorDocument::load(path, directory);
    EXPECT_TRUE(hasColor(source.base, {0, 0}, qRgb(0, 255, 0)));
    EXPECT_EQ(source.annotations.size(), 1);
    EXPECT_TRUE(source.effects.rounded);
    EXPECT_EQ(source.fileURL, QUrl::fromLocalFile(path));
    const EditorDocument document(source);
    EXPECT_FALSE(document.canUndo());

    const auto spoil = [&](const char *name) {
        QFile file(directory + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.resize(file.size() / 2));
    };
    spoil("project.json");
    source = EditorDocument::load(path, directory);
    EXPECT_TRUE(hasColor(source.base, {0, 0}, qRgb(255, 0, 0)));
    EXPECT_TRUE(source.annotations.isEmpty());
    EXPECT_FALSE(source.effects.rounded);

    ASSERT_TRUE(ProjectFile::write(directory, filled({20, 10}, Qt::green), project));
    spoil("base.png");
    source = EditorDocument::load(path, directory);
    EXPECT_TRUE(hasColor(source.base, {0, 0}, qRgb(255, 0, 0)));
    const auto broken = ProjectFile::read(directory);
    ASSERT_FALSE(broken);
    EXPECT_FALSE(broken.error().message.isEmpty());

    ASSERT_TRUE(QFile::remove(path));
    source = EditorDocument::load(path, directory);
    EXPECT_TRUE(source.base.isNull()) << "there is nothing to edit";
    EXPECT_EQ(source.fileURL, QUrl::fromLocalFile(path));
}
