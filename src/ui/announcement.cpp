#include "ui/announcement.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QWidget>

namespace {

constexpr int kPolite = 1; // after what is being said

} // namespace

void announce(QWidget *source, const QString &words)
{
    if (!QAccessible::isActive() || words.isEmpty())
        return;
    QAccessibleInterface *speaker = QAccessible::queryAccessibleInterface(source);
    if (!speaker)
        return;
    // This version of the toolkit has no such event. Whoever listens knows objects by the connection of the
    // toolkit's own bridge, and by these paths.
    QDBusConnection bridge(QStringLiteral("a11y"));
    if (!bridge.isConnected())
        return;
    const QString path =
        QStringLiteral("/org/a11y/atspi/accessible/%1").arg(QAccessible::uniqueId(speaker));
    QDBusMessage event = QDBusMessage::createSignal(path, QStringLiteral("org.a11y.atspi.Event.Object"),
                                                    QStringLiteral("Announcement"));
    event << QString() << kPolite << 0 << QVariant::fromValue(QDBusVariant(words)) << QVariantMap();
    bridge.send(event);
}
