#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QRect>
#include <QRegion>

class QWindow;

// Where windows of this program have been a moment ago. When one hides or moves, the screen shows it a little
// longer: until the compositing manager has painted its next frame, or faded it out, or the programs below
// have repainted. Watches the toolkit's windows from its main thread; may be asked from any.
class OwnWindowTrails : public QObject {
    Q_OBJECT
public:
    OwnWindowTrails();

    // Native pixels of the desktop, roughly: frames around windows aren't counted.
    QRegion region() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    struct Trail {
        QRect rect;
        qint64 left = 0; // when, by m_clock
    };

    void update(const QWindow *window);
    void leave(const QWindow *window);
    void addTrail(const QRect &rect);

    QElapsedTimer m_clock;
    QHash<const QWindow *, QRect> m_shown;
    mutable QMutex m_mutex;
    QList<Trail> m_trails;
};
