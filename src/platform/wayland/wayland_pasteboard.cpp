#include "platform/wayland/wayland_pasteboard.h"

#include "platform/wayland/pipe_bytes.h"
#include "platform/wayland/wayland_connection.h"

#include <QImage>
#include <QSocketNotifier>
#include <algorithm>
#include <fcntl.h>
#include <unistd.h>
#include <wayland-client.h>
#include <wayland_protocols/wlr-data-control-unstable-v1.h>

namespace {

const QString kPlainText = QStringLiteral("text/plain");
const QString kUnicodeText = QStringLiteral("text/plain;charset=utf-8");

} // namespace

struct WaylandPasteboard::Offer {
    zwlr_data_control_offer_v1 *offer = nullptr;
    QStringList types = {};

    ~Offer() { zwlr_data_control_offer_v1_destroy(offer); }
};

struct WaylandPasteboard::Source {
    zwlr_data_control_source_v1 *source = nullptr;
    QList<Flavor> flavors = {};
    bool isReplaced = false;

    ~Source() { zwlr_data_control_source_v1_destroy(source); }
    const Flavor *find(const QString &type) const
    {
        const auto found = std::find_if(flavors.begin(), flavors.end(),
                                        [&](const Flavor &flavor) { return flavor.first == type; });
        return found == flavors.end() ? nullptr : &*found;
    }
};

std::unique_ptr<WaylandPasteboard> WaylandPasteboard::open()
{
    auto board = std::make_unique<WaylandPasteboard>();
    return board->connect() ? std::move(board) : nullptr;
}

bool WaylandPasteboard::connect()
{
    if (m_connection)
        return !m_connection->isBroken();
    auto opened = WaylandConnection::open();
    if (!opened || !(*opened)->offers(zwlr_data_control_manager_v1_interface) ||
        !(*opened)->offers(wl_seat_interface))
        return false;
    m_connection = std::move(*opened);
    m_seat = m_connection->bind<wl_seat>(wl_seat_interface, 1);
    m_manager = m_connection->bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 1);
    listen();
    return true;
}

WaylandPasteboard::WaylandPasteboard() = default;

WaylandPasteboard::~WaylandPasteboard()
{
    m_notifier.reset();
    m_source.reset();
    m_offers.clear();
    if (m_device)
        zwlr_data_control_device_v1_destroy(m_device);
    if (m_manager)
        zwlr_data_control_manager_v1_destroy(m_manager);
    if (m_seat)
        wl_seat_destroy(m_seat);
}

void WaylandPasteboard::listen()
{
    static const zwlr_data_control_offer_v1_listener offerListener{
        .offer = [](void *data, zwlr_data_control_offer_v1 *, const char *type) {
            static_cast<Offer *>(data)->types.append(QString::fromUtf8(type));
        }};
    static const zwlr_data_control_device_v1_listener listener{
        .data_offer =
            [](void *data, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
                auto *self = static_cast<WaylandPasteboard *>(data);
                self->m_offers.push_back(std::make_unique<Offer>(offer));
                zwlr_data_control_offer_v1_add_listener(offer, &offerListener, self->m_offers.back().get());
            },
        .selection =
            [](void *data, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *offer) {
                auto *self = static_cast<WaylandPasteboard *>(data);
                std::erase_if(self->m_offers, [&](const auto &each) { return each->offer != offer; });
                self->m_current = self->m_offers.empty() ? nullptr : self->m_offers.front().get();
                if (!self->m_source || self->m_source->isReplaced) {
                    self->m_source.reset();
                    self->noteChange();
                }
            },
        .finished = [](void *, zwlr_data_control_device_v1 *) {},
        .primary_selection = [](void *, zwlr_data_control_device_v1 *, zwlr_data_control_offer_v1 *) {},
    };
    m_device = zwlr_data_control_manager_v1_get_data_device(m_manager, m_seat);
    zwlr_data_control_device_v1_add_listener(m_device, &listener, this);
    m_connection->roundtrip();
    m_notifier =
        std::make_unique<QSocketNotifier>(wl_display_get_fd(m_connection->display()), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_owner, [this] { readEvents(); });
}

void WaylandPasteboard::readEvents()
{
    m_connection->dispatchPending();
    if (m_connection->isBroken())
        m_notifier->setEnabled(false); // a closed socket would wake it for ever
    m_connection->flush();
}

bool WaylandPasteboard::update() const
{
    // The first look is what connects; nothing that can be seen from outside changes by it.
    return const_cast<WaylandPasteboard *>(this)->connect() && m_connection->roundtrip();
}

void WaylandPasteboard::clear()
{
    if (!connect())
        return;
    m_source.reset();
    zwlr_data_control_device_v1_set_selection(m_device, nullptr);
    update();
    noteChange();
}

void WaylandPasteboard::setFlavors(const QList<Flavor> &flavors)
{
    if (!connect())
        return;
    static const zwlr_data_control_source_v1_listener listener{
        .send =
            [](void *data, zwlr_data_control_source_v1 *, const char *type, int32_t file) {
                const Flavor *flavor = static_cast<Source *>(data)->find(QString::fromUtf8(type));
                PipeBytes::send(file, flavor ? flavor->second : QByteArray());
            },
        .cancelled = [](void *data,
                        zwlr_data_control_source_v1 *) { static_cast<Source *>(data)->isReplaced = true; },
    };
    auto source =
        std::make_unique<Source>(zwlr_data_control_manager_v1_create_data_source(m_manager), flavors);
    zwlr_data_control_source_v1_add_listener(source->source, &listener, source.get());
    for (const Flavor &flavor : flavors)
        zwlr_data_control_source_v1_offer(source->source, flavor.first.toUtf8().constData());
    zwlr_data_control_device_v1_set_selection(m_device, source->source);
    const auto before = std::exchange(m_source, std::move(source)); // goes once its successor is there
    update();
    noteChange();
}

void WaylandPasteboard::setText(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    setFlavors({{kUnicodeText, bytes}, {kPlainText, bytes}, {QStringLiteral("UTF8_STRING"), bytes}});
}

void WaylandPasteboard::setFile(const QUrl &file)
{
    setFlavors({{QStringLiteral("text/uri-list"), file.toEncoded() + "\r\n"}});
}

QStringList WaylandPasteboard::types() const
{
    update();
    QStringList all;
    if (m_source) {
        for (const Flavor &flavor : m_source->flavors)
            all.append(flavor.first);
        return all;
    }
    return m_current ? m_current->types : all;
}

bool WaylandPasteboard::has(const QString &mimeType) const
{
    return types().contains(mimeType);
}

QByteArray WaylandPasteboard::data(const QString &mimeType) const
{
    if (!update())
        return {};
    if (m_source) {
        const Flavor *flavor = m_source->find(mimeType);
        return flavor ? flavor->second : QByteArray();
    }
    if (!m_current || !m_current->types.contains(mimeType))
        return {};
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    zwlr_data_control_offer_v1_receive(m_current->offer, mimeType.toUtf8().constData(), ends[1]);
    m_connection->flush();
    close(ends[1]);
    return PipeBytes::receive(ends[0]);
}

QString WaylandPasteboard::text() const
{
    const QStringList offered = types();
    for (const QString &type : {kUnicodeText, QStringLiteral("UTF8_STRING"), kPlainText}) {
        if (offered.contains(type))
            return QString::fromUtf8(data(type));
    }
    return {};
}

bool WaylandPasteboard::hasImage() const
{
    return !types().filter(QStringLiteral("image/")).isEmpty();
}

QImage WaylandPasteboard::image() const
{
    for (const QString &type : types().filter(QStringLiteral("image/"))) {
        const QImage image = QImage::fromData(data(type));
        if (!image.isNull())
            return image;
    }
    return {};
}

// Who manages clipboards here takes a copy at once, and then the content isn't ours any more.
QList<Pasteboard::Flavor> WaylandPasteboard::lostAtQuit() const
{
    return m_connection && update() && m_source && !m_source->isReplaced ? m_source->flavors
                                                                         : QList<Flavor>();
}
