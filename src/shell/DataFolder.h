#pragma once

#include <QString>
#include <QStringList>

// Where every file of the user lives: the folder given with --data-dir; else the program's
// own folder when it already holds a database (a portable install); else the per-user
// data folder. The folder is created when missing; an empty answer means it could not be.
// An installed program (see IsInstalledProgram) is never portable: a database that found
// its way into /usr/bin is not the user's.
QString ResolveDataDir(const QStringList& arguments, const QString& executableDir);
// Whether the program runs from an installed tree: its menu entry lies in
// ../share/applications beside its folder, as `cmake --install` and the package put it.
bool IsInstalledProgram(const QString& executableDir);
// The folder ResolveDataDir means, whether or not it exists (to name it in a message).
QString IntendedDataDir(const QStringList& arguments, const QString& executableDir);

// The value of --data-dir (either "--data-dir DIR" or "--data-dir=DIR"), or "".
QString DataDirArgument(const QStringList& arguments);

// What is wrong with the program's arguments (the first is the program itself), or ""
// when they are fine: only --data-dir with a folder, and --autostart, are understood.
QString CommandLineError(const QStringList& arguments);
// The one-line usage shown with a command-line error.
QString CommandLineUsage();
