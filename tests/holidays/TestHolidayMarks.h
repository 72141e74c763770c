#pragma once

#include <QObject>

// Holidays on the month grid: which shown days carry them, the switch, and the painting.
class TestHolidayMarks final : public QObject
{
    Q_OBJECT

private slots:
    void neighbouringMonthsToo();
    void showSetting_data();
    void showSetting();
    void paintHolidayAndDayOff();
};
