#include "alarms/Notifier.h"

#include "alarms/AlarmLog.h"
#include "common/AppServices.h"
#include "common/ProcessLauncher.h"

#include <QCoreApplication>
#include <QDir>

namespace {

bool PlaysSound(bool withSound, const QString& soundFile)
{
    return withSound && !soundFile.isEmpty();
}

} // namespace

QString NotifierProgram(const QString& programDir)
{
    return QDir::cleanPath(programDir) + QStringLiteral("/BalloonNotify");
}

QStringList NotifierArguments(const QString& title, const QString& text, bool withSound, const QString& soundFile)
{
    QStringList arguments{QStringLiteral("/t"), title, QStringLiteral("/c"), text, QStringLiteral("/i"),
                          QStringLiteral("i")};
    if (PlaysSound(withSound, soundFile))
        arguments << QStringLiteral("/a") << soundFile;
    return arguments;
}

QString NotifierCommandLine(const QString& programDir, const QString& title, const QString& text, bool withSound,
                            const QString& soundFile)
{
    QString line = NotifierProgram(programDir) + QStringLiteral(" /t ") + title + QStringLiteral(" /c ") + text;
    if (PlaysSound(withSound, soundFile))
        line += QStringLiteral(" /i i /a ") + soundFile;
    else
        line += QStringLiteral(" /i i ");
    return line;
}

bool ShowBalloon(AppServices& app, const QString& title, const QString& text, bool withSound, const QString& soundFile)
{
    const QString programDir = QCoreApplication::applicationDirPath();
    const QString line = NotifierCommandLine(programDir, title, text, withSound, soundFile);
    if (!app.launcher) {
        qCWarning(lcAlarms).noquote() << "no way to start the notifier:" << line;
        return false;
    }
    if (!app.launcher->startDetached(NotifierProgram(programDir),
                                     NotifierArguments(title, text, withSound, soundFile))) {
        qCWarning(lcAlarms).noquote() << "the notifier could not be started:" << line;
        return false;
    }
    qCInfo(lcAlarms).noquote() << "alarm:" << line;
    return true;
}
