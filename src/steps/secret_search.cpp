#include "steps/secret_search.h"

#include "base/async.h"
#include "base/log.h"
#include "services/text_recognizer.h"

SecretSearch::SecretSearch(TextRecognizer &recognizer, QObject *parent)
    : QObject(parent), m_recognizer(recognizer)
{}

void SecretSearch::add(const QUuid &step, const StepPicture &picture)
{
    Place &place = m_places[step];
    if (place.state != State::Unknown)
        return;
    place.state = State::Waiting;
    place.picture = picture;
    m_waiting.append(step);
    wake();
}

void SecretSearch::drop(const QUuid &step)
{
    if (m_waiting.removeOne(step))
        m_places.remove(step);
    // The one under way goes on: it may be brought back by then.
    wake();
}

void SecretSearch::retry()
{
    for (auto place = m_places.begin(); place != m_places.end(); ++place) {
        if (place->state == State::Failed) {
            place->state = State::Waiting;
            m_waiting.append(place.key());
        }
    }
    wake();
}

// From the event loop: whoever adds the first may want to add more, or to listen.
void SecretSearch::wake()
{
    QMetaObject::invokeMethod(this, &SecretSearch::searchNext, Qt::QueuedConnection);
}

void SecretSearch::searchNext()
{
    if (!m_current.isNull())
        return;
    if (m_waiting.isEmpty()) {
        if (!compareNext())
            Q_EMIT ended();
        return;
    }
    m_current = m_waiting.takeFirst();
    const StepPicture picture = m_places.value(m_current).picture;
    whenDone(runInBackground([picture] { return picture.image(); }), this, [this](const QImage &image) {
        if (image.isNull())
            return searched(image, fail({}, QStringLiteral("the picture can't be read")));
        whenDone(m_recognizer.boxes(image, TextRecognizer::Boxes::Sensitive), this,
                 [this, image](const Result<QList<QRectF>> &boxes) { searched(image, boxes); });
    });
}

void SecretSearch::searched(const QImage &image, const Result<QList<QRectF>> &boxes)
{
    const QUuid step = std::exchange(m_current, {});
    Place &place = m_places[step];
    place.state = boxes ? State::Searched : State::Failed;
    if (boxes) {
        place.boxes = *boxes;
        m_secrets.learn(image, *boxes);
        for (Place &each : m_places)
            each.isCompared = each.isCompared && boxes->isEmpty();
        Q_EMIT found(step, *boxes);
    } else {
        Log::error(QStringLiteral("Steps: a step could not be searched for private text"), boxes.error());
    }
    searchNext();
}

// False when there is nothing to compare any more.
bool SecretSearch::compareNext()
{
    const auto next = std::ranges::find_if(m_places, [this](const Place &place) {
        return place.state == State::Searched && !place.isCompared &&
               m_secrets.concern(place.picture.size(), place.boxes);
    });
    if (next == m_places.end())
        return false;
    next->isCompared = true;
    m_current = next.key();
    whenDone(runInBackground([picture = next->picture, secrets = m_secrets, own = next->boxes] {
                 return secrets.remains(picture.image(), own);
             }),
             this, [this](const QList<QRectF> &more) {
                 const QUuid step = std::exchange(m_current, {});
                 QList<QRectF> &boxes = m_places[step].boxes;
                 boxes += more;
                 if (!more.isEmpty())
                     Q_EMIT found(step, boxes);
                 searchNext();
             });
    return true;
}
