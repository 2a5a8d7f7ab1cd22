#pragma once

#include "document/image_files.h"
#include "editor_stage.h"
#include "support/pictures.h"

#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

// One editor's window among the parts of the program that it uses.
class EditorWindowTest : public testing::Test {
protected:
    QString put(const QString &name)
    {
        const QString path = stage.inLibrary(name);
        EXPECT_TRUE(ImageFiles::write(filled({120, 80}), path));
        return path;
    }
    static void addBox(EditorDocument &document)
    {
        Annotation box = document.makeAnnotation(ToolKind::Rectangle, {10, 10});
        box.end = {60, 60};
        box.style = 2;
        document.add(box);
    }
    static void save(EditorWindowController &editor)
    {
        QSignalSpy ended(&editor.saving(), &DocumentSaving::ended);
        editor.saving().save();
        ASSERT_TRUE(ended.count() || ended.wait());
    }
    bool waitForNotice(const QString &text)
    {
        return QTest::qWaitFor([&] {
            return std::any_of(stage.notices.begin(), stage.notices.end(),
                               [&text](const Notice &notice) { return notice.text == text; });
        });
    }
    QWidget *sheet(EditorWindowController &editor, const QString &name) const
    {
        return editor.window().findChild<QWidget *>(name);
    }

    EditorStage stage;
};
