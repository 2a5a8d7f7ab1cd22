#pragma once

#include "base/async.h"
#include "platform/accessible_elements.h"
#include "platform/hot_keys.h"
#include "platform/input_monitor.h"
#include "platform/pointer_control.h"
#include "platform/press_pictures.h"

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

// Nothing is told of what is clicked and typed.
class NullInputMonitors : public InputMonitors {
public:
    explicit NullInputMonitors(QString reason) : m_reason(std::move(reason)) {}
    Result<std::unique_ptr<InputMonitor>> listen(InputEvents,
                                                 const std::function<void(InputMonitor &)> &) override
    {
        return fail(Error::Kind::Unavailable, m_reason);
    }

private:
    QString m_reason;
};

// No press is heard of.
class NullPressPictures : public PressPictures {
    Q_OBJECT
public:
    explicit NullPressPictures(QString reason);
    Result<void> start() override;
    void stop() override {}
    void setWantsPictures(bool) override {}

private:
    QString m_reason;
};

// Nobody tells what stands where.
class NullAccessibleElements : public AccessibleElements {
public:
    bool isAvailable() const override { return false; }
    void prepare() override {}
    void rest() override {}
    QFuture<std::optional<AccessibleElement>> elementAt(const ClickTarget &) override
    {
        return readyFuture<std::optional<AccessibleElement>>(std::nullopt);
    }
};
