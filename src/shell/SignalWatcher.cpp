#include "shell/SignalWatcher.h"

#include "shell/ShellLog.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int g_signalSockets[2] = {-1, -1};

void OnSignal(int signalNumber)
{
    const char byte = static_cast<char>(signalNumber);
    // Only async-signal-safe work here: one byte into the pipe, read on the event loop.
    const ssize_t written = ::write(g_signalSockets[0], &byte, 1);
    static_cast<void>(written);
}

} // namespace

SignalWatcher::SignalWatcher(QObject* parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalSockets) != 0) {
        qCWarning(lcShell) << "cannot watch termination signals";
        return;
    }
    m_notifier = new QSocketNotifier(g_signalSockets[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SignalWatcher::readSignal);

    struct sigaction action = {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int sig : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(sig, &action, nullptr);
}

SignalWatcher::~SignalWatcher()
{
    for (int sig : {SIGTERM, SIGINT, SIGHUP})
        ::signal(sig, SIG_DFL);
    for (int& fd : g_signalSockets) {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
}

void SignalWatcher::readSignal()
{
    char byte = 0;
    if (::read(g_signalSockets[1], &byte, 1) != 1)
        return;
    qCInfo(lcShell) << "termination signal" << static_cast<int>(byte);
    emit terminationRequested(static_cast<int>(byte));
}
