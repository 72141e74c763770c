#include "calendarcontrol/CalendarDesign.h"

#include "calendarcontrol/HalvernCalendar.h"
#include "common/Units.h"
#include "store/DatabaseConnection.h"

namespace {

// Spot 140 belongs to the main window's panel; the calendar's own spots end below it.
constexpr int LastCalendarSpot = 135;

// Booleans may have been stored as numbers or as the words True / False.
bool StoredFlag(const Row& row, const QString& column)
{
    const QVariant value = row.value(column);
    if (value.isNull())
        return false;
    const QString text = value.toString().trimmed();
    if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        return true;
    bool numeric = false;
    const double number = text.toDouble(&numeric);
    return numeric && number != 0.0;
}

// The text of the choice row that the option row optionCode points to, when both exist.
bool ReadChoiceText(DatabaseConnection& db, int optionCode, QString* text)
{
    const Rows option = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = ") +
                                    QString::number(optionCode) + QStringLiteral(" "));
    if (option.empty())
        return false;
    const Rows choice = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = ") +
                                    QString::number(option.front().number(QStringLiteral("DATAN1"))));
    if (choice.empty())
        return false;
    *text = choice.front().text(QStringLiteral("DATAS1"));
    return true;
}

SpotDesign DesignFromRow(const Row& row, SpotDesign design)
{
    design.back = Units::ColorFromStored(row.number(QStringLiteral("BACKCOLOR")));
    design.text = Units::ColorFromStored(row.number(QStringLiteral("FORECOLOR")));
    const QString family = row.text(QStringLiteral("FOREFONT")).trimmed();
    if (!family.isEmpty())
        design.font.setFamily(family);
    const double size = row.real(QStringLiteral("FSIZE"));
    if (size > 0)
        design.font.setPointSizeF(size);
    design.font.setBold(StoredFlag(row, QStringLiteral("FBOLD")));
    design.font.setItalic(StoredFlag(row, QStringLiteral("FITALIC")));
    return design;
}

} // namespace

void ApplyCalendarDesign(DatabaseConnection& db, HalvernCalendar& calendar)
{
    QString text;
    if (ReadChoiceText(db, 301, &text))
        calendar.setTitleFormat(text);

    const Rows firstWeek = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 302 "));
    if (!firstWeek.empty())
        calendar.setFirstDayOfWeek(static_cast<int>(firstWeek.front().number(QStringLiteral("DATAN1"))));

    if (ReadChoiceText(db, 303, &text))
        calendar.setWeekdayFormat(text);

    calendar.setGridLineColor(Units::ColorFromStored(0xE0E0E0));

    // "祝日を表示": holidays are shown unless the row says 0; a database from before the
    // option has no row and shows them.
    const Rows holidays = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 317 "));
    calendar.setHolidaysShown(holidays.empty() || holidays.front().number(QStringLiteral("DATAN1")) != 0);

    const Rows spots = db.ReadRows(QStringLiteral("SELECT * "
                                                  "FROM TRNCOLOR "
                                                  "WHERE SETNUM = 0 "
                                                  "ORDER BY CODE "));
    for (const Row& row : spots) {
        const int code = static_cast<int>(row.number(QStringLiteral("CODE")));
        if (code < CalendarSpot::Title || code > LastCalendarSpot)
            continue;
        calendar.setSpotDesign(code, DesignFromRow(row, calendar.spotDesign(code)));
    }
}
