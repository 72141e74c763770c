#pragma once

#include <QLockFile>
#include <QString>

// Keeps a second copy of the program off the same data folder. A lock left behind by a
// copy that was killed is recognised as stale and taken over.
class SingleInstance final
{
public:
    explicit SingleInstance(const QString& lockPath);
    // Answers false when another running copy holds the lock.
    bool tryAcquire();
    void release();

private:
    QLockFile m_lock;
};
