#pragma once

#include "platform/wayland/wayland_windows.h"

#include <QSet>

// Windows by sway's own socket.
class SwayWindows : public WaylandWindows {
public:
    QList<WaylandWindow> list() const override;
    void activate(quint32 id) override;
    void expectCovers(const QByteArray &title) override;
    void expectFloat(const QString &title, const QRect &frame) override;
    void fillScreen(quint32 id) override;
    std::unique_ptr<WaylandVeil> hide(const QList<quint32> &ids) override;
    bool canHide() const override { return true; }
    std::optional<Result<QImage>> picture(quint32, Pointer, WindowPart) override { return std::nullopt; }
    int listen() override;
    bool drain(int file) override;

private:
    QByteArray m_expected;
    QSet<QString> m_floats; // that have a rule
};
