#pragma once

#include "calendarcontrol/CalendarLayout.h"
#include "calendarcontrol/SpotDesign.h"

#include <QDate>
#include <QHash>
#include <QSet>
#include <QWidget>

#include <functional>

class QPainter;

// The month calendar: a title bar with the year and month and arrows to the neighbouring
// months, a weekday header, and a six-week grid of days. Days carrying entries and days
// off are marked; the look of every part comes from the design rows (see CalendarDesign).
//
// The shown month is always the month of CurrentDate(): moving to another month moves the
// selected day with it. When both change, monthChanged comes before dateChanged, so that a
// listener refreshing the month already sees the new grid when the day refresh follows.
class HalvernCalendar final : public QWidget
{
    Q_OBJECT
public:
    using TodayProvider = std::function<QDate()>;
    using DayToolTipProvider = std::function<QString(const QDate&)>;

    explicit HalvernCalendar(QWidget* parent = nullptr);

    QDate CurrentDate() const { return m_current; }
    // Selects date and shows its month. An invalid date is ignored.
    void setCurrentDate(const QDate& date);
    int shownYear() const { return m_current.year(); }
    int shownMonth() const { return m_current.month(); }
    QDate FirstShownDate() const { return m_firstShown; }
    QDate LastShownDate() const { return m_firstShown.addDays(CalendarLayout::ShownDays - 1); }
    bool isShown(const QDate& date) const;

    // Marks outside the grid are ignored: only shown days can carry a mark.
    void ClearEntryMarks();
    void MarkEntryDay(const QDate& date);
    void ClearDayOffMarks();
    // name: what the day-off is called (read out by screen readers); may be empty.
    void MarkDayOff(const QDate& date, const QString& name = QString());
    bool isEntryDay(const QDate& date) const { return m_entryDays.contains(date); }
    bool isDayOff(const QDate& date) const { return m_dayOffs.contains(date); }
    QString dayOffName(const QDate& date) const { return m_dayOffNames.value(date); }

    // National holidays are marked on every day the grid shows, the neighbouring months'
    // days included, unless switched off by the settings.
    bool holidaysShown() const { return m_holidaysShown; }
    void setHolidaysShown(bool shown);
    // The name of the holiday on a shown day while holidays are shown; empty otherwise.
    QString holidayName(const QDate& date) const { return m_holidays.value(date); }

    QString TitleFormat() const { return m_titleFormat; }
    void setTitleFormat(const QString& format);
    // 1 = Sunday ... 7 = Saturday; other values mean Sunday.
    int FirstDayOfWeek() const { return m_firstDayOfWeek; }
    void setFirstDayOfWeek(int firstDayOfWeek);
    // How Sunday looks in the wanted style ("日", "(日)", "Sun", ...).
    QString WeekdayFormat() const { return m_weekdayFormat; }
    void setWeekdayFormat(const QString& format);
    // What the title bar and the header show now.
    QString titleText() const;
    QStringList weekdayHeaders() const; // in column order

    void setSpotDesign(int code, const SpotDesign& design);
    SpotDesign spotDesign(int code) const;
    QColor gridLineColor() const { return m_gridLineColor; }
    void setGridLineColor(const QColor& color);

    // The owner tells the calendar which day is today (for the today mark and Home).
    // Without a provider there is no today: no mark, and Home does nothing.
    void setTodayProvider(TodayProvider provider);
    void setToday(const QDate& date);
    // The text shown when the pointer rests on a day, under the holiday's name ("" adds nothing).
    void setDayToolTipProvider(DayToolTipProvider provider) { m_dayToolTip = std::move(provider); }
    QDate today() const;

    // Where things are, in widget coordinates (empty for a day outside the grid).
    QRect dayRect(const QDate& date) const;
    QDate dateAt(const QPoint& point) const;
    QRect previousMonthButtonRect() const;
    QRect nextMonthButtonRect() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Move the selection by months, keeping the day (clamped to the target month).
    void showPreviousMonth();
    void showNextMonth();
    // Selects today, when the owner has said which day that is.
    void goToToday();

signals:
    void dateChanged(const QDate& date);
    void monthChanged(int year, int month);
    // A day was clicked (or confirmed with Enter); the day is already selected.
    void dateClicked(const QDate& date);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    CalendarLayout::Geometry geometryFor(const QSize& size) const;
    CalendarLayout::Geometry currentGeometry() const { return geometryFor(size()); }
    int titleHeight() const;
    int headerHeight() const;
    QSize cellSizeHint() const;
    void moveBy(int days);
    void moveByMonths(int months);
    void pruneMarks();
    // Screen readers hear of changed days once per turn of the event loop, not per mark.
    void scheduleAccessibleUpdate();
    void refreshHolidays();

    // Painting (HalvernCalendarPaint.cpp).
    void paintTitle(QPainter& painter, const CalendarLayout::Geometry& g) const;
    void paintArrow(QPainter& painter, const QRect& rect, bool pointsLeft, bool hovered) const;
    void paintHeader(QPainter& painter, const CalendarLayout::Geometry& g) const;
    void paintDay(QPainter& painter, const QRect& cell, const QDate& date, const QDate& today) const;
    void paintGridLines(QPainter& painter, const CalendarLayout::Geometry& g) const;
    QColor dayTextColor(const QDate& date) const;

    QDate m_current;
    QDate m_firstShown;
    QSet<QDate> m_entryDays;
    QSet<QDate> m_dayOffs;
    QHash<QDate, QString> m_dayOffNames;
    bool m_accessibleUpdatePending = false;
    bool m_holidaysShown = true;
    QHash<QDate, QString> m_holidays; // the holidays of the shown grid
    QString m_titleFormat;
    int m_firstDayOfWeek = 1;
    QString m_weekdayFormat;
    QHash<int, SpotDesign> m_spots;
    QColor m_gridLineColor;
    TodayProvider m_today;
    DayToolTipProvider m_dayToolTip;
    QDate m_pressedDate;
    QDate m_hoverDate;
    int m_hoverArrow = 0; // -1 previous, 1 next, 0 none
    int m_wheelRemainder = 0;
};
