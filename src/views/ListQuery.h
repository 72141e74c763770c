#pragma once

#include <QDate>
#include <QString>

// What the list window can show, in the order of its choice box.
enum class ListChoice
{
    SchedulesAndTasks = 0, // "スケジュール＆タスク"
    Schedules = 1,         // "スケジュール"
    OpenTasks = 2,         // "タスク"
    CompletedTasks = 3,    // "完了済タスク"
};

// The widest range there is: an empty range box stands for its end of it, and the
// completed tasks are listed over all of it whatever the boxes hold.
QDate ListRangeFirst();
QDate ListRangeLast();

// The entries of one choice within [from, to], ordered by start date, start time and
// priority (tasks, which have no start date, come first). One-day and open-ended schedules
// are listed by their start date, spans when they overlap the range, tasks by deadline.
QString ListEntrySql(ListChoice choice, const QDate& from, const QDate& to);
