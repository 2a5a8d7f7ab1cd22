#pragma once

#include "base/async.h"
#include "platform/accessible_elements.h"
#include "platform/press_pictures.h"

#include <QHash>
#include <vector>

// Presses as a test makes them.
class FakePressPictures : public PressPictures {
public:
    Result<void> start() override
    {
        if (failure)
            return std::unexpected(*failure);
        isWatching = true;
        return {};
    }
    void stop() override { isWatching = false; }
    void setWantsPictures(bool wanted) override { wantsPictures = wanted; }
    void press(const Press &press)
    {
        if (isWatching)
            Q_EMIT pressed(press);
    }

    std::optional<Error> failure;
    bool isWatching = false;
    bool wantsPictures = true;
};

// Answers every place with the same element, at once or only when told.
class FakeAccessibleElements : public AccessibleElements {
public:
    bool isAvailable() const override { return available; }
    void prepare() override { isPrepared = true; }
    void rest() override { isPrepared = false; }
    QFuture<std::optional<AccessibleElement>> elementAt(const ClickTarget &target) override
    {
        asked.append(target);
        if (!isHeld)
            return readyFuture(answer);
        QPromise<std::optional<AccessibleElement>> promise;
        promise.start();
        const auto future = promise.future();
        m_waiting.push_back(std::move(promise));
        return future;
    }
    // Answers the question that came as number `index` of those that wait.
    void deliver(std::size_t index)
    {
        m_waiting[index].addResult(answer);
        m_waiting[index].finish();
    }

    bool available = true;
    std::optional<AccessibleElement> answer;
    bool isHeld = false;
    bool isPrepared = false;
    QList<ClickTarget> asked;

private:
    std::vector<QPromise<std::optional<AccessibleElement>>> m_waiting;
};
