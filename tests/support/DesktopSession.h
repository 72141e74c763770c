#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// A desktop of its own for end-to-end runs: a virtual X server on a display it chooses
// itself (so parallel runs never collide) with a window manager and its tray.
class DesktopSession final
{
public:
    DesktopSession();
    ~DesktopSession();
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    // Empty when the server did not come up; why is in error().
    const QString& display() const { return m_display; }
    const QString& error() const { return m_error; }
    // The environment of a program started on this desktop, on the real X platform.
    QProcessEnvironment environment() const;
    // Runs a desktop tool (xdotool, import, ...) to its end and answers its output, trimmed.
    QString run(const QString& program, const QStringList& arguments) const;

private:
    QProcess m_server;
    QProcess m_windowManager;
    QString m_display;
    QString m_error;
};
