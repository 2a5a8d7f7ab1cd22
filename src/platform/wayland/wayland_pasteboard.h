#pragma once

#include "platform/pasteboard.h"

#include <QObject>
#include <memory>
#include <vector>

class QSocketNotifier;
class WaylandConnection;
struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_offer_v1;
struct zwlr_data_control_source_v1;
struct wl_seat;

// The clipboard of a compositor that lets a program without a window in front set and read it. The toolkit's
// own needs the keyboard for either. Main thread.
class WaylandPasteboard : public Pasteboard {
public:
    // Connected at the first use: for a compositor that is known to let programs do it, and that takes its
    // time to greet them.
    WaylandPasteboard();
    // Null where the compositor doesn't.
    static std::unique_ptr<WaylandPasteboard> open();
    ~WaylandPasteboard() override;
    void clear() override;
    void setFlavors(const QList<Flavor> &flavors) override;
    void setText(const QString &text) override;
    void setFile(const QUrl &file) override;
    bool has(const QString &mimeType) const override;
    QByteArray data(const QString &mimeType) const override;
    QString text() const override;
    bool hasImage() const override;
    QImage image() const override;
    QList<Flavor> lostAtQuit() const override;

private:
    struct Offer;
    struct Source;

    bool connect();
    void listen();
    void readEvents();
    // What has arrived by now: another program may have copied just before.
    bool update() const;
    QStringList types() const;

    std::unique_ptr<WaylandConnection> m_connection;
    wl_seat *m_seat = nullptr;
    zwlr_data_control_manager_v1 *m_manager = nullptr;
    zwlr_data_control_device_v1 *m_device = nullptr;
    std::vector<std::unique_ptr<Offer>> m_offers; // the one that is there, and those that are being told
    Offer *m_current = nullptr;                   // another program's content, or our own as others see it
    std::unique_ptr<Source> m_source;             // our own content, while it is there
    std::unique_ptr<QSocketNotifier> m_notifier;
    QObject m_owner; // of connections
};
