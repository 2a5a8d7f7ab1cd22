#pragma once

#include "settings/capture_settings.h"

#include <QList>
#include <QWidget>
#include <functional>

class AccentButton;
class BarButton;
class CapturePresetStore;
class NoteLabel;
class Library;
class NoticeBoard;
class OptionButton;
class Pasteboard;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class RecentCaptures;
class SegmentedPicker;
class Workspace;
struct CapturePreset;

// What the panel asks of the program. Each is called after the panel has closed, so that it isn't in the picture.
struct CapturePanelActions {
    std::function<void()> capture;
    std::function<void()> openLibrary;
    std::function<void()> openImage;
    std::function<void(const QString &path)> openItem;
    std::function<void(const QString &path)> pinItem;
    std::function<void()> openSettings;
    std::function<void(const CapturePreset &)> runPreset;
    std::function<void()> savePreset;
    std::function<void()> openPermissions;
    std::function<void()> quit;
};

// Where a capture is chosen: its mode, its options, the presets, and what was captured last. It holds no logic of
// captures.
class CapturePanel : public QWidget {
    Q_OBJECT
public:
    struct Parts {
        CaptureSettings &settings;
        CapturePresetStore &presets;
        Library &library;
        Pasteboard &pasteboard;
        Workspace &workspace;
        NoticeBoard &notices;
    };
    static constexpr int kWidth = 340; // points

    CapturePanel(Parts parts, CapturePanelActions actions, QWidget *parent = nullptr);
    ~CapturePanel() override;

    // While a film is taken the button stops it.
    void setRecording(bool recording);
    // Modes that can't run in this session aren't offered.
    void setAvailable(const std::function<bool(CaptureMode)> &isAvailable);

Q_SIGNALS:
    // An action is about to be called: whoever shows the panel takes it off the screen.
    void leaving();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QWidget *makeHeader();
    QWidget *makeFooter();
    QWidget *makeStripHeading(const QString &title, const QString &action, const QString &tip,
                              const std::function<void()> &call);
    void showMode();
    void showChips();
    void showPresets();
    void showRecent();
    void openMenu(const QString &path, const QPoint &at);
    void copy(const QString &path);
    void leaveFor(const std::function<void()> &action);

    Parts m_parts;
    CapturePanelActions m_actions;
    bool m_isRecording = false;
    SegmentedPicker *m_modes;
    NoteLabel *m_detail;
    QWidget *m_chips;
    QGridLayout *m_chipGrid;
    std::optional<CaptureMode> m_shownMode; // whose chips these are
    QList<OptionButton *> m_buttons;
    AccentButton *m_capture;
    QWidget *m_presets;
    QWidget *m_recentHeading = nullptr;
    QWidget *m_recent;
    QHBoxLayout *m_recentLine;
    RecentCaptures *m_captures;
};
