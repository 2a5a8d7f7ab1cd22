#include "steps/secret_search.h"

#include "base/async.h"
#include "base/log.h"
#include "services/text_recognizer.h"

SecretSearch::SecretSearch(TextRecognizer &recognizer, QObject *parent)
    : QObject(parent), m_recognizer(recognizer)
{}

bool SecretSearch::isSettled(const QUuid &step) const
{
    const State state = m_places.value(step).state;
    return state == State::Searched || state == State::Failed;
}

void SecretSearch::add(const QUuid &step, const StepPicture &picture)
{
    Place &place = m_places[step];
    if (place.state != State::Unknown)
        return;
    place = {State::Waiting, picture};
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

void SecretSearch::hurry(const QUuid &step)
{
    if (m_waiting.removeOne(step))
        m_waiting.prepend(step);
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
        Q_EMIT ended();
        return;
    }
    m_current = m_waiting.takeFirst();
    const StepPicture picture = m_places.value(m_current).picture;
    whenDone(runInBackground([picture] { return picture.image(); }), this, [this](const QImage &image) {
        if (image.isNull())
            return searched(fail({}, QStringLiteral("the picture can't be read")));
        whenDone(m_recognizer.boxes(image, TextRecognizer::Boxes::Sensitive), this,
                 [this](const Result<QList<QRectF>> &boxes) { searched(boxes); });
    });
}

void SecretSearch::searched(const Result<QList<QRectF>> &boxes)
{
    const QUuid step = std::exchange(m_current, {});
    m_places[step].state = boxes ? State::Searched : State::Failed;
    if (boxes) {
        Q_EMIT found(step, *boxes);
    } else {
        Log::error(QStringLiteral("Steps: a step could not be searched for private text"), boxes.error());
        Q_EMIT failed(step);
    }
    searchNext();
}
