#include "shell/DataFolder.h"

#include "common/AppInfo.h"
#include "shell/ShellLog.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

QString DataDirArgument(const QStringList& arguments)
{
    const QString option = QStringLiteral("--data-dir");
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& arg = arguments.at(i);
        if (arg == option && i + 1 < arguments.size())
            return arguments.at(i + 1);
        if (arg.startsWith(option + QLatin1Char('=')))
            return arg.mid(option.size() + 1);
    }
    return {};
}

QString ResolveDataDir(const QStringList& arguments, const QString& executableDir)
{
    QString dir = DataDirArgument(arguments);
    if (dir.isEmpty() && QFileInfo(QDir(executableDir).filePath(AppInfo::databaseFileName())).isFile())
        dir = executableDir;
    if (dir.isEmpty())
        dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    dir = QDir(dir).absolutePath();
    if (!QDir().mkpath(dir)) {
        qCWarning(lcShell) << "cannot create the data folder" << dir;
        return {};
    }
    return QDir::cleanPath(dir);
}
