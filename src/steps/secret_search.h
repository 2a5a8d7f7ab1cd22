#pragma once

#include "base/result.h"
#include "steps/shared_secrets.h"
#include "steps/step_picture.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QRectF>
#include <QUuid>

class TextRecognizer;

// Looks for private text in the pictures of a guide, one after the other, and then for what is left of it in
// pictures where something covers it. A picture that couldn't be read counts as one that may show anything.
// Main thread only.
class SecretSearch : public QObject {
    Q_OBJECT
public:
    explicit SecretSearch(TextRecognizer &recognizer, QObject *parent = nullptr);

    // To be searched, unless it has been.
    void add(const QUuid &step, const StepPicture &picture);
    // Not worth searching any more, unless it comes back.
    void drop(const QUuid &step);
    // Those that failed, once more.
    void retry();

    bool isUnderWay() const { return !m_current.isNull() || !m_waiting.isEmpty(); }
    bool hasFailed(const QUuid &step) const { return m_places.value(step).state == State::Failed; }

Q_SIGNALS:
    // Fractions of the picture, origin at the lower left. Once more when other pictures told of more.
    void found(const QUuid &step, const QList<QRectF> &boxes);
    // Nothing is left to be searched.
    void ended();

private:
    enum class State { Unknown, Waiting, Searched, Failed };
    struct Place {
        State state = State::Unknown;
        StepPicture picture;
        QList<QRectF> boxes;
        bool isCompared = false; // with all that is known by now
    };

    void wake();
    void searchNext();
    void searched(const QImage &image, const Result<QList<QRectF>> &boxes);
    bool compareNext();

    TextRecognizer &m_recognizer;
    QHash<QUuid, Place> m_places;
    QList<QUuid> m_waiting;
    SharedSecrets m_secrets;
    QUuid m_current;
};
