#pragma once

#include <QString>
#include <QStringList>

// Starts another program without waiting for it (the alarm's notifier). A seam so tests
// can see what would have been started without starting it.
class ProcessLauncher
{
public:
    virtual ~ProcessLauncher() = default;
    // Answers false when the program could not be started (missing, not executable).
    virtual bool startDetached(const QString& program, const QStringList& arguments) = 0;
};

class SystemProcessLauncher final : public ProcessLauncher
{
public:
    bool startDetached(const QString& program, const QStringList& arguments) override;
};
