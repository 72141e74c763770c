// The main window's start-up and shutdown: the fixed order in which the program's parts
// are started and stopped.
#include "mainwindow/FrmMain.h"

#include "alarms/AlarmEngine.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "common/AppIcon.h"
#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Prompter.h"
#include "notes/StickyNoteStore.h"
#include "notes/StickyNotes.h"
#include "shell/ShellLog.h"
#include "shell/SingleInstance.h"
#include "shell/WindowPlacement.h"
#include "store/DatabaseError.h"
#include "store/DatabaseVersion.h"
#include "store/StartingDatabase.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSystemTrayIcon>
#include <QTimer>

namespace {

const QString PlacementSection = QStringLiteral("frmMAIN");

// How long a quiet start at login waits for a tray to appear: 20 looks, 5 seconds.
constexpr int TrayWaitStepMs = 250;
constexpr int TrayWaitTries = 20;

// Runs one start-up or shutdown step; a database failure is logged and the sequence
// goes on, so one broken row never keeps the calendar from starting or from saving.
template <typename Step> void RunStep(const char* name, Step&& step)
{
    try {
        step();
    } catch (const DatabaseError& error) {
        qCWarning(lcShell) << name << "failed:" << error.engineMessage() << error.sql();
    }
}

} // namespace

bool FrmMain::refuseStart(const QString& message, int exitCode)
{
    m_app.prompter->inform(nullptr, message, PromptIcon::Critical);
    m_app.connection.reset();
    if (m_instance)
        m_instance->release();
    m_instance.reset();
    m_loadExitCode = exitCode;
    return false;
}

// Opens the data folder's database, first building it when there is none. Every way this
// can fail is told to the user by name, and a file that is there is never written to.
bool FrmMain::openDatabase()
{
    const QString path = m_app.databasePath();
    const QFileInfo file(path);
    // An empty file is what a crash during the very first start leaves: no data to keep.
    if (!file.exists() || (file.isFile() && file.size() == 0)) {
        QString error;
        if (file.exists())
            QFile::remove(path);
        if (!CreateStartingDatabase(path, &error)) {
            return refuseStart(QStringLiteral("データベースファイルを作成できません。\n%1\n%2").arg(path, error), 1);
        }
    } else if (!file.isFile()) {
        return refuseStart(QStringLiteral("データベースファイルがファイルではありません。\n%1").arg(path), 1);
    }
    m_app.connection = OpenDatabaseConnection(path, QString());
    switch (m_app.connection->openFailure()) {
    case DatabaseConnection::OpenFailure::None:
        return true;
    case DatabaseConnection::OpenFailure::NotADatabase:
        return refuseStart(
            QStringLiteral(
                "データベースファイルを読み込めません。このプログラムのデータベースではないか、壊れています。\n%1")
                .arg(path),
            1);
    case DatabaseConnection::OpenFailure::Locked:
        return refuseStart(QStringLiteral("データベースファイルが他のプログラムに使用されています。\n%1\n"
                                          "そのプログラムを終了してから、もう一度起動してください。")
                               .arg(path),
                           1);
    case DatabaseConnection::OpenFailure::Missing:
    case DatabaseConnection::OpenFailure::Other:
        break;
    }
    return refuseStart(
        QStringLiteral("データベースファイルを開けません。\n%1\n%2").arg(path, m_app.connection->openError()), 1);
}

bool FrmMain::Form_Load()
{
    // 1. A second copy on the same data folder refuses to start.
    m_instance = std::make_unique<SingleInstance>(m_app.lockPath());
    if (!m_instance->tryAcquire()) {
        if (m_instance->failure() == SingleInstance::Failure::FolderNotWritable)
            return refuseStart(QStringLiteral("データフォルダに書き込めません。\n") + m_app.dataDir, 1);
        return refuseStart(QStringLiteral("既に起動されています。"), 0);
    }

    // 2.
    m_app.state.RestoreDone = false;

    // 4. (before the tray icon, so a start that cannot open its data leaves no trace)
    if (!openDatabase())
        return false;

    // 3.
    AddTrayIcon();

    // 5.
    RunStep("version upgrade", [&] { CheckDatabaseVersion(m_app.db(), *m_app.clock); });

    // 6.
    RestoreWindowPlacement(*this, m_app.iniPath(), PlacementSection);

    // 7. The notes that were open at the last exit reopen; a closed slot keeps its place.
    RunStep("sticky notes", [&] { LoadStickyNoteSlots(m_app.db(), m_app.state.StickyNotes); });
    RunStep("reopening sticky notes", [&] { m_notes->ReopenStickyNotes(); });

    // 8., 9.
    RunStep("transparency", [&] { ApplyTransparency(); });
    RunStep("design settings", [&] { ApplyDesignSettings(); });
    // The placement was made for the last design and screen; all of the window stays on this one.
    KeepOnScreen(*this);

    // 10.
    m_app.state.MainWindowIdle = true;

    // 11.
    RunStep("hot keys", [&] { RegisterHotKeys(); });

    // 12.-14. The calendar's own change signals stay quiet here so that the refreshes run
    // once each, in this order.
    m_loading = true;
    calendar()->setCurrentDate(m_app.clock->today());
    RunStep("day-offs", [&] { MarkDayOffs(); });
    RunStep("day panel", [&] { RefreshDayPanel(); });
    RunStep("month marks", [&] { RefreshMonthMarks(); });
    m_loading = false;
    m_today = m_app.clock->today();
    scheduleClockCheck();

    // 15. The alarm timer.
    m_alarms->start();
    return true;
}

bool FrmMain::residentOption()
{
    bool resident = false;
    RunStep("resident option", [&] {
        const Rows rows =
            m_app.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 311 ORDER BY CODE"));
        resident = !rows.empty() && rows.front().number(QStringLiteral("DATAN1")) == 1;
    });
    return resident;
}

void FrmMain::ShowAtStart(bool autostarted)
{
    if (!autostarted || !residentOption()) {
        show();
        return;
    }
    if (trayAvailable())
        return;
    // At login the panel that hosts the tray often comes up after the programs it starts:
    // wait for it a little, then show the window, which must never be out of reach.
    auto* wait = new QTimer(this);
    connect(wait, &QTimer::timeout, this, [this, wait, tries = 0]() mutable {
        const bool trayCame = trayAvailable();
        if (!trayCame && ++tries < TrayWaitTries)
            return;
        wait->deleteLater();
        if (!trayCame)
            show();
    });
    wait->start(TrayWaitStepMs);
}

void FrmMain::Form_QueryUnload(bool& cancel, UnloadMode mode)
{
    if (mode != UnloadMode::FormControlMenu)
        return;
    if (!residentOption())
        return;
    cancel = true;
    if (trayAvailable()) {
        setWindowState(windowState() | Qt::WindowMinimized);
        hide();
    } else {
        // Without a tray there would be no way back to a hidden window.
        showMinimized();
    }
}

void FrmMain::Form_Unload()
{
    // No alarm may run against a connection being closed.
    m_alarms->stop();

    // A dialog still up when the session ends (logout, SIGTERM) ends as its Cancel would.
    // Its transaction goes first: closing the connection would otherwise roll the notes
    // written next back with it.
    if (m_app.connection)
        m_app.connection->RollbackTo(0);

    // 1. The sticky notes, unless a restore has just replaced the data under us.
    RunStep("saving sticky notes", [&] { m_notes->SaveAtExit(); });

    // 2.
    if (m_app.connection)
        m_app.connection->Close();
    m_app.connection.reset();

    // 3.
    if (!isMinimized())
        SaveWindowPlacement(*this, m_app.iniPath(), PlacementSection);

    // 4.
    UnregisterHotKeys();

    // 5.
    RemoveTrayIcon();

    m_clockTimer->stop();

    if (m_instance)
        m_instance->release();
}

void FrmMain::AddTrayIcon()
{
    if (m_tray)
        return;
    m_tray = new QSystemTrayIcon(AppIcon(), this);
    m_tray->setObjectName(QStringLiteral("TrayIcon"));
    m_tray->setToolTip(AppInfo::trayTip());
    wireTrayIcon();
    m_tray->show();
}

void FrmMain::RemoveTrayIcon()
{
    if (!m_tray)
        return;
    m_tray->hide();
    m_tray->deleteLater();
    m_tray = nullptr;
}

bool FrmMain::trayAvailable() const
{
    if (m_trayAvailableOverride >= 0)
        return m_trayAvailableOverride != 0;
    // A tray host may appear after start-up, so ask now rather than once.
    return m_tray && QSystemTrayIcon::isSystemTrayAvailable();
}

void FrmMain::RequestShutdown(UnloadMode mode)
{
    if (m_unloaded)
        return;
    m_pendingMode = mode;
    m_modePending = true;
    close();
    if (!m_unloaded) {
        // close() refuses while a modal dialog runs on top; end the program regardless.
        m_modePending = false;
        Form_Unload();
        m_unloaded = true;
        QCoreApplication::quit();
    }
}

void FrmMain::closeEvent(QCloseEvent* event)
{
    const UnloadMode mode = m_modePending ? m_pendingMode : UnloadMode::FormControlMenu;
    m_modePending = false;
    if (m_unloaded) {
        event->accept();
        return;
    }
    bool cancel = false;
    Form_QueryUnload(cancel, mode);
    if (cancel) {
        event->ignore();
        return;
    }
    Form_Unload();
    m_unloaded = true;
    event->accept();
    QCoreApplication::quit();
}
