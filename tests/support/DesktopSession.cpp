#include "support/DesktopSession.h"

#include <QElapsedTimer>
#include <QStandardPaths>
#include <QThread>

DesktopSession::DesktopSession()
{
    for (const char* tool : {"Xvfb", "jwm", "xdotool", "xprop"}) {
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) {
            m_error = QStringLiteral("%1 is needed (scripts/test installs it)").arg(QString::fromLatin1(tool));
            return;
        }
    }
    // -displayfd: the server picks a free display and writes its number to us. No key
    // repeats: on a loaded machine a key held a few hundred milliseconds would type twice.
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1024x768x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                    QStringLiteral("-ardelay"), QStringLiteral("60000")});
    // Its complaints about displays already taken arrive on stderr first; the number it
    // settles on comes on stdout.
    QElapsedTimer waited;
    waited.start();
    const bool started = m_server.waitForStarted();
    while (started && !m_server.canReadLine() && m_server.state() == QProcess::Running && waited.elapsed() < 15000)
        m_server.waitForReadyRead(200);
    if (!m_server.canReadLine()) {
        m_error = QStringLiteral("Xvfb did not report its display: ") +
                  QString::fromLocal8Bit(m_server.readAllStandardError());
        return;
    }
    m_display = QLatin1Char(':') + QString::fromLatin1(m_server.readLine()).trimmed();
    m_windowManager.setProcessEnvironment(environment());
    m_windowManager.start(QStringLiteral("jwm"), {});
    if (!m_windowManager.waitForStarted()) {
        m_error = QStringLiteral("jwm did not start");
        return;
    }
    // The window manager has taken the screen once it names itself on the root window;
    // windows mapped before that would be placed by nobody.
    waited.restart();
    while (waited.elapsed() < 5000 &&
           !run(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
                .contains(QStringLiteral("window id")))
        QThread::msleep(100);
}

DesktopSession::~DesktopSession()
{
    for (QProcess* process : {&m_windowManager, &m_server}) {
        if (process->state() == QProcess::NotRunning)
            continue;
        process->terminate();
        if (!process->waitForFinished(5000))
            process->kill();
        process->waitForFinished(2000);
    }
}

QProcessEnvironment DesktopSession::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), m_display);
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    return env;
}

QString DesktopSession::run(const QString& program, const QStringList& arguments) const
{
    QProcess tool;
    tool.setProcessEnvironment(environment());
    tool.start(program, arguments);
    tool.waitForFinished(10000);
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}
