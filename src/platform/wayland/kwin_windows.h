#pragma once

#include "platform/wayland/kwin_script.h"
#include "platform/wayland/wayland_windows.h"

#include <QHash>
#include <QMutex>

// Windows by KWin's scripts.
class KWinWindows : public WaylandWindows {
public:
    QList<WaylandWindow> list() const override;
    void activate(quint32 id) override;
    // Windows that fill a screen move no others; but who has the keyboard now is to have it back from floats.
    void expectCovers(const QByteArray &) override { expectFloat({}, {}); }
    void expectFloat(const QString &title, const QRect &frame) override;
    void fillScreen(quint32) override {} // and those below go on filling theirs
    std::unique_ptr<WaylandVeil> hide(const QList<quint32> &ids) override;
    bool canHide() const override { return true; }
    std::optional<Result<QImage>> picture(quint32 id, Pointer pointer, WindowPart part) override;
    int listen() override { return m_script.watchActivations(); }
    bool drain(int file) override;

private:
    QString handle(quint32 id) const;

    bool m_placesFloats = false;
    mutable KWinScript m_script;
    mutable QMutex m_mutex;
    mutable QHash<quint32, QString> m_handles; // of the windows of the last list
};
