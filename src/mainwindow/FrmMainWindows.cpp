// The windows of the list, the day-offs, the sticky notes and the settings, as the main
// window opens them. Every way into one of them (menu, link, tray, hot key) comes through
// its one function here; until a window exists its function opens nothing.
#include "mainwindow/FrmMain.h"

#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/RandomSource.h"
#include "common/UserAction.h"
#include "masters/FrmDayOff.h"
#include "notes/StickyNotes.h"
#include "settings/FrmSetting.h"
#include "settings/GlobalHotKeys.h"
#include "views/FrmList.h"

void FrmMain::OpenList(const QDate& from, const QDate& to)
{
    MainWindowBusy busy(m_app.state);
    ListHandOver handOver;
    handOver.ListFromDate = from;
    handOver.ListToDate = to;
    // The month behind the list, and the next alarm, follow every change made from it at
    // once: the list may stay open past the moment of an entry just deleted or moved.
    handOver.EntriesChanged = [this] {
        RunUserAction(m_app, this, [this] { RefreshMonthMarks(); });
        RearmAlarms();
    };
    handOver.NewStickyNote = [this](const QString& text, int colorIndex) { NewStickyNoteFrom(text, colorIndex); };
    FrmList list(m_app, handOver, this);
    list.exec();
}

void FrmMain::OpenDayOffs()
{
    {
        MainWindowBusy busy(m_app.state);
        FrmDayOff dayOffs(m_app, this);
        dayOffs.exec();
    }
    RunUserAction(m_app, this, [this] { RefreshMonthMarks(); });
}

void FrmMain::NewEmptyStickyNote()
{
    // Seven note colours, 0 to 6, chosen at random.
    const double draw = m_app.random ? m_app.random->next() : 0.0;
    NewStickyNoteFrom(QString(), qBound(0, static_cast<int>(draw * 7), 6));
}

void FrmMain::NewStickyNoteFrom(const QString& text, int colorIndex)
{
    // Slot 0's place stays as it was: a new note opens where the last handed-over one did.
    StickyNoteSlot& handOver = m_app.state.StickyNotes[0];
    handOver.text = text;
    handOver.colorIndex = colorIndex;
    NewStickyNote();
}

void FrmMain::NewStickyNote()
{
    // The note described in slot 0 opens in the lowest free slot; a 31st is refused.
    m_notes->NewStickyNote(this);
}

void FrmMain::OpenSettings()
{
    UnregisterHotKeys();
    {
        MainWindowBusy busy(m_app.state);
        ShowSettingsDialog();
    }
    RunUserAction(m_app, this, [this] { RegisterHotKeys(); });
    if (m_app.state.RestoreDone) {
        // The data under the program was replaced; the user starts it again.
        RequestShutdown(UnloadMode::FormCode);
        return;
    }
    // The first day of the week may have moved the grid: the marks follow it.
    RunUserAction(m_app, this, [this] {
        ApplyTransparency();
        ApplyDesignSettings();
        RefreshMonthMarks();
    });
    RearmAlarms(); // the advance time may have changed
}

void FrmMain::UnregisterHotKeys()
{
    if (m_hotKeys)
        m_hotKeys->UnregisterHotKeys();
}

void FrmMain::ShowSettingsDialog()
{
    FrmSetting dialog(m_app, this);
    dialog.exec();
}

void FrmMain::RegisterHotKeys()
{
    if (!m_hotKeys) {
        // In the order of the hot-key rows. Each reads "today" when the key is pressed.
        GlobalHotKeys::Actions actions = {
            [this] { ShowCalendar(); },
            [this] { NewSchedule(m_app.clock->today()); },
            [this] { NewTask(m_app.clock->today()); },
            [this] { NewEmptyStickyNote(); },
            [this] {
                const QDate today = m_app.clock->today();
                OpenList(today, today.addMonths(1));
            },
        };
        m_hotKeys = new GlobalHotKeys(m_app, std::move(actions), this);
    }
    m_hotKeys->RegisterHotKeys();
}
