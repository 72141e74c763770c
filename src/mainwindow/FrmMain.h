#pragma once

#include "mainwindow/MainMenus.h"

#include <QColor>
#include <QDate>
#include <QSystemTrayIcon>
#include <QWidget>

#include <array>
#include <memory>

class AlarmEngine;
class GlobalHotKeys;
class HalvernCalendar;
class LinkLabel;
class QFrame;
class QLabel;
class QTimer;
class SingleInstance;
class StickyNotes;
struct AppServices;
struct ScheduleHandOver;
struct TaskHandOver;

// How a close came about; only a close from the window's own close box may be turned
// into hiding the window in the tray.
enum class UnloadMode
{
    FormControlMenu = 0, // the close box or the window menu
    FormCode = 1,        // the program's own exit (menu, after a restore)
    AppWindows = 2,      // the desktop session ends, or the process is told to stop
};

constexpr int PanelRows = 3;

// The main calendar window: the month grid, and under it the selected day's first
// entries and the links. It owns the program: its load starts every part in a fixed
// order and its unload saves and stops them.
class FrmMain final : public QWidget
{
    Q_OBJECT
public:
    explicit FrmMain(AppServices& app, QWidget* parent = nullptr);
    ~FrmMain() override;

    // Start-up (FrmMainLifecycle.cpp). Answers false when the program cannot start: another
    // copy is running, or the data folder or the database is unusable. The user has been
    // told; the caller ends the program with loadExitCode() without showing anything.
    bool Form_Load();
    int loadExitCode() const { return m_loadExitCode; }
    void Form_QueryUnload(bool& cancel, UnloadMode mode);
    void Form_Unload();

    // Shows the window, except for a start at login (--autostart) of a program set to stay
    // resident: that one waits in the tray. With no tray to wait in, the window shows.
    void ShowAtStart(bool autostarted);

    // Ends the program through the normal close path (exit menu, signals, session end).
    void RequestShutdown(UnloadMode mode);
    bool isUnloaded() const { return m_unloaded; }
    QSystemTrayIcon* trayIcon() const { return m_tray; }
    // Overridable only for tests: whether a tray is there to hide into (-1: ask the desktop).
    void setTrayAvailabilityForTesting(int available) { m_trayAvailableOverride = available; }

    // The grid and the panel (FrmMainPanel.cpp). Each reads the database; a failure
    // raises DatabaseError to the caller.
    void RefreshMonthMarks();
    void RefreshDayPanel();
    void MarkDayOffs();
    void ApplyDesignSettings();
    void ApplyTransparency();
    void ResetLinkStyles();

    // Commands the links, the tray menu and the hot keys share (FrmMainCommands.cpp).
    // Brings the window back from the tray or from under other windows, normal and raised.
    void ShowCalendar();
    // The schedule / task editor for a new entry on `day` (the selected day from the link,
    // today from a hot key); after a save the marks and the panel follow.
    void NewSchedule(const QDate& day);
    void NewTask(const QDate& day);

    // The windows of the later parts of the program, one function each (FrmMainWindows.cpp).
    // Each is reached from every place that opens that window, so filling it in once wires
    // the menu, the links, the tray and the hot keys together.
    // The list of entries from `from` to `to`: "一覧表示" (today to a month on), LabMore
    // (the selected day alone), the list hot key.
    void OpenList(const QDate& from, const QDate& to);
    // The day-off dialog ("休日設定"); the marks are redrawn after it closes.
    void OpenDayOffs();
    // A new empty sticky note in a random colour: "付箋紙の新規作成" of the sub-menu and of
    // the tray menu, and the sticky-note hot key.
    void NewEmptyStickyNote();
    // A new sticky note with this text and colour (an editor's "付箋紙" option); fills the
    // hand-over slot 0 and opens the note it describes.
    void NewStickyNoteFrom(const QString& text, int colorIndex);
    // Opens the note described in slot 0 of the slot table.
    void NewStickyNote();
    // "設定": hot keys off, the settings dialog, hot keys on again, then either the end of
    // the program (a backup was restored) or the new design applied.
    void OpenSettings();
    // The settings' steps: the capture field must see every combination while the dialog
    // is up, so the hot keys are released before it opens and taken again after.
    void UnregisterHotKeys();
    void ShowSettingsDialog();
    // Reads the hot-key rows; raises DatabaseError when they cannot be read.
    void RegisterHotKeys();

    // The alarm: the 30-second tick of Timer, and the call a window makes after it changed
    // entries or settings, so that the next alarm is armed for its new moment.
    void Timer_Timer();
    void RearmAlarms();
    AlarmEngine* alarms() const { return m_alarms; }

    HalvernCalendar* calendar() const { return m_calendar; }
    // The notes on the desktop and their saving.
    StickyNotes* stickyNotes() const { return m_notes; }
    int PanelEntryId(int row) const { return m_panelEntryId.at(static_cast<size_t>(row)); }
    QString PanelEntryData(int row) const { return m_panelEntryData.at(static_cast<size_t>(row)); }
    QColor LabelForeColor() const { return m_labelForeColor; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // "常駐": the close box hides the window in the tray instead of ending the program.
    bool residentOption();
    void AddTrayIcon();
    void RemoveTrayIcon();
    bool trayAvailable() const;
    void buildControls();
    void onDayChanged();
    void onMonthChanged();
    // Runs a refresh of the grid (wholeMonth) or of the panel; a failure leaves the view
    // empty rather than showing another day's data, and the next tick of FollowClock tries again.
    void refreshView(bool wholeMonth);
    void ClearDayPanel();
    void ElidePanelSubject(int row);
    // Shrinks the design's fonts for this window only, as far as needed for the window to
    // fit its screen: a huge font in a design row must not push the window off it.
    void FitDesignToScreen();
    void FixPanelRowHeights();
    // Keeps the grid's today on the clock's today without any input: at midnight, and
    // within a minute of a wake from sleep or a change of the clock.
    void FollowClock();
    void scheduleClockCheck();
    void setAlwaysOnTop(bool onTop);
    // The menus, the links, the panel's entry labels and the tray (FrmMainMenus.cpp).
    void buildMenus();
    void wireTrayIcon();
    // Pops the menu up under the control and answers the word its chosen item left.
    QString popUp(QMenu* menu, QWidget* under);
    void LabMenu_Click();
    void LabJump_Click();
    void LabScaedule_Click();
    void LabMore_Click();
    void LabHelp_Click();
    void MnuToday_Click();
    void MnuMonth_Click(int month);
    void LabYotei_Click(int index);
    void LabYotei_MouseDown(int index);
    void deletePanelEntry(int index);
    void TrayIcon_Activated(QSystemTrayIcon::ActivationReason reason);
    void OpenOnlineHelp();
    void OpenVersion();

    // The editors as the main window opens them: busy while they are up; after a save
    // the marks and the panel follow and a requested sticky note opens. Answer whether
    // the editor saved.
    bool runScheduleEditor(ScheduleHandOver& handOver);
    bool runTaskEditor(TaskHandOver& handOver);

    AppServices& m_app;
    std::unique_ptr<SingleInstance> m_instance;
    // The hot keys held while the program runs (a child; none before the first registration).
    GlobalHotKeys* m_hotKeys = nullptr;
    QSystemTrayIcon* m_tray = nullptr;
    StickyNotes* m_notes = nullptr;

    // Controls, under their own names.
    QTimer* Timer = nullptr;
    AlarmEngine* m_alarms = nullptr;
    HalvernCalendar* m_calendar = nullptr;
    std::array<QLabel*, PanelRows> LabTime{};
    std::array<LinkLabel*, PanelRows> LabYotei{};
    QFrame* LinLine = nullptr;
    LinkLabel* LabMore = nullptr;
    LinkLabel* LabMenu = nullptr;
    LinkLabel* LabJump = nullptr;
    LinkLabel* LabScaedule = nullptr;
    LinkLabel* LabHelp = nullptr;

    MainMenus m_menus;

    // What each panel row shows (0 / "" when empty), for the click and drag handlers.
    std::array<int, PanelRows> m_panelEntryId{};
    std::array<QString, PanelRows> m_panelEntryData{};
    std::array<QString, PanelRows> m_panelSubject{}; // whole, before eliding
    QColor m_labelForeColor;
    // What the panel shows now: a refresh for the same day over unchanged data is skipped
    // (turning a page refreshes the panel once from the month and once from the day).
    struct PanelKey
    {
        QString connection;
        quint64 generation = 0;
        QDate day;
        bool operator==(const PanelKey& other) const
        {
            return connection == other.connection && generation == other.generation && day == other.day;
        }
    };
    PanelKey m_panelShown;

    bool openDatabase();
    bool refuseStart(const QString& message, int exitCode);
    int m_loadExitCode = 0;

    QTimer* m_clockTimer = nullptr;
    QDate m_today;
    bool m_viewStale = false;
    bool m_staleReported = false;
    QDate m_staleDay;

    bool m_loading = false;
    UnloadMode m_pendingMode = UnloadMode::FormControlMenu;
    bool m_modePending = false;
    bool m_unloaded = false;
    int m_trayAvailableOverride = -1;
};
