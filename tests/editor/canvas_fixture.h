#pragma once

#include "base/notice.h"
#include "document/editor_document.h"
#include "editor/canvas_interaction.h"
#include "editor/editor_session.h"
#include "fakes/fake_platform.h"
#include "support/pictures.h"
#include "support/printers.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

// A canvas without a window: events go straight into the interaction, and what it asks of a view is recorded.
// The view is as large as the picture plus the margins, at one device pixel a point, so a view position is an
// image position moved by `origin()`.
class CanvasTest : public testing::Test, protected CanvasHost {
protected:
    static constexpr int width = 800, height = 600;

    CanvasTest() { resize({width + 56, height + 56}); }

    static QImage picture()
    {
        QImage image = filled({width, height});
        image.setPixelColor(10, 20, QColor(0x12, 0xab, 0xef));
        return image;
    }
    void resize(const QSizeF &size, double backing = 1) { canvas.setView(size, backing); }
    QPointF at(double x, double y) const { return canvas.viewport().toView(QPointF(x, y)); }

    void press(double x, double y, Qt::KeyboardModifiers modifiers = {})
    {
        canvas.press({at(x, y), modifiers, 1});
    }
    void drag(double x, double y, Qt::KeyboardModifiers modifiers = {}) { canvas.drag(at(x, y), modifiers); }
    void release(double x, double y) { canvas.release(at(x, y)); }
    void stroke(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {})
    {
        press(from.x(), from.y(), modifiers);
        drag((from.x() + to.x()) / 2, (from.y() + to.y()) / 2, modifiers);
        drag(to.x(), to.y(), modifiers);
        release(to.x(), to.y());
    }
    void click(double x, double y)
    {
        press(x, y);
        release(x, y);
    }
    void doubleClick(double x, double y)
    {
        click(x, y);
        canvas.press({at(x, y), {}, 2});
        release(x, y);
    }
    bool key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        return canvas.keyPress({key, modifiers, false});
    }
    void use(ToolKind tool) { document.setTool(tool); }
    const QList<Annotation> &objects() const { return document.annotations(); }
    Annotation only() const
    {
        EXPECT_EQ(objects().size(), 1);
        return objects().value(0);
    }
    int undoSteps()
    {
        int steps = 0;
        while (document.canUndo()) {
            document.undo();
            ++steps;
        }
        return steps;
    }
    void writeHello()
    {
        use(ToolKind::Text);
        click(50, 60);
        typed = "Hello";
        canvas.commitText();
    }
    Annotation addBox(const QRectF &rect)
    {
        Annotation box = document.makeAnnotation(ToolKind::Rectangle, rect.topLeft());
        box.end = rect.bottomRight();
        document.add(box);
        return box;
    }

    // Host
    void canvasChanged() override {}
    void updateCursor() override {}
    void openTextField(const QString &text) override
    {
        fieldIsOpen = true;
        typed = text;
    }
    QString closeTextField() override
    {
        fieldIsOpen = false;
        return typed;
    }
    void copyText(const QRect &area) override { textAreas.append(area); }
    void notify(const QString &text, const QString &symbol) override { notices.append({text, symbol}); }
    void announce(const QString &words) override { announced.append(words); }
    std::optional<QPointF> pointer() const override { return pointerPosition; }

    TemporaryFolder home;
    FakePlatform fakes{home.path()};
    EditorDocument document{picture()};
    EditorSession session;
    CanvasInteraction canvas{document, session, fakes.pasteboard, *this};

    bool fieldIsOpen = false;
    QString typed;
    QList<QRect> textAreas;
    QList<Notice> notices;
    QStringList announced;
    std::optional<QPointF> pointerPosition;
};
