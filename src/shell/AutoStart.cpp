#include "shell/AutoStart.h"

#include "common/AppInfo.h"
#include "shell/DataFolder.h"
#include "shell/ShellLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

// The desktop's own folder for per-user configuration, as every session reads it; Qt's
// test mode does not move it, so a test points XDG_CONFIG_HOME somewhere of its own.
QString ConfigHome()
{
    const QString configured = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (!configured.isEmpty() && QDir::isAbsolutePath(configured))
        return configured;
    return QDir::homePath() + QStringLiteral("/.config");
}

// A desktop entry's string value: backslashes and control characters escaped.
QString EscapeValue(const QString& text)
{
    QString escaped;
    for (const QChar c : text) {
        if (c == QLatin1Char('\\'))
            escaped += QStringLiteral("\\\\");
        else if (c == QLatin1Char('\n'))
            escaped += QStringLiteral("\\n");
        else if (c == QLatin1Char('\t'))
            escaped += QStringLiteral("\\t");
        else if (c == QLatin1Char('\r'))
            escaped += QStringLiteral("\\r");
        else
            escaped += c;
    }
    return escaped;
}

bool IsKey(const QString& line, const char* key)
{
    return line.startsWith(QLatin1String(key) + QLatin1Char('='));
}

} // namespace

bool IsAutoStarted(const QStringList& arguments)
{
    return arguments.mid(1).contains(AutoStartOption());
}

AutoStartCommand CurrentAutoStartCommand()
{
    AutoStartCommand command;
    // `verdaly` becomes the window program beside it; starting through it is what a menu
    // entry does, so a login and a click run the same thing.
    const QFileInfo launcher(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("verdaly")));
    command.program = launcher.isFile() && launcher.isExecutable() ? launcher.absoluteFilePath()
                                                                   : QCoreApplication::applicationFilePath();
    // A folder typed relative to where the program was started means nothing at login.
    const QString dataDir = DataDirArgument(QCoreApplication::arguments());
    if (!dataDir.isEmpty())
        command.dataDir = QDir(dataDir).absolutePath();
    return command;
}

QString AutoStartFilePath()
{
    return ConfigHome() + QStringLiteral("/autostart/") + AppInfo::desktopId() + QStringLiteral(".desktop");
}

bool IsAutoStartEnabled()
{
    QFile file(AutoStartFilePath());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    bool inMainGroup = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('[')))
            inMainGroup = line == QLatin1String("[Desktop Entry]");
        else if (inMainGroup &&
                 (line == QLatin1String("Hidden=true") || line == QLatin1String("X-GNOME-Autostart-enabled=false")))
            return false;
    }
    return true;
}

QString DesktopExecArgument(const QString& argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    bool quote = argument.isEmpty();
    QString quoted;
    for (const QChar c : argument) {
        if (reserved.contains(c))
            quote = true;
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        // A lone % would be read as a field code such as %f.
        if (c == QLatin1Char('%'))
            quoted += QLatin1Char('%');
        quoted += c;
    }
    if (quote)
        quoted = QLatin1Char('"') + quoted + QLatin1Char('"');
    return EscapeValue(quoted);
}

QString AutoStartEntry(const AutoStartCommand& command)
{
    QString exec = DesktopExecArgument(command.program) + QLatin1Char(' ') + AutoStartOption();
    if (!command.dataDir.isEmpty())
        exec += QStringLiteral(" --data-dir ") + DesktopExecArgument(command.dataDir);

    // The installed menu entry is built into the program; the plain entry is only a fallback.
    QFile menuEntry(QStringLiteral(":/verdaly/desktop/%1.desktop").arg(AppInfo::desktopId()));
    const QString source = menuEntry.open(QIODevice::ReadOnly | QIODevice::Text)
                               ? QString::fromUtf8(menuEntry.readAll())
                               : QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=\nTryExec=\n")
                                     .arg(AppInfo::productTitle());
    QStringList lines;
    for (const QString& line : source.split(QLatin1Char('\n'))) {
        if (IsKey(line, "Exec"))
            lines << QStringLiteral("Exec=") + exec;
        else if (IsKey(line, "TryExec"))
            // A program removed since leaves an entry the desktop skips instead of failing on.
            lines << QStringLiteral("TryExec=") + EscapeValue(command.program);
        else if (!line.isEmpty())
            lines << line;
    }
    lines << QStringLiteral("X-GNOME-Autostart-enabled=true");
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

bool SetAutoStart(bool enabled, const AutoStartCommand& command, QString* error)
{
    const QString path = AutoStartFilePath();
    if (!enabled) {
        if (!QFileInfo::exists(path) || QFile::remove(path))
            return true;
        qCWarning(lcShell) << "cannot remove the autostart entry" << path;
        *error = QStringLiteral("自動起動の設定ファイルを削除できません。\n") + path;
        return false;
    }
    // Written whole or not at all: a half entry could start something odd at the next login.
    QSaveFile file(path);
    QString why = QStringLiteral("フォルダを作成できません。");
    if (QDir().mkpath(QFileInfo(path).path())) {
        if (file.open(QIODevice::WriteOnly)) {
            file.write(AutoStartEntry(command).toUtf8());
            if (file.commit())
                return true;
        }
        why = file.errorString();
    }
    qCWarning(lcShell) << "cannot write the autostart entry" << path << why;
    *error = QStringLiteral("自動起動の設定ファイルを書き込めません。\n%1\n%2").arg(path, why);
    return false;
}
