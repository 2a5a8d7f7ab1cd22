#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor/editor_view.h"
#include "editor/editor_stage.h"
#include "ui/appearance.h"
#include "ui/controls.h"
#include "ui/tips.h"
#include "ui/toast.h"

#include <QApplication>

// Shows an editor in one of its states, to be looked at: editor_gallery PICTURE [STATE].

namespace {

Annotation object(EditorDocument &document, ToolKind kind, QPointF start, QPointF end, QColor color,
                  int style = 0)
{
    document.setSelectedID({});
    document.setColor(color);
    Annotation made = document.makeAnnotation(kind, start);
    made.end = end;
    made.style = style;
    return made;
}

void addObjects(EditorDocument &document)
{
    const QSizeF s = document.base().size();
    const auto at = [&s](double x, double y) { return QPointF(x * s.width(), y * s.height()); };
    const QColor red(255, 59, 48), blue(0, 122, 255), purple(115, 97, 250), yellow(255, 204, 0),
        green(40, 205, 65);
    document.add(object(document, ToolKind::Highlight, at(.12, .18), at(.42, .23), yellow));
    document.add(object(document, ToolKind::Blur, at(.55, .62), at(.8, .7), red));
    document.add(object(document, ToolKind::Rectangle, at(.1, .35), at(.34, .52), red));
    document.add(object(document, ToolKind::Arrow, at(.55, .5), at(.36, .44), red));
    auto step = object(document, ToolKind::Step, at(.1, .6), at(.1, .6), purple);
    document.add(step);
    step = object(document, ToolKind::Step, at(.1, .7), at(.1, .7), purple);
    step.number = 2;
    document.add(step);
    document.add(object(document, ToolKind::Ellipse, at(.6, .12), at(.78, .26), green));
    document.add(object(document, ToolKind::Measure, at(.12, .86), at(.5, .86), blue));
    auto text = object(document, ToolKind::Text, at(.2, .62), at(.2, .62), red, 1);
    text.text = "Check this first";
    document.add(text);
    auto bubble = object(document, ToolKind::Callout, at(.62, .32), at(.86, .48), blue);
    bubble.text = "The amount is due within thirty days";
    bubble.points = {at(.56, .6)};
    document.add(bubble);
}

// For a page of 1920 pixels with a row of cards above a table.
void addTour(EditorDocument &document)
{
    document.applyCrop(QRectF(0, 0, 1920, 760));
    const QColor red(255, 59, 48), blue(0, 122, 255), purple(115, 97, 250), yellow(255, 204, 0),
        green(40, 205, 65);
    document.setLineWidth(5);
    for (int row = 0; row < 15; ++row)
        document.add(object(document, ToolKind::Blur, {352, 206.0 + row * 34}, {566, 232.0 + row * 34}, red));
    document.add(object(document, ToolKind::Highlight, {1230, 410}, {1320, 436}, yellow));
    document.add(object(document, ToolKind::Ellipse, {30, 62}, {190, 142}, green));
    document.add(object(document, ToolKind::Rectangle, {1436, 58}, {1896, 152}, red));
    int number = 0;
    for (int row : {0, 3, 6}) {
        auto step =
            object(document, ToolKind::Step, {1672, 219.0 + row * 34}, {1672, 219.0 + row * 34}, purple);
        step.number = ++number;
        document.add(step);
    }
    document.add(object(document, ToolKind::Arrow, {1050, 600}, {1228, 432}, red, 3));
    auto label = object(document, ToolKind::Text, {700, 590}, {700, 590}, red, 1);
    label.text = "Was this one paid twice?";
    document.add(label);
    auto bubble = object(document, ToolKind::Callout, {1010, 200}, {1330, 300}, blue);
    bubble.text = "Call these first";
    bubble.points = {{1434, 130}};
    document.add(bubble);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Appearance appearance(application);
    EditorStage stage;
    ToastPresenter toasts(stage.board);
    TipCenter tips(nullptr);
    const QString state = application.arguments().value(2);
    const auto image = ImageFiles::read(application.arguments().value(1));
    if (!image)
        return 1;
    const QString path = stage.inLibrary("Quarterly invoice.png");
    if (!ImageFiles::write(*image, path))
        return 1;
    auto editor = stage.open(path);
    EditorDocument &document = editor->document();
    editor->onClose = [](EditorWindowController *) { QCoreApplication::quit(); };
    if (state.startsWith("tour"))
        addTour(document);
    else if (state != "empty")
        addObjects(document);
    editor->show();
    document.setSelectedID({});
    EditorSession::WorkToken work;

    QTimer::singleShot(300, editor.get(), [&] {
        if (state == "tour-palette")
            editor->run(EditorCommand::CommandPalette);
        if (state == "tour-backdrop")
            document.setEffects({false, Qt::white, true, true, true, 0});
        if (state == "selected" || state == "tour")
            editor->canvas().interaction().select(document.annotations().last().id);
        if (state == "text") {
            document.setTool(ToolKind::Text);
            editor->canvas().interaction().press(
                {editor->canvas().interaction().viewport().toView(QPointF(200, 500)), {}, 1});
        }
        if (state == "palette")
            editor->run(EditorCommand::CommandPalette);
        if (state == "error")
            editor->reading().runAI(ClaudeClient::Action::Describe);
        if (state == "preset")
            editor->promptSavePreset();
        if (state == "ai")
            editor->session().showResult({QUuid::createUuid(), "Alt Text",
                                          "An invoice of March with three lines.\nThe total is marked."});
        if (state == "backdrop") {
            document.setEffects({true, Qt::white, true, true, true, 1});
            document.setTool(ToolKind::Select);
        }
        if (state == "zoom")
            editor->canvas().interaction().setZoom(3);
        if (state == "busy")
            work = editor->session().beginWork();
        if (state == "stamp")
            document.setTool(ToolKind::Stamp);
        if (state == "crop" || state == "cutout") {
            document.setTool(state == "crop" ? ToolKind::Crop : ToolKind::Cutout);
            auto &canvas = editor->canvas().interaction();
            canvas.press({QPointF(500, 200), {}, 1});
            canvas.drag(QPointF(900, 420), {});
        }
        if (state == "color") {
            document.chooseTool(ToolKind::Rectangle);
            editor->window().findChild<BarButton *>("moreColors")->click();
        }
        if (state == "draft")
            static_cast<EditorView &>(editor->window()).tellOfDraft();
        if (state == "pin")
            editor->run(EditorCommand::Pin);
        for (const char *menu : {"menu-Effects", "menu-Redact", "menu-Share", "presets", "font", "stamp"}) {
            if (state == QString("open:") + menu) {
                document.setTool(QString(menu) == "font" ? ToolKind::Text : ToolKind::Stamp);
                editor->window().findChild<BarButton *>(menu)->click();
            }
        }
        if (state == "saveas")
            editor->saving().saveAs();
        if (state == "share")
            editor->sharing().share();
        if (state == "colors") {
            for (auto *button : editor->window().findChildren<BarButton *>()) {
                if (button->text() == "More Colors")
                    button->click();
            }
        }
        if (state == "saved")
            editor->saving().save();
    });
    return application.exec();
}
