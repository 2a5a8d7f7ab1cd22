#pragma once

#include "base/notice.h"
#include "document/editor_document.h"
#include "editor/editor_window_controller.h"
#include "editor/style_presets.h"
#include "fakes/fake_platform.h"
#include "library/library.h"
#include "pins/pins.h"
#include "services/claude_client.h"
#include "services/text_recognizer.h"
#include "services/uploader.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/temporary_folder.h"

#include <memory>

// All that an editor stands on, on a machine of fakes with a Library folder of its own.
struct EditorStage {
    EditorStage()
    {
        settings.setSaveFolder(home.path("Shots"));
        library.ensureDirectory();
        QObject::connect(&board, &NoticeBoard::posted, &board,
                         [this](const Notice &notice) { notices.append(notice); });
    }

    ~EditorStage() { DraftKeeper::finishAll(); }

    EditorPorts ports()
    {
        return {library,
                settings,
                fakes.pasteboard,
                board,
                fakes.workspace,
                recognizer,
                claude,
                uploader,
                presets,
                pins,
                clock,
                pending,
                [this] { ++settingsOpened; },
                home.path("State/drafts")};
    }
    std::unique_ptr<EditorWindowController> open(const QImage &image, const QString &path = {})
    {
        return std::make_unique<EditorWindowController>(
            std::make_unique<EditorDocument>(image, path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path)),
            ports());
    }
    std::unique_ptr<EditorWindowController> open(const QString &libraryPath)
    {
        return std::make_unique<EditorWindowController>(
            std::make_unique<EditorDocument>(
                EditorDocument::load(libraryPath, library.projectDirectory(libraryPath))),
            ports());
    }
    QString inLibrary(const QString &name) const { return home.path("Shots/" + name); }

    class StepClock : public Clock {
    public:
        // Each look at it is a second later, as saves of a user are.
        QDateTime now() const override { return time = time.addSecs(1); }
        mutable QDateTime time{QDate(2026, 3, 14), QTime(9, 41, 7)};
    };

    // The fake's answers, and the picture that was read.
    struct SeeingEngine : TextEngine {
        explicit SeeingEngine(FakeTextEngine &fake) : fake(fake) {}
        QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                         const TextLanguages &languages) override
        {
            seen = image;
            return fake.recognize(image, languages);
        }
        FakeTextEngine &fake;
        QImage seen;
    };

    TemporaryFolder home;
    FakePlatform fakes{home.path()};
    SeeingEngine reader{fakes.text};
    NoticeBoard board;
    Defaults defaults{{}};
    AppSettings settings{defaults, fakes.secrets, fakes.loginItem, fakes.paths, board};
    StepClock clock;
    Library library{settings, fakes.trash, clock};
    TextRecognizer recognizer{reader, fakes.faces};
    ClaudeClient claude{fakes.http, settings};
    Uploader uploader{fakes.http, settings};
    PresetStore presets{defaults};
    Pins pins{fakes.pasteboard, board};
    PendingWork pending;
    QList<Notice> notices;
    int settingsOpened = 0;
};
