#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Fonts.h"
#include "common/HotKeyBackend.h"
#include "common/Pickers.h"
#include "common/ProcessLauncher.h"
#include "common/Prompter.h"
#include "common/RandomSource.h"
#include "common/UrlOpener.h"
#include "mainwindow/FrmMain.h"
#include "platform/HotKeyBackendFactory.h"
#include "shell/AutoStart.h"
#include "shell/DataFolder.h"
#include "shell/SignalWatcher.h"
#include "views/FrmDatePicker.h"

#include <QApplication>
#include <QSessionManager>

#include <cstdio>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("halvern-verdaly"));
    QApplication::setApplicationVersion(AppInfo::versionText());
    // Ties the windows to the installed menu entry and its icon.
    QApplication::setDesktopFileName(AppInfo::desktopId());
    // Closing the window may only hide it in the tray; the program ends through its own unload.
    QApplication::setQuitOnLastWindowClosed(false);
    RegisterFontSubstitutions();

    // A mistyped command line must not quietly fall back to another data folder.
    const QString usageError = CommandLineError(QApplication::arguments());
    if (!usageError.isEmpty()) {
        std::fprintf(stderr, "verdaly: %s\n%s\n", qUtf8Printable(usageError), qUtf8Printable(CommandLineUsage()));
        return 2;
    }

    SystemClock clock;
    MessageBoxPrompter prompter;
    SystemRandomSource random;
    DesktopUrlOpener urlOpener;
    SystemProcessLauncher launcher;
    DialogColorPicker colorPicker;
    DialogFontPicker fontPicker;
    DialogFilePicker filePicker;
    const std::unique_ptr<HotKeyBackend> hotKeys = CreateHotKeyBackend();

    AppServices services;
    services.programDir = QApplication::applicationDirPath();
    services.dataDir = ResolveDataDir(QApplication::arguments(), QApplication::applicationDirPath());
    services.clock = &clock;
    services.prompter = &prompter;
    services.random = &random;
    services.urlOpener = &urlOpener;
    services.launcher = &launcher;
    services.colorPicker = &colorPicker;
    services.fontPicker = &fontPicker;
    services.filePicker = &filePicker;
    services.hotKeys = hotKeys.get();
    FrmDatePicker datePicker(services);
    services.datePicker = &datePicker;
    if (services.dataDir.isEmpty()) {
        const QString dir = IntendedDataDir(QApplication::arguments(), QApplication::applicationDirPath());
        prompter.inform(nullptr, QStringLiteral("データフォルダを作成できません。\n") + dir, PromptIcon::Critical);
        return 1;
    }

    FrmMain main(services);
    if (!main.Form_Load())
        return main.loadExitCode();

    // Being told to stop, or the desktop session ending, is an orderly shutdown: the notes
    // and the placement are saved exactly as for the exit menu.
    SignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, &SignalWatcher::terminationRequested, &main,
                     [&main](int) { main.RequestShutdown(UnloadMode::AppWindows); });
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &main,
                     [&main](QSessionManager&) { main.RequestShutdown(UnloadMode::AppWindows); });
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &main, [&main] {
        if (!main.isUnloaded())
            main.RequestShutdown(UnloadMode::AppWindows);
    });

    main.ShowAtStart(IsAutoStarted(QApplication::arguments()));
    return QApplication::exec();
}
