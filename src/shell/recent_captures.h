#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QObject>
#include <QPoint>
#include <QStringList>
#include <functional>

class Library;

// The newest captures, as the panel shows them. While nobody looks, a change of the Library costs nothing.
class RecentCaptures : public QObject {
    Q_OBJECT
public:
    static constexpr int kCount = 5;

    explicit RecentCaptures(Library &library, QObject *parent = nullptr);

    // Paths, newest first; at most kCount.
    const QStringList &items() const { return m_items; }
    // Follows the Library from now on, or no longer.
    void setWatched(bool watched);
    // Looks on a worker.
    void reload();

Q_SIGNALS:
    void changed();

private:
    Library &m_library;
    QStringList m_items;
    bool m_isWatched = false;
    bool m_isStale = true;
    int m_look = 0; // only what the last one found counts
};

// One capture, small: a click opens it, it can be dragged out, and a menu has the rest.
class RecentThumb : public QAbstractButton {
    Q_OBJECT
public:
    explicit RecentThumb(const QString &path, QWidget *parent = nullptr);

    const QString &path() const { return m_path; }
    QSize sizeHint() const override;

Q_SIGNALS:
    // The menu is asked for, at a global point.
    void menuWanted(const QPoint &at);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void load();

    QString m_path;
    QImage m_image;
    QPoint m_pressedAt;
};
