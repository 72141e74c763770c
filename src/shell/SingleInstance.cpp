#include "shell/SingleInstance.h"

#include "shell/ShellLog.h"

SingleInstance::SingleInstance(const QString& lockPath) : m_lock(lockPath)
{
    // Never stale by age: only a lock whose process is gone is taken over.
    m_lock.setStaleLockTime(0);
}

bool SingleInstance::tryAcquire()
{
    if (m_lock.tryLock(0))
        return true;
    if (m_lock.error() == QLockFile::LockFailedError) {
        qint64 pid = 0;
        QString host, app;
        m_lock.getLockInfo(&pid, &host, &app);
        qCInfo(lcShell) << "another copy is running, pid" << pid;
    } else {
        qCWarning(lcShell) << "cannot create the lock file, error" << m_lock.error();
    }
    return false;
}

void SingleInstance::release()
{
    if (m_lock.isLocked())
        m_lock.unlock();
}
