#include "entries/EntryKinds.h"

#include "store/Rows.h"

namespace {

QString TimeKind(QChar family, const QString& startTime, const QString& endTime)
{
    // Five cases for one-day and open-ended entries: the equal-times case gets its own code.
    if (startTime.isEmpty() && endTime.isEmpty())
        return QString(family) + QLatin1Char('1');
    if (startTime.isEmpty())
        return QString(family) + QLatin1Char('2');
    if (endTime.isEmpty())
        return QString(family) + QLatin1Char('3');
    if (endTime != startTime)
        return QString(family) + QLatin1Char('4');
    return QString(family) + QLatin1Char('5');
}

QString SpanKind(QChar family, const QString& startTime, const QString& endTime)
{
    // Spanning entries have no equal-times case: equal times on different days are both given.
    if (startTime.isEmpty() && endTime.isEmpty())
        return QString(family) + QLatin1Char('1');
    if (startTime.isEmpty())
        return QString(family) + QLatin1Char('2');
    if (endTime.isEmpty())
        return QString(family) + QLatin1Char('3');
    return QString(family) + QLatin1Char('4');
}

bool IsOneOf(const QString& kind, std::initializer_list<const char*> codes)
{
    for (const char* code : codes) {
        if (kind == QLatin1String(code))
            return true;
    }
    return false;
}

} // namespace

QString KindCode(const QString& startDate, const QString& startTime, const QString& endDate, const QString& endTime)
{
    if (endDate == startDate)
        return TimeKind(QLatin1Char('A'), startTime, endTime);
    if (startDate.isEmpty())
        return endTime.isEmpty() ? QStringLiteral("T1") : QStringLiteral("T2");
    if (endDate.isEmpty())
        return TimeKind(QLatin1Char('D'), startTime, endTime);

    const QDate start = StoredDateToDate(startDate);
    const QDate end = StoredDateToDate(endDate);
    if (!start.isValid() || !end.isValid())
        return QString();
    const QChar family = start.daysTo(end) == 1 ? QLatin1Char('B') : QLatin1Char('C');
    return SpanKind(family, startTime, endTime);
}

QDate StoredDateToDate(const QString& stored)
{
    if (stored.isEmpty())
        return QDate(100, 1, 1);
    if (stored.size() != 8)
        return QDate();
    for (const QChar c : stored) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return QDate();
    }
    const int year = QStringView(stored).mid(0, 4).toInt();
    const int month = QStringView(stored).mid(4, 2).toInt();
    const int day = QStringView(stored).mid(6, 2).toInt();
    return QDate(year, month, day); // invalid when the parts make no date
}

QString DateToStored(const QDate& date)
{
    if (!date.isValid())
        return QString();
    return date.toString(QStringLiteral("yyyyMMdd"));
}

QString ShortDayText(const QString& storedDate)
{
    const QDate date = StoredDateToDate(storedDate);
    if (!date.isValid())
        return QString();
    QString text = date.toString(QStringLiteral("MM/dd"));
    if (text.at(0) == QLatin1Char('0'))
        text[0] = QLatin1Char(' ');
    if (text.at(3) == QLatin1Char('0'))
        text[3] = QLatin1Char(' ');
    return text;
}

QString ShortTimeText(const QString& storedTime)
{
    QString text = storedTime;
    if (text.startsWith(QLatin1Char('0')))
        text[0] = QLatin1Char(' ');
    return text;
}

QString EntryLineText(const QDate& day, const QString& STARTDT, const QString& STARTTM, const QString& ENDDT,
                      const QString& ENDTM, const QString& FROMTOKBN, const QString& COMPLETION)
{
    // The done flag is deliberately not part of the time text.
    Q_UNUSED(COMPLETION)
    static const QString arrowPad = QStringLiteral("      ->");
    static const QString dashPad = QStringLiteral("      - ");
    const QString today = DateToStored(day);
    if (today.isEmpty() || FROMTOKBN.size() != 2)
        return QString();

    switch (FROMTOKBN.at(0).unicode()) {
    case 'A':
    case 'D':
        if (today != STARTDT)
            return QString();
        if (IsOneOf(FROMTOKBN, {"A1", "D1"}))
            return QString();
        if (IsOneOf(FROMTOKBN, {"A3", "A5", "D3", "D5"}))
            return ShortTimeText(STARTTM);
        if (IsOneOf(FROMTOKBN, {"A4", "D4"}))
            return ShortTimeText(STARTTM) + QStringLiteral(" - ") + ShortTimeText(ENDTM);
        if (IsOneOf(FROMTOKBN, {"A2", "D2"}))
            return dashPad + ShortTimeText(ENDTM); // lines the end time up under A4/D4 lines
        return QString();
    case 'B':
    case 'C': {
        if (!IsOneOf(FROMTOKBN, {"B1", "B2", "B3", "B4", "C1", "C2", "C3", "C4"}))
            return QString();
        const bool hasStartTime = IsOneOf(FROMTOKBN, {"B3", "B4", "C3", "C4"});
        const bool hasEndTime = IsOneOf(FROMTOKBN, {"B2", "B4", "C2", "C4"});
        if (today == STARTDT) {
            const QString head = hasStartTime ? ShortTimeText(STARTTM) : ShortDayText(STARTDT);
            return head + QStringLiteral(" - ") + ShortDayText(ENDDT);
        }
        // Stored dates compare in date order as text.
        if (today < STARTDT || today > ENDDT)
            return QString();
        if (today == ENDDT && hasEndTime)
            return ShortDayText(STARTDT) + QStringLiteral(" ->") + ShortTimeText(ENDTM);
        return ShortDayText(STARTDT) + QStringLiteral(" ->") + ShortDayText(ENDDT);
    }
    case 'T':
        if (today != ENDDT)
            return QString();
        if (FROMTOKBN == QLatin1String("T1"))
            return arrowPad + ShortDayText(ENDDT);
        if (FROMTOKBN == QLatin1String("T2"))
            return arrowPad + ShortTimeText(ENDTM);
        return QString();
    default:
        return QString();
    }
}

QString EntryLineText(const QDate& day, const Row& entry)
{
    return EntryLineText(day, entry.text(QStringLiteral("STARTDT")), entry.text(QStringLiteral("STARTTM")),
                         entry.text(QStringLiteral("ENDDT")), entry.text(QStringLiteral("ENDTM")),
                         entry.text(QStringLiteral("FROMTOKBN")), entry.text(QStringLiteral("COMPLETION")));
}
