#include "library/ui/card_pictures.h"

#include "base/async.h"
#include "document/image_files.h"
#include "library/film_thumbnails.h"
#include "library/library.h"
#include "platform/movies.h"

namespace {
constexpr int kBucket = 256; // pixels; sizes within one share a thumbnail on disk
}

const CardPictures::Card *CardPictures::find(const LibraryItem &item, int edge)
{
    const int bucket = (edge + kBucket - 1) / kBucket * kBucket;
    const QString key = item.path + QLatin1Char('\n') + QString::number(item.date.toMSecsSinceEpoch()) +
                        QLatin1Char(' ') + QString::number(item.bytes) + QLatin1Char(' ') +
                        QString::number(bucket);
    if (const Card *card = m_cards.object(key))
        return card;
    if (!m_ordered.contains(key)) {
        m_ordered.insert(key);
        m_orders.push_back({key, item.path, bucket});
        start();
    }
    return nullptr;
}

CardPictures::Card CardPictures::of(Movies &movies, const QString &path, int edge)
{
    Card card;
    card.picture = FilmThumbnails::ofAny(movies, path, edge).value_or(QImage());
    if (!Library::isVideo(path)) {
        card.pixelSize = ImageFiles::pixelSize(path).value_or(QSize());
    } else if (const auto info = movies.info(path)) {
        card.pixelSize = info->size;
        card.seconds = info->duration;
    }
    return card;
}

void CardPictures::start()
{
    while (m_running < kWorkers && !m_orders.empty()) {
        const Order order = std::move(m_orders.back());
        m_orders.pop_back();
        if (isWanted && !isWanted(order.path)) {
            m_ordered.remove(order.key);
            continue;
        }
        ++m_running;
        const auto work = [movies = &m_movies, path = order.path, edge = order.edge] {
            return of(*movies, path, edge);
        };
        whenDone(runInBackground(work), this, [this, order](Card card) {
            --m_running;
            m_ordered.remove(order.key);
            const auto cost = std::max<qsizetype>(1, card.picture.sizeInBytes() / 1024);
            m_cards.insert(order.key, new Card(std::move(card)), cost);
            Q_EMIT ready(order.path);
            start();
        });
    }
}
