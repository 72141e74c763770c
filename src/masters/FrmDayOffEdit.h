#pragma once

#include <QDialog>
#include <QString>

#include <memory>

struct AppServices;

namespace Ui {
class FrmDayOffEdit;
}

// What the day-off list hands to the edit dialog and reads back after it closed.
struct DayOffHandOver
{
    bool DayOffOK = false; // out: OK was pressed on an accepted date
    QString DayOffMode;    // "INSERT" or "UPDATE"
    QString DayOffCaption;
    int DayOffMonth = 1; // in: the date to preselect; out: the date chosen
    int DayOffDay = 1;
    QString DayOffRemark; // out: the remark typed
};

// One yearly day-off: month, day and a remark. OK accepts only a date that exists in the
// current year (so 29 February only in a leap year) and, for a new day-off, only a date not
// registered yet; a day-off being edited may be moved onto a date that already has one.
class FrmDayOffEdit final : public QDialog
{
    Q_OBJECT
public:
    FrmDayOffEdit(AppServices& app, DayOffHandOver& handOver, QWidget* parent = nullptr);
    ~FrmDayOffEdit() override;

private:
    void Form_Load();
    void ComOK_Click();

    AppServices& m_app;
    DayOffHandOver& m_handOver;
    std::unique_ptr<Ui::FrmDayOffEdit> m_ui;
};
