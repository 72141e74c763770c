#include "support/VirtualDesktop.h"

#include <QDir>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QThread>

VirtualDesktop::~VirtualDesktop()
{
    for (QProcess* process : {&m_windowManager, &m_server}) {
        if (process->state() == QProcess::NotRunning)
            continue;
        process->terminate();
        process->waitForFinished(5000);
    }
}

QString VirtualDesktop::start(const QString& screenSize, bool withWindowManager)
{
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (xvfb.isEmpty())
        return QStringLiteral("Xvfb is needed (scripts/test installs it)");
    // -displayfd: the server picks a free display and writes its number on stdout. No key
    // repeat: on a loaded machine a key held a few hundred milliseconds would type twice.
    m_server.start(xvfb, {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                          QStringLiteral("0"), screenSize + QStringLiteral("x24"), QStringLiteral("-nolisten"),
                          QStringLiteral("tcp"), QStringLiteral("-ardelay"), QStringLiteral("60000")});
    if (!m_server.waitForStarted())
        return QStringLiteral("Xvfb did not start");
    QElapsedTimer waited;
    waited.start();
    while (!m_server.canReadLine() && m_server.state() == QProcess::Running && waited.elapsed() < 15000)
        m_server.waitForReadyRead(200);
    const QString number = QString::fromLatin1(m_server.readLine()).trimmed();
    if (number.isEmpty())
        return QStringLiteral("Xvfb did not report its display");
    m_display = QLatin1Char(':') + number;
    if (!withWindowManager)
        return {};
    m_windowManager.setProcessEnvironment(environment());
    m_windowManager.start(QStringLiteral("jwm"), {});
    if (!m_windowManager.waitForStarted())
        return QStringLiteral("jwm is needed (scripts/test installs it)");
    // The manager has taken over once it has set its check window on the root.
    waited.restart();
    while (!run(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
                .contains(QLatin1String("window id")) &&
           waited.elapsed() < 10000)
        QThread::msleep(100);
    return {};
}

QProcessEnvironment VirtualDesktop::environment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), m_display);
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    return env;
}

QString VirtualDesktop::run(const QString& tool, const QStringList& arguments) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(tool, arguments);
    process.waitForFinished(10000);
    return QString::fromLocal8Bit(process.readAllStandardOutput()).trimmed();
}

QStringList VirtualDesktop::windowsOf(qint64 pid) const
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                           QStringLiteral("--pid"), QString::number(pid)})
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
