#pragma once

#include <QDate>
#include <QString>

// What a caller hands to the schedule editor and gets back from it. Owned by the caller,
// set before the editor is shown and read after it closed.
struct ScheduleHandOver
{
    QString ScheduleEditMode; // "ADD" or "UPD"
    int ScheduleEditId = 0;   // in for "UPD"; out: the new row's ID after "ADD"
    QDate ScheduleDate;       // the day a new schedule starts on
    bool ScheduleSaved = false;
    // A sticky note the caller should open once the editor closed.
    bool PostRequested = false;
    QString PostText;
    int PostColorIndex = 0;
};

// The same for the task editor.
struct TaskHandOver
{
    QString TaskEditMode; // "ADD" or "UPD"
    int TaskEditId = 0;
    QDate TaskDate; // the day a new task is due
    bool TaskSaved = false;
    bool TaskPostRequested = false;
    QString TaskPostText;
    int TaskPostColorIndex = 0;
};
