#include "entries/EntryQueries.h"

#include "entries/EntryKinds.h"
#include "store/Rows.h"
#include "store/SqlText.h"
#include "store/StoreLog.h"

#include <QMutex>
#include <QSet>

namespace {

QString Literal(const QDate& date)
{
    return QuoteText(DateToStored(date));
}

} // namespace

EntryRangeConditions::EntryRangeConditions(const QDate& first, const QDate& last)
{
    const QString f = Literal(first);
    const QString l = Literal(last);
    const auto starts = [&](const char* from, const char* to) {
        return QStringLiteral("(('%1' <= FROMTOKBN AND FROMTOKBN <= '%2') AND (STARTDT >= ")
                   .arg(QLatin1String(from), QLatin1String(to)) +
               f + QStringLiteral(" AND STARTDT <= ") + l + QStringLiteral(")) ");
    };
    const auto overlaps = [&](const char* from, const char* to) {
        return QStringLiteral("(('%1' <= FROMTOKBN AND FROMTOKBN <= '%2') AND (STARTDT <= ")
                   .arg(QLatin1String(from), QLatin1String(to)) +
               l + QStringLiteral(" AND ENDDT >= ") + f + QStringLiteral(")) ");
    };
    oneDay = starts("A1", "A5");
    daily = starts("D1", "D5");
    span = overlaps("B1", "B4");
    repeated = overlaps("C1", "C4");
    m_deadline = QStringLiteral("(ENDDT >= ") + f + QStringLiteral(" AND ENDDT <= ") + l + QStringLiteral(")");
}

QString EntryRangeConditions::schedules() const
{
    return oneDay + QStringLiteral("OR ") + daily + QStringLiteral("OR ") + span + QStringLiteral("OR ") + repeated;
}

QString EntryRangeConditions::tasks(const QString& extra) const
{
    return QStringLiteral("(('T1' <= FROMTOKBN AND FROMTOKBN <= 'T2') AND ") + m_deadline + extra +
           QStringLiteral(") ");
}

QString MonthQuerySql(const QDate& first, const QDate& last)
{
    const EntryRangeConditions range(first, last);
    return QStringLiteral("SELECT * FROM TRNSCHTSK WHERE ") + range.schedules() + QStringLiteral("OR ") + range.tasks();
}

QString DayQuerySql(const QDate& day)
{
    const QString d = Literal(day);
    return QStringLiteral("SELECT * FROM TRNSCHTSK WHERE ") +
           QStringLiteral("(('A1' <= FROMTOKBN AND FROMTOKBN <= 'A5') AND (STARTDT = ") + d + QStringLiteral(")) ") +
           QStringLiteral("OR ") + QStringLiteral("(('D1' <= FROMTOKBN AND FROMTOKBN <= 'D5') AND (STARTDT = ") + d +
           QStringLiteral(")) ") + QStringLiteral("OR ") +
           QStringLiteral("(('B1' <= FROMTOKBN AND FROMTOKBN <= 'B4') AND (STARTDT <= ") + d +
           QStringLiteral(" AND ENDDT >= ") + d + QStringLiteral(")) ") + QStringLiteral("OR ") +
           QStringLiteral("(('C1' <= FROMTOKBN AND FROMTOKBN <= 'C4') AND (STARTDT <= ") + d +
           QStringLiteral(" AND ENDDT >= ") + d + QStringLiteral(")) ") + QStringLiteral("OR ") +
           QStringLiteral("(('T1' <= FROMTOKBN AND FROMTOKBN <= 'T2') AND (ENDDT = ") + d + QStringLiteral(")) ") +
           QStringLiteral("ORDER BY STARTDT,STARTTM,PRIORITY ");
}

QString DayOffQuerySql(int month)
{
    return QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 200 AND   DATAN1 = ") + QString::number(month) +
           QStringLiteral(" ");
}

QVector<QDate> EntryMarkDates(const QString& FROMTOKBN, const QString& STARTDT, const QString& ENDDT,
                              const QDate& first, const QDate& last)
{
    QVector<QDate> dates;
    if (!first.isValid() || !last.isValid() || first > last || FROMTOKBN.isEmpty())
        return dates;
    const auto inWindow = [&](const QDate& d) { return d.isValid() && d >= first && d <= last; };

    switch (FROMTOKBN.at(0).unicode()) {
    case 'A':
    case 'D': {
        const QDate start = StoredDateToDate(STARTDT);
        if (inWindow(start))
            dates.append(start);
        break;
    }
    case 'T': {
        const QDate deadline = StoredDateToDate(ENDDT);
        if (inWindow(deadline))
            dates.append(deadline);
        break;
    }
    case 'B':
    case 'C': {
        const QDate start = StoredDateToDate(STARTDT);
        const QDate end = StoredDateToDate(ENDDT);
        if (!start.isValid() || !end.isValid())
            break;
        // Only the part of the span inside the window can be marked.
        QDate day = qMax(start, first);
        const QDate stop = qMin(end, last);
        for (; day <= stop; day = day.addDays(1))
            dates.append(day);
        break;
    }
    default:
        break;
    }
    return dates;
}

QVector<QDate> EntryMarkDates(const Row& entry, const QDate& first, const QDate& last)
{
    return EntryMarkDates(entry.text(QStringLiteral("FROMTOKBN")), entry.text(QStringLiteral("STARTDT")),
                          entry.text(QStringLiteral("ENDDT")), first, last);
}

QDate DayOffDate(int year, qint64 month, qint64 day)
{
    if (month < 1 || month > 12 || day < 1 || day > 31)
        return QDate();
    const QDate date(year, static_cast<int>(month), static_cast<int>(day));
    return date.isValid() ? date : QDate();
}

QString PanelSubject(const Row& entry)
{
    QString subject = entry.text(QStringLiteral("BUSINESS"));
    subject.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (const QChar c : {QChar(u'\n'), QChar(u'\r'), QChar(u'\t'), QChar(0x2028), QChar(0x2029)})
        subject.replace(c, QLatin1Char(' '));
    if (entry.text(QStringLiteral("COMPLETION")) == QLatin1String("1"))
        return QStringLiteral("[済]") + subject;
    return subject;
}

namespace {

bool IsStoredDate(const QString& text)
{
    // The empty text converts to the no-date value, which no kind may stand on.
    return text.size() == 8 && StoredDateToDate(text).isValid();
}

bool IsStoredTimeOrEmpty(const QString& text)
{
    if (text.isEmpty())
        return true;
    if (text.size() != 5 || text.at(2) != QLatin1Char(':'))
        return false;
    bool hourOk = false;
    bool minuteOk = false;
    const int hour = QStringView(text).left(2).toInt(&hourOk);
    const int minute = QStringView(text).mid(3).toInt(&minuteOk);
    // "24:00" is how an entry ending at midnight is written.
    return hourOk && minuteOk && text.at(0).isDigit() && text.at(3).isDigit() && minute >= 0 && minute <= 59 &&
           hour >= 0 && (hour < 24 || (hour == 24 && minute == 0));
}

} // namespace

bool EntryRowIsReadable(const QString& FROMTOKBN, const QString& STARTDT, const QString& STARTTM, const QString& ENDDT,
                        const QString& ENDTM)
{
    if (FROMTOKBN.size() != 2 || !IsStoredTimeOrEmpty(STARTTM) || !IsStoredTimeOrEmpty(ENDTM))
        return false;
    const int number = FROMTOKBN.at(1).digitValue();
    switch (FROMTOKBN.at(0).unicode()) {
    case 'A':
        return number >= 1 && number <= 5 && IsStoredDate(STARTDT) && IsStoredDate(ENDDT);
    case 'D':
        return number >= 1 && number <= 5 && IsStoredDate(STARTDT);
    case 'B':
    case 'C':
        return number >= 1 && number <= 4 && IsStoredDate(STARTDT) && IsStoredDate(ENDDT);
    case 'T':
        return number >= 1 && number <= 2 && IsStoredDate(ENDDT);
    default:
        return false;
    }
}

bool EntryRowIsReadable(const Row& entry)
{
    if (EntryRowIsReadable(entry.text(QStringLiteral("FROMTOKBN")), entry.text(QStringLiteral("STARTDT")),
                           entry.text(QStringLiteral("STARTTM")), entry.text(QStringLiteral("ENDDT")),
                           entry.text(QStringLiteral("ENDTM"))))
        return true;
    static QMutex mutex;
    static QSet<qint64> logged;
    const qint64 id = entry.number(QStringLiteral("ID"));
    const QMutexLocker lock(&mutex);
    if (!logged.contains(id)) {
        logged.insert(id);
        qCWarning(lcStore) << "entry" << id << "cannot be read and is left out: kind"
                           << entry.text(QStringLiteral("FROMTOKBN")) << "start"
                           << entry.text(QStringLiteral("STARTDT")) << entry.text(QStringLiteral("STARTTM")) << "end"
                           << entry.text(QStringLiteral("ENDDT")) << entry.text(QStringLiteral("ENDTM"));
    }
    return false;
}
