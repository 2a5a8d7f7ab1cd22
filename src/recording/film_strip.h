#pragma once

#include "platform/movies.h"

#include <QImage>
#include <QObject>
#include <memory>

class QThreadPool;

// Small pictures of a film, evenly spread over it, made one after the other on one of `threads`. Main thread.
class FilmStrip : public QObject {
    Q_OBJECT
public:
    FilmStrip(Movies &movies, QThreadPool &threads, QObject *parent = nullptr);
    ~FilmStrip() override;

    // The film in so many parts, the picture of the middle of each, at most so large in pixels. Ends what was
    // under way; pictures of before stay until new ones come.
    void make(const QString &path, int count, QSize bounds);
    const QList<QImage> &pictures() const { return m_pictures; }

Q_SIGNALS:
    void changed();

private:
    struct Work;

    Movies &m_movies;
    QThreadPool &m_threads;
    QList<QImage> m_pictures;
    std::shared_ptr<Work> m_work;
};
