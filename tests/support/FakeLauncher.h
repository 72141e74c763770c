#pragma once

#include "common/ProcessLauncher.h"

#include <QList>

// Records what would have been started; answers as told (started unless failing is set).
class FakeLauncher final : public ProcessLauncher
{
public:
    struct Start
    {
        QString program;
        QStringList arguments;
    };
    QList<Start> started;
    bool failing = false;

    bool startDetached(const QString& program, const QStringList& arguments) override
    {
        started.append(Start{program, arguments});
        return !failing;
    }
};
