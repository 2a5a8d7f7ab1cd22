#pragma once

#include "settings/hot_key_action.h"

#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

class NoticeBoard;

// The link that does what an action of the launcher does ("capture", "screen", "record", "library").
std::optional<QString> launcherAction(const QString &action);

// Carries out command links and opens what a later start hands over.
class CommandLinks {
public:
    struct Actions {
        std::function<void(HotKeyAction)> perform;
        std::function<void()> captureWithCurrentMode;
        std::function<void()> captureRegion;
        // False when there is no preset of that name.
        std::function<bool(const QString &name)> runPreset;
        std::function<void(const QString &path)> openFile;
    };

    CommandLinks(Actions actions, NoticeBoard &notices) : m_actions(std::move(actions)), m_notices(notices) {}

    // A link of ours, a "file:" address, or a path.
    void open(const QString &word);
    void handle(const QUrl &link);

private:
    void perform(HotKeyAction action) const { m_actions.perform(action); }

    Actions m_actions;
    NoticeBoard &m_notices;
};
