#pragma once

#include <QLockFile>
#include <QString>

// Keeps a second copy of the program off the same data folder. A lock left behind by a
// copy that was killed is recognised as stale and taken over, and so is a lock file that
// names no process at all (a power cut between creating it and writing it leaves that).
class SingleInstance final
{
public:
    enum class Failure
    {
        None,
        HeldByAnotherCopy,
        FolderNotWritable,
    };

    explicit SingleInstance(const QString& lockPath);
    // Answers false when the lock could not be had; failure() says why.
    bool tryAcquire();
    Failure failure() const { return m_failure; }
    void release();

private:
    QLockFile m_lock;
    Failure m_failure = Failure::None;
};
