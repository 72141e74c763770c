#pragma once

#include "support/DesktopSession.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// A private X display for end-to-end runs (the server picks a free display itself), with a
// real window manager when asked, so that windows get real frames and real maximising.
class VirtualDesktop final
{
public:
    VirtualDesktop() = default;
    ~VirtualDesktop();
    VirtualDesktop(const VirtualDesktop&) = delete;
    VirtualDesktop& operator=(const VirtualDesktop&) = delete;

    // Answers "" when started, else why not.
    QString start(const QString& screenSize, bool withWindowManager);
    QString display() const { return m_display; }
    // The system environment pointed at this display, with the xcb platform.
    QProcessEnvironment environment() const;
    // Runs an X tool (xdotool, xprop, import...) on this display and answers its output.
    QString run(const QString& tool, const QStringList& arguments) const;
    // The visible top-level windows of a process, as xdotool finds them.
    QStringList windowsOf(qint64 pid) const;

private:
    QProcess m_server;
    QProcess m_windowManager;
    QString m_display;
};
