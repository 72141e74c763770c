#pragma once

class DatabaseConnection;
class HalvernCalendar;

// Applies the stored calendar design to calendar: the title and weekday formats, the first
// day of the week, whether national holidays are shown, the grid line colour and the
// colours and fonts of every spot of the grid. The main window and the date picker share it, so both calendars look
// alike. A missing row leaves that part of the look as it was.
void ApplyCalendarDesign(DatabaseConnection& db, HalvernCalendar& calendar);
