#pragma once

#include <QAccessibleWidget>
#include <QDate>
#include <QHash>
#include <QPointer>

class HalvernCalendar;

// What a screen reader says for one day of the grid: "2026年11月22日 日曜日", then "予定あり"
// when the day carries entries, then the national holiday's name when it is one, then the
// day-off's name when it is one ("休日" when it has no name); a day-off named as the
// holiday it falls on is said once.
QString DayAccessibleName(const QDate& date, bool hasEntries, bool isDayOff, const QString& dayOffName,
                          const QString& holidayName);

// The month grid as assistive technology sees it: a table of six weeks by seven days, each
// cell a day named as above, selected when it is the selected day; "press" selects it.
class CalendarAccessible final : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit CalendarAccessible(HalvernCalendar* calendar);
    ~CalendarAccessible() override;

    void* interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text t) const override;

    // The table.
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override { return 1; }
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return QString(); }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    HalvernCalendar* calendar() const;
    // One interface per grid position, made on first use and kept: the position stays, its
    // day changes with the month.
    mutable QHash<int, QAccessible::Id> m_cells;
};

// Tells assistive technology that the days' names and the selection changed.
void NotifyCalendarCellsChanged(HalvernCalendar* calendar);

// The grid's interface is made by a factory that is installed once, on the first calendar.
void InstallCalendarAccessibility();
