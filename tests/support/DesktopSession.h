#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>

// Polls condition every pollMs until it holds or timeoutMs passed; answers the last result.
// Runs that poll the X server under a window manager use 100 ms: twice as often lost the
// manager's keys on a loaded machine.
bool WaitUntil(const std::function<bool()>& condition, int timeoutMs, int pollMs = 50);

// The real calendar program of this build.
QString VerdalyProgram();

// A desktop of a test's own for running the real programs: a virtual X display (the
// server picks a free number), on request a real window manager (so that windows get real
// frames and real maximising), and a private session bus with a real notification server
// (dunst) on it. Everything started is stopped on destruction.
class DesktopSession final
{
public:
    DesktopSession() = default;
    ~DesktopSession();
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    // Each answers false and says why when its part could not be started.
    bool startDisplay(QString* why, const QString& screenSize = QStringLiteral("1024x768"),
                      bool withWindowManager = false);
    bool startBus(QString* why);
    bool startNotificationServer(QString* why);

    // For programs run on this desktop: its display, and its bus (or, on a bare display
    // without one, a bus address that leads nowhere, so nothing reaches the developer's own
    // desktop).
    QProcessEnvironment environment() const;
    QString display() const { return m_display; }

    // Runs a tool on this desktop to its end and answers its output, trimmed.
    QString run(const QString& program, const QStringList& arguments, int timeoutMs = 10000) const;
    // The visible top-level windows of a process, as xdotool finds them.
    QStringList visibleWindows(qint64 pid) const;

    struct Notification
    {
        QString appName;
        QString summary;
        QString body;
    };
    // Notifications the server shows right now.
    int shownNotifications() const;
    // Closes every shown notification and answers the server's whole history, newest first.
    QList<Notification> closeAllAndReadHistory() const;

private:
    QProcess m_xvfb;
    QProcess m_windowManager;
    QProcess m_bus;
    QProcess m_server;
    QString m_display;
    bool m_managed = false; // a window manager runs on the display
    QString m_busAddress;
};
