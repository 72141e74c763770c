#include "shell/DataFolder.h"

#include "common/AppInfo.h"
#include "shell/AutoStart.h"
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

QString CommandLineError(const QStringList& arguments)
{
    const QString option = QStringLiteral("--data-dir");
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& arg = arguments.at(i);
        if (arg == option) {
            // A folder may not look like an option: "--data-dir --x" is a forgotten value.
            if (i + 1 >= arguments.size() || arguments.at(i + 1).isEmpty() ||
                arguments.at(i + 1).startsWith(QLatin1Char('-')))
                return QStringLiteral("--data-dir にフォルダが指定されていません。");
            ++i;
        } else if (arg.startsWith(option + QLatin1Char('='))) {
            if (arg.size() == option.size() + 1)
                return QStringLiteral("--data-dir にフォルダが指定されていません。");
        } else if (arg != AutoStartOption()) {
            return QStringLiteral("不明な引数です: ") + arg;
        }
    }
    return {};
}

QString CommandLineUsage()
{
    return QStringLiteral("使い方: verdaly [--data-dir フォルダ] [--autostart]  (詳しくは verdaly --help)");
}

bool IsInstalledProgram(const QString& executableDir)
{
    return QFileInfo(QDir(executableDir)
                         .filePath(QStringLiteral("../share/applications/%1.desktop").arg(AppInfo::desktopId())))
        .isFile();
}

QString IntendedDataDir(const QStringList& arguments, const QString& executableDir)
{
    QString dir = DataDirArgument(arguments);
    if (dir.isEmpty() && !IsInstalledProgram(executableDir) &&
        QFileInfo(QDir(executableDir).filePath(AppInfo::databaseFileName())).isFile())
        dir = executableDir;
    if (dir.isEmpty())
        dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return QDir::cleanPath(QDir(dir).absolutePath());
}

QString ResolveDataDir(const QStringList& arguments, const QString& executableDir)
{
    const QString dir = IntendedDataDir(arguments, executableDir);
    if (!QDir().mkpath(dir)) {
        qCWarning(lcShell) << "cannot create the data folder" << dir;
        return {};
    }
    return dir;
}
