#pragma once

#include <QString>
#include <QStringList>

// Starting at login through the desktop's autostart folder ($XDG_CONFIG_HOME/autostart).
// The entry file is the only record of the choice: the settings dialog reads it back, so
// the check box and what the desktop will do at the next login cannot disagree.

// The option the autostart entry passes, so the program knows a login started it.
inline QString AutoStartOption()
{
    return QStringLiteral("--autostart");
}
bool IsAutoStarted(const QStringList& arguments);

// What the entry runs: the program and, when this copy keeps its data in a folder of its
// own (--data-dir), that folder, so the login starts the same calendar.
struct AutoStartCommand
{
    QString program;
    QString dataDir;
};
// This running copy's command: the `verdaly` launcher beside it when there is one.
AutoStartCommand CurrentAutoStartCommand();

QString AutoStartFilePath();
// Whether the desktop will start the program at login: the entry exists and is not
// switched off inside (Hidden=true, or a session's own enabled=false key).
bool IsAutoStartEnabled();
// Writes or removes the entry; on failure answers false with a message for the user.
bool SetAutoStart(bool enabled, const AutoStartCommand& command, QString* error);

// The entry's text: the installed menu entry with this command line.
QString AutoStartEntry(const AutoStartCommand& command);
// One argument of a desktop entry's Exec key, quoted and escaped as the key's value needs.
QString DesktopExecArgument(const QString& argument);
