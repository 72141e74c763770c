#pragma once

#include <QDialog>

class HalvernCalendar;
class LinkLabel;
class QPushButton;
struct AppServices;
struct DatePickHandOver;

// The pop-up date picker: one month of the calendar, a link to today and a cancel button.
// A click on a day picks it and closes; so does the link; cancel, Escape or a click
// outside close without picking.
class FrmDate final : public QDialog
{
    Q_OBJECT
public:
    FrmDate(AppServices& app, DatePickHandOver& handOver, QWidget* parent = nullptr);

    HalvernCalendar* calendar() const { return m_calendar; }

private:
    void Form_Load();
    void HalvernCalendar_DateClick();
    void LabToday_Click();
    void ComCancel_Click();

    AppServices& m_app;
    DatePickHandOver& m_handOver;
    HalvernCalendar* m_calendar = nullptr;
    LinkLabel* LabToday = nullptr;
    QPushButton* ComCancel = nullptr;
};
