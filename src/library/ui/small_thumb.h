#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

class Movies;

// The thumbnail of a file in a list, with a mark under it.
class SmallThumb : public QWidget {
    Q_OBJECT
public:
    enum class Mark { None, Keep, Extra };
    // Loads its picture on a worker. `size` in points; the movies outlive it.
    SmallThumb(Movies &movies, const QString &path, QSize size, Mark mark = Mark::None,
               QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QSize m_size;
    Mark m_mark;
    bool m_isVideo;
    QImage m_picture;
};
