#include "views/ListQuery.h"

#include "entries/EntryKinds.h"
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
    const QString f = QuoteText(DateToStored(from));
    const QString t = QuoteText(DateToStored(to));
    const QString a = QStringLiteral("(('A1' <= FROMTOKBN AND FROMTOKBN <= 'A5') AND (STARTDT >= ") + f +
                      QStringLiteral(" AND STARTDT <= ") + t + QStringLiteral(")) ");
    const QString d = QStringLiteral("(('D1' <= FROMTOKBN AND FROMTOKBN <= 'D5') AND (STARTDT >= ") + f +
                      QStringLiteral(" AND STARTDT <= ") + t + QStringLiteral(")) ");
    const QString b = QStringLiteral("(('B1' <= FROMTOKBN AND FROMTOKBN <= 'B4') AND (STARTDT <= ") + t +
                      QStringLiteral(" AND ENDDT >= ") + f + QStringLiteral(")) ");
    const QString c = QStringLiteral("(('C1' <= FROMTOKBN AND FROMTOKBN <= 'C4') AND (STARTDT <= ") + t +
                      QStringLiteral(" AND ENDDT >= ") + f + QStringLiteral(")) ");
    const QString tasks = QStringLiteral("(('T1' <= FROMTOKBN AND FROMTOKBN <= 'T2') AND (ENDDT >= ") + f +
                          QStringLiteral(" AND ENDDT <= ") + t + QStringLiteral(")) ");
    const QString openTasks = QStringLiteral("(('T1' <= FROMTOKBN AND FROMTOKBN <= 'T2') AND (ENDDT >= ") + f +
                              QStringLiteral(" AND ENDDT <= ") + t + QStringLiteral(") AND COMPLETION = '0') ");
    const QString schedules = a + QStringLiteral("OR ") + d + QStringLiteral("OR ") + b + QStringLiteral("OR ") + c;

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
