#pragma once

#include "platform/hot_keys.h"
#include "platform/pointer_control.h"

// A pointer that stays where it is.
class NullPointerControl : public PointerControl {
public:
    explicit NullPointerControl(QString reason);
    QPointF position() const override { return {}; }
    void warp(QPointF) override {}
    bool canScroll() const override { return false; }
    QFuture<Result<void>> wheel(int clicks) override;

private:
    QString m_reason;
};

// No shortcut can be had.
class NullHotKeys : public HotKeys {
    Q_OBJECT
public:
    explicit NullHotKeys(QString reason);
    Result<void> registerKey(quint32 id, int keyCode, int modifiers) override;
    void unregisterAll() override {}

private:
    QString m_reason;
};
