#include "support/DesktopSession.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTest>

bool WaitUntil(const std::function<bool()>& condition, int timeoutMs, int pollMs)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < timeoutMs) {
        if (condition())
            return true;
        QTest::qWait(pollMs);
    }
    return condition();
}

namespace {

// Starts a server that prints one line when ready (its display or its address) and reads it.
bool StartAndReadLine(QProcess& process, const QString& program, const QStringList& arguments, QString* line,
                      QString* why)
{
    const QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty()) {
        *why = program + " is not installed (scripts/deps.sh installs it)";
        return false;
    }
    process.start(path, arguments);
    if (!process.waitForStarted(10000)) {
        *why = program + " did not start: " + process.errorString();
        return false;
    }
    WaitUntil([&] { return process.canReadLine() || process.state() != QProcess::Running; }, 15000);
    *line = QString::fromUtf8(process.readLine()).trimmed();
    if (line->isEmpty()) {
        *why = program + " did not say where it listens";
        return false;
    }
    return true;
}

void Stop(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(5000)) {
        process.kill();
        process.waitForFinished(2000);
    }
}

} // namespace

QString VerdalyProgram()
{
    return QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath("verdaly");
}

DesktopSession::~DesktopSession()
{
    Stop(m_server);
    Stop(m_bus);
    Stop(m_windowManager);
    Stop(m_xvfb);
}

bool DesktopSession::startDisplay(QString* why, const QString& screenSize, bool withWindowManager)
{
    // No key repeat: on a loaded machine a key held a few hundred milliseconds would type twice.
    QString number;
    if (!StartAndReadLine(
            m_xvfb, "Xvfb",
            {"-displayfd", "1", "-screen", "0", screenSize + "x24", "-nolisten", "tcp", "-ardelay", "60000"}, &number,
            why))
        return false;
    m_display = QLatin1Char(':') + number;
    m_managed = withWindowManager;
    if (!withWindowManager)
        return true;
    m_windowManager.setProcessEnvironment(environment());
    m_windowManager.start("jwm", {});
    if (!m_windowManager.waitForStarted()) {
        *why = "jwm is not installed (scripts/deps.sh installs it)";
        return false;
    }
    // The manager has taken over once it has set its check window on the root; a test that
    // needs frames waits for them itself.
    WaitUntil(
        [&] {
            return run("xprop", {"-root", "_NET_SUPPORTING_WM_CHECK"}).contains(QLatin1String("window id"));
        },
        10000, 100);
    return true;
}

bool DesktopSession::startBus(QString* why)
{
    return StartAndReadLine(m_bus, "dbus-daemon", {"--session", "--nofork", "--print-address=1"}, &m_busAddress, why);
}

bool DesktopSession::startNotificationServer(QString* why)
{
    const QString dunst = QStandardPaths::findExecutable("dunst");
    if (dunst.isEmpty() || m_busAddress.isEmpty() || m_display.isEmpty()) {
        *why = "dunst, a display and a bus are needed for a notification server";
        return false;
    }
    m_server.setProcessEnvironment(environment());
    m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_server.start(dunst, {});
    const bool ready = WaitUntil(
        [&] {
            return m_server.state() == QProcess::Running && run("dunstctl", {"is-paused"}) == QLatin1String("false");
        },
        15000);
    if (!ready)
        *why = "dunst did not come up on the private bus";
    return ready;
}

QProcessEnvironment DesktopSession::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("DISPLAY", m_display);
    env.insert("QT_QPA_PLATFORM", "xcb");
    // Without a bus of its own a bare display gets one that leads nowhere, so nothing reaches the
    // developer's desktop; under a window manager the program keeps the caller's bus, which its
    // frames and maximising need.
    if (!m_busAddress.isEmpty())
        env.insert("DBUS_SESSION_BUS_ADDRESS", m_busAddress);
    else if (!m_managed)
        env.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/verdaly-test-bus");
    return env;
}

QString DesktopSession::run(const QString& program, const QStringList& arguments, int timeoutMs) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(program, arguments);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished(2000);
    }
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QStringList DesktopSession::visibleWindows(qint64 pid) const
{
    return run("xdotool", {"search", "--onlyvisible", "--pid", QString::number(pid)})
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

int DesktopSession::shownNotifications() const
{
    bool ok = false;
    const int n = run("dunstctl", {"count", "displayed"}).toInt(&ok);
    return ok ? n : -1;
}

QList<DesktopSession::Notification> DesktopSession::closeAllAndReadHistory() const
{
    run("dunstctl", {"close-all"});
    QList<Notification> list;
    // The server moves what was closed to its history a moment later.
    WaitUntil(
        [&] {
            if (shownNotifications() != 0)
                return false;
            list.clear();
            const QJsonDocument history = QJsonDocument::fromJson(run("dunstctl", {"history"}).toUtf8());
            for (const QJsonValue group : history.object().value("data").toArray()) {
                for (const QJsonValue item : group.toArray()) {
                    const QJsonObject n = item.toObject();
                    const auto field = [&n](const char* name) {
                        return n.value(QLatin1String(name)).toObject().value("data").toString();
                    };
                    list.append(Notification{field("appname"), field("summary"), field("body")});
                }
            }
            return true;
        },
        3000);
    return list;
}
