// The commands the links, the tray and the hot keys share: the window brought back, and
// the entry editors opened from the main window.
#include "mainwindow/FrmMain.h"

#include "common/AppServices.h"
#include "common/UserAction.h"
#include "entries/FrmSchedule.h"
#include "entries/FrmTask.h"

void FrmMain::ShowCalendar()
{
    // Out of the tray (hidden and minimised) or from under other windows alike.
    showNormal();
    raise();
    activateWindow();
}

void FrmMain::NewSchedule(const QDate& day)
{
    ScheduleHandOver handOver;
    handOver.ScheduleEditMode = QStringLiteral("ADD");
    handOver.ScheduleDate = day;
    runScheduleEditor(handOver);
}

void FrmMain::NewTask(const QDate& day)
{
    TaskHandOver handOver;
    handOver.TaskEditMode = QStringLiteral("ADD");
    handOver.TaskDate = day;
    runTaskEditor(handOver);
}

bool FrmMain::runScheduleEditor(ScheduleHandOver& handOver)
{
    handOver.ScheduleSaved = false;
    {
        MainWindowBusy busy(m_app.state);
        FrmSchedule editor(m_app, handOver, this);
        editor.exec();
    }
    // The tray's exit may have ended the program while the editor was up.
    if (m_unloaded || !handOver.ScheduleSaved)
        return false;
    RunUserAction(m_app, this, [this] { RefreshMonthMarks(); });
    RearmAlarms();
    if (handOver.PostRequested)
        NewStickyNoteFrom(handOver.PostText, handOver.PostColorIndex);
    return true;
}

bool FrmMain::runTaskEditor(TaskHandOver& handOver)
{
    handOver.TaskSaved = false;
    {
        MainWindowBusy busy(m_app.state);
        FrmTask editor(m_app, handOver, this);
        editor.exec();
    }
    if (m_unloaded || !handOver.TaskSaved)
        return false;
    RunUserAction(m_app, this, [this] { RefreshMonthMarks(); });
    RearmAlarms();
    if (handOver.TaskPostRequested)
        NewStickyNoteFrom(handOver.TaskPostText, handOver.TaskPostColorIndex);
    return true;
}
