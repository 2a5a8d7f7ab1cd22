#pragma once

#include "app/countdown.h"
#include "steps/guide_exports.h"
#include "steps/steps_guide_model.h"
#include "steps/steps_recorder.h"
#include "steps/steps_session.h"

#include <QObject>
#include <functional>
#include <memory>
#include <vector>

class Activity;
class AppSettings;
class CaptureSettings;
class ClaudeClient;
class EditorDocument;
class EditorWindowController;
class HUDPanel;
class Library;
class NoticeBoard;
class PendingWork;
class StepsReviewWindow;
class TextRecognizer;

// Steps from the shortcut to the review, and guides until their windows close. What is recorded or reviewed
// lies on disk meanwhile; what an earlier process left there is offered.
class StepsFlow : public QObject {
    Q_OBJECT
public:
    struct Parts {
        Activity &activity;
        CaptureSettings &settings;
        AppSettings &prefs;
        Library &library;
        TextRecognizer &recognizer;
        ClaudeClient &claude;
        NoticeBoard &notices;
        PendingWork &pending;
        PressPictures &presses;
        AccessibleElements &elements;
        Screens &screens;
        ScreenPictures &pictures;
        PointerControl &pointer;
        Permissions &permissions;
        Workspace &workspace;
        Sounds &sounds;
        QString folder; // where guides lie on disk
    };
    // How the rest of the program is reached.
    struct Actions {
        std::function<void(const QString &path)> openFile;
        // Null when no editor opened.
        std::function<EditorWindowController *(std::unique_ptr<EditorDocument> document)> openEditor;
        std::function<void()> showLibrary;
        std::function<void(const Error &error)> showError;
    };

    explicit StepsFlow(const Parts &parts, QObject *parent = nullptr);
    ~StepsFlow() override;

    void setActions(Actions actions) { m_actions = std::move(actions); }

    // Starts a session after `delay` seconds, or finishes the one that runs.
    void toggle(int delay);
    // Offers the guides of processes that ended before their time, if there are any.
    void offerUnfinished();
    // The program ends: everything stays on disk.
    void leave();

    // Null when no session runs.
    StepsRecorder *recorder() const { return m_recorder.get(); }
    HUDPanel *hud() const { return m_hud.get(); }
    QList<StepsReviewWindow *> windows() const;

Q_SIGNALS:
    // Seconds left until a session starts; 0 at the end.
    void countedDown(int seconds);
    // What is to stand beside the program's name: " Steps", or nothing.
    void titleChanged(const QString &title);
    void failed(const Error &error);

private:
    struct Review;

    Task<> start(int delay);
    void giveUpStart();
    void finished(const QList<GuideStep> &steps);
    void endSession();
    StepsGuideModel::Parts modelParts();
    void open(const StepsSession::Unfinished &unfinished);
    void discard(const QList<StepsSession::Unfinished> &guides);
    void review(std::unique_ptr<StepsGuideModel> model, std::shared_ptr<StepsSession> session);
    void editStep(Review &review, const StepsGuideModel::StepEdit &edit);
    void settle(Review *review);

    Parts m_parts;
    Actions m_actions;
    GuideExports m_exports;
    std::unique_ptr<Countdown> m_countdown; // while a session is about to start
    std::unique_ptr<StepsRecorder> m_recorder;
    std::unique_ptr<HUDPanel> m_hud;
    bool m_isLeaving = false;
    std::vector<std::unique_ptr<Review>> m_reviews;
};
