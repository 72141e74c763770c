#include "common/ProcessLauncher.h"

#include <QProcess>

bool SystemProcessLauncher::startDetached(const QString& program, const QStringList& arguments)
{
    return QProcess::startDetached(program, arguments);
}
