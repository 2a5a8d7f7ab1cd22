#pragma once

#include <QElapsedTimer>
#include <QPixmap>
#include <QRect>
#include <QWidget>
#include <memory>

class InputMonitor;
class InputMonitors;
class Workspace;
struct PointerPress;

// Where a panel of `size` goes beside an icon at `anchor`, on a screen whose usable part is `visible` (global
// points, y down): 6 under it and centred, or, in the lower half of the screen, 6 above it; 8 from the sides.
// The edge towards the icon stays where it is when the panel grows.
struct PanelPlacement {
    QPoint topLeft;
    bool growsUp = false;
};
PanelPlacement panelPlacement(const QRect &anchor, const QRect &visible, const QSize &size);

// The small window that opens at the tray icon, or at the pointer. It takes the keyboard, and closes for Esc,
// for a click outside of it, and when another program comes to the front.
class MenuBarPanel : public QWidget {
    Q_OBJECT
public:
    MenuBarPanel(std::unique_ptr<QWidget> content, InputMonitors &monitors, Workspace &workspace);
    ~MenuBarPanel() override;

    // Beside the icon; an empty rectangle stands for the pointer.
    void showAt(const QRect &anchor);
    // Does what the first opening would do, so that it is as quick as every other: windows, fonts and
    // pictures.
    void warmUp();
    // The reason goes to the log.
    void dismiss(const QString &reason);
    // Closed less than 0.3 seconds ago: a click on the icon was the one that closed it.
    bool hasJustClosed() const;
    // The part of the window that is the panel itself, without its shadow; global points.
    QRect cardGeometry() const;

Q_SIGNALS:
    void opened();
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void place();
    void listen();
    void stopListening();
    void pressedAnywhere(const PointerPress &press);

    InputMonitors &m_monitors;
    Workspace &m_workspace;
    QWidget *m_content;
    QMargins m_shadow; // room around the card; none where windows aren't mixed
    QRect m_anchor;
    std::unique_ptr<InputMonitor> m_monitor;
    bool m_isOpen = false;
    QElapsedTimer m_sinceClosed;
    QPixmap m_ground; // shadow and card
    bool m_groundIsDark = false;
};
