#pragma once

#include "platform/hot_keys.h"

#include <QHash>
#include <QSet>

// Shortcuts that a test presses itself.
class FakeHotKeys : public HotKeys {
public:
    using Combination = std::pair<int, int>; // key code, modifiers

    Result<void> registerKey(quint32 id, int keyCode, int modifiers) override
    {
        const Combination combination(keyCode, modifiers);
        if (takenElsewhere.contains(combination) || registered.contains(combination))
            return fail(Error::Kind::Unavailable, QStringLiteral("Taken."));
        registered.insert(combination, id);
        return {};
    }
    void unregisterAll() override { registered.clear(); }

    // As if the user had typed it; false when nobody listens to it.
    bool press(int keyCode, int modifiers)
    {
        const auto found = registered.constFind({keyCode, modifiers});
        if (found == registered.constEnd())
            return false;
        Q_EMIT pressed(*found);
        return true;
    }

    QHash<Combination, quint32> registered;
    QSet<Combination> takenElsewhere;
};
