#include "DesktopNotification.h"

#include "NotifyCommandLine.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QVariantMap>

namespace {

const QString Service = QStringLiteral("org.freedesktop.Notifications");
const QString Path = QStringLiteral("/org/freedesktop/Notifications");

bool ServiceAvailable(QDBusConnection& bus)
{
    QDBusConnectionInterface* bus_ = bus.interface();
    if (!bus_)
        return false;
    if (bus_->isServiceRegistered(Service))
        return true;
    // A server that the bus starts on the first call is as good as a running one.
    const QDBusReply<QStringList> activatable = bus_->activatableServiceNames();
    return activatable.isValid() && activatable.value().contains(Service);
}

} // namespace

bool PostDesktopNotification(const NotifyCommand& command, QString* why)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        *why = QStringLiteral("no session bus: ") + bus.lastError().message();
        return false;
    }
    if (!ServiceAvailable(bus)) {
        *why = QStringLiteral("no notification service on the session bus");
        return false;
    }
    QDBusInterface notifications(Service, Path, Service, bus);
    notifications.setTimeout(10000);

    // Servers that read markup in the body would take "<" and "&" in an alarm's text as tags.
    QString body = command.text;
    const QDBusReply<QStringList> capabilities = notifications.call(QStringLiteral("GetCapabilities"));
    if (capabilities.isValid() && capabilities.value().contains(QStringLiteral("body-markup")))
        body = body.toHtmlEscaped();

    QVariantMap hints;
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue(uchar(1)));
    hints.insert(QStringLiteral("category"), QStringLiteral("x-verdaly.alarm"));
    const QString icon = command.icon == QLatin1String("i") ? QStringLiteral("dialog-information") : command.icon;
    const QDBusReply<uint> reply =
        notifications.call(QStringLiteral("Notify"), QStringLiteral("Halvern Verdaly"), uint(0), icon, command.title,
                           body, QStringList(), hints, int(-1));
    if (!reply.isValid()) {
        *why = QStringLiteral("the notification service refused: ") + reply.error().message();
        return false;
    }
    return true;
}
