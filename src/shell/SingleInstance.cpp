#include "shell/SingleInstance.h"

#include "shell/ShellLog.h"

SingleInstance::SingleInstance(const QString& lockPath) : m_lock(lockPath)
{
    // Never stale by age: only a lock whose process is gone is taken over.
    m_lock.setStaleLockTime(0);
}

bool SingleInstance::tryAcquire()
{
    m_failure = Failure::None;
    if (m_lock.tryLock(0))
        return true;
    if (m_lock.error() == QLockFile::LockFailedError) {
        qint64 pid = 0;
        QString host, app;
        // QLockFile takes pid 0 (or no pid at all) for a live process; no copy ever runs as that.
        if (!m_lock.getLockInfo(&pid, &host, &app) || pid <= 0) {
            qCWarning(lcShell) << "the lock file names no process; recovering it";
            // This refuses while a live copy holds the file's native lock, so it never
            // takes the lock away from a copy that is running.
            if (m_lock.removeStaleLockFile() && m_lock.tryLock(0))
                return true;
        }
    }
    if (m_lock.error() == QLockFile::LockFailedError) {
        qint64 pid = 0;
        QString host, app;
        m_lock.getLockInfo(&pid, &host, &app);
        qCInfo(lcShell) << "another copy is running, pid" << pid;
        m_failure = Failure::HeldByAnotherCopy;
    } else {
        qCWarning(lcShell) << "cannot create the lock file, error" << m_lock.error();
        m_failure = Failure::FolderNotWritable;
    }
    return false;
}

void SingleInstance::release()
{
    if (m_lock.isLocked())
        m_lock.unlock();
}
