#pragma once

#include "common/AppInfo.h"
#include "common/AppState.h"
#include "store/DatabaseConnection.h"

#include <QDir>
#include <QString>

#include <memory>

class Clock;
class ColorPicker;
class DatePicker;
class ProcessLauncher;
class FilePicker;
class FontPicker;
class HotKeyBackend;
class Prompter;
class RandomSource;
class UrlOpener;

// Everything a window needs from the outside world, handed down by reference. Production
// fills it with the real things in main.cpp; tests fill it with fakes.
struct AppServices
{
    QString dataDir;
    // The program's own folder: where the shipped help page is looked for.
    QString programDir;
    Clock* clock = nullptr;
    Prompter* prompter = nullptr;
    RandomSource* random = nullptr;
    DatePicker* datePicker = nullptr;
    UrlOpener* urlOpener = nullptr;
    ProcessLauncher* launcher = nullptr;
    ColorPicker* colorPicker = nullptr;
    FontPicker* fontPicker = nullptr;
    FilePicker* filePicker = nullptr;
    // The desktop's global hot keys (a backend that says it has none where there are none).
    HotKeyBackend* hotKeys = nullptr;

    AppState state;
    std::unique_ptr<DatabaseConnection> connection;

    // The shared connection. Before it is opened (or after it failed) this is an unopened
    // connection on which every statement raises DatabaseError.
    DatabaseConnection& db()
    {
        if (!connection)
            connection = std::make_unique<DatabaseConnection>(QString());
        return *connection;
    }

    QString databasePath() const { return QDir(dataDir).filePath(AppInfo::databaseFileName()); }
    QString iniPath() const { return QDir(dataDir).filePath(AppInfo::iniFileName()); }
    QString lockPath() const { return QDir(dataDir).filePath(AppInfo::lockFileName()); }
};
