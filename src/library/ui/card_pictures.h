#pragma once

#include <QCache>
#include <QDateTime>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QString>
#include <functional>
#include <vector>

class Movies;
struct LibraryItem;

// The pictures of cards, made on workers from the thumbnails that the Library keeps: what was asked for last
// comes first, and what has scrolled away meanwhile is left out. Main thread only.
class CardPictures : public QObject {
    Q_OBJECT
public:
    // They outlive it.
    explicit CardPictures(Movies &movies, QObject *parent = nullptr) : QObject(parent), m_movies(movies) {}

    struct Card {
        QImage picture;     // null when the file can't be shown
        QSize pixelSize;    // of the file; empty when it isn't known
        double seconds = 0; // that a film takes; 0 when it isn't known
    };
    // For a worker.
    static Card of(Movies &movies, const QString &path, int edge);
    // Whether the card of a path is on the screen.
    std::function<bool(const QString &)> isWanted;

    // What is there already; null while it is being made, of which `ready` tells. `edge` is in device pixels.
    const Card *find(const LibraryItem &item, int edge);

Q_SIGNALS:
    void ready(const QString &path);

private:
    struct Order {
        QString key;
        QString path;
        int edge;
    };
    void start();

    static constexpr int kWorkers = 2;
    static constexpr int kKilobytes = 160 * 1024; // about 700 cards of 256 × 256 … at twice that size

    Movies &m_movies;
    QCache<QString, Card> m_cards{kKilobytes};
    QSet<QString> m_ordered;
    std::vector<Order> m_orders;
    int m_running = 0;
};
