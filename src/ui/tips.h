#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTimer>
#include <memory>

class AppSettings;
class QWidget;

// What a tip says of a control. The shortcut is in its stored form ("⇧⌘Z").
struct TipContent {
    QString title;
    QString detail;
    QString shortcut;

    bool operator==(const TipContent &) const = default;
};

// Where a bubble of `size` goes for a control at `anchor` on a screen whose usable part is `visible` (global
// points, y down): centred 6 under it, or 6 above it where it would come within 4 of the bottom; 6 inside
// left and right.
QPointF tipPosition(const QRectF &anchor, const QRectF &visible, const QSizeF &size);

// Shows one bubble at a time over the controls of the program: after 450 ms of hovering, or after 40 ms when
// another tip is up or was until 0.6 s ago. Any press, key or scroll hides it.
class TipCenter : public QObject {
    Q_OBJECT
public:
    // Tips can be switched off in the settings, which may be null.
    explicit TipCenter(const AppSettings *settings, QObject *parent = nullptr);
    ~TipCenter() override;

    // Attaches a tip to a control, in place of an earlier one. The control's name and description for
    // assistive technology come along where it has none.
    void attach(QWidget *control, const TipContent &content);
    // The same for code that has no centre at hand: the content is kept by the control, and whichever centre
    // lives shows it.
    static void describe(QWidget *control, const TipContent &content);
    static TipContent content(const QWidget *control);

    void hide();
    bool isShown() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void hover(QWidget *control);
    void show();

    class Bubble;
    const AppSettings *m_settings;
    std::unique_ptr<Bubble> m_bubble;
    QPointer<QWidget> m_owner;
    QTimer m_pending;
    QElapsedTimer m_lastHidden;
};
