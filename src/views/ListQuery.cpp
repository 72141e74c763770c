#include "views/ListQuery.h"

#include "entries/EntryKinds.h"
#include "entries/EntryQueries.h"
#include "store/SqlText.h"

QDate ListRangeFirst()
{
    return QDate(100, 1, 1);
}

QDate ListRangeLast()
{
    return QDate(9999, 12, 31);
}

QString ListEntrySql(ListChoice choice, const QDate& from, const QDate& to)
{
    const EntryRangeConditions range(from, to);
    const QString schedules = range.schedules();
    const QString tasks = range.tasks();
    const QString openTasks = range.tasks(QStringLiteral(" AND COMPLETION = '0'"));

    QString where;
    switch (choice) {
    case ListChoice::SchedulesAndTasks:
        where = schedules + QStringLiteral("OR ") + openTasks;
        break;
    case ListChoice::Schedules:
        where = schedules;
        break;
    case ListChoice::OpenTasks:
        where = tasks + QStringLiteral("AND ") + QStringLiteral("COMPLETION = '0' ");
        break;
    case ListChoice::CompletedTasks:
        where = tasks + QStringLiteral("AND ") + QStringLiteral("COMPLETION = '1' ");
        break;
    }
    return QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNSCHTSK ") + QStringLiteral("WHERE ") + where +
           QStringLiteral("ORDER BY STARTDT,STARTTM,PRIORITY ");
}
