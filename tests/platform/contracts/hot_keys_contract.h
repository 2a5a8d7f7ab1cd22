#pragma once

#include "platform/hot_keys.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

class HotKeysWorld {
public:
    virtual ~HotKeysWorld() = default;
    virtual HotKeys &hotKeys() = 0;
    // As if the user typed ⌃, ⇧ and this key ("f", "space"; its key code beside it).
    virtual void type(const QString &key, int keyCode) = 0;
    // Another program takes ⌃, ⇧ and the key.
    virtual void takeElsewhere(int keyCode) = 0;
    virtual bool eventually(const std::function<bool()> &condition) = 0;
};

class HotKeysContract : public testing::TestWithParam<std::function<std::unique_ptr<HotKeysWorld>()>> {
protected:
    HotKeysContract()
    {
        QObject::connect(&m_hotKeys, &HotKeys::pressed, &m_hotKeys,
                         [this](quint32 id) { m_pressed.append(id); });
    }

    const std::unique_ptr<HotKeysWorld> m_world = GetParam()();
    HotKeys &m_hotKeys = m_world->hotKeys();
    QList<quint32> m_pressed;
};
