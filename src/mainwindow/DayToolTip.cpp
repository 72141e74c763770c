#include "mainwindow/DayToolTip.h"

#include "entries/EntryKinds.h"
#include "entries/EntryQueries.h"
#include "store/DatabaseConnection.h"

namespace {

// A tooltip taller than this would cover the grid it explains.
constexpr int MostEntryLines = 10;

} // namespace

QStringList DayToolTipLines(DatabaseConnection& db, const QDate& day)
{
    QStringList lines;
    if (!day.isValid())
        return lines;
    for (const Row& row : db.ReadRows(DayOffQuerySql(day.month()))) {
        if (DayOffDate(day.year(), row.number(QStringLiteral("DATAN1")), row.number(QStringLiteral("DATAN2"))) != day)
            continue;
        const QString remark = row.text(QStringLiteral("DATAS1")).simplified();
        lines << (remark.isEmpty() ? QStringLiteral("休日") : QStringLiteral("休日: ") + remark);
    }
    int shown = 0;
    int more = 0;
    for (const Row& entry : db.ReadRows(DayQuerySql(day))) {
        if (!EntryRowIsReadable(entry))
            continue;
        if (shown == MostEntryLines) {
            ++more;
            continue;
        }
        const QString time = EntryLineText(day, entry).trimmed();
        lines << (time.isEmpty() ? QString() : time + QLatin1Char(' ')) + PanelSubject(entry);
        ++shown;
    }
    if (more > 0)
        lines << QStringLiteral("ほか %1 件").arg(more);
    return lines;
}

QString DayToolTipText(DatabaseConnection& db, const QDate& day)
{
    return DayToolTipLines(db, day).join(QLatin1Char('\n'));
}
