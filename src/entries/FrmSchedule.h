#pragma once

#include "entries/EntryHandOver.h"

#include <QDialog>

#include <memory>

class LinkLabelGroup;
struct AppServices;

namespace Ui {
class FrmSchedule;
}

// "スケジュール": creates ("ADD") or changes ("UPD") one schedule. Validates, writes the
// row (and a class typed into the class box) in one transaction, and reports back through
// the hand-over: the saved flag, the row's ID and an optional sticky note.
// When the row to change no longer exists the dialog closes at once without a word.
class FrmSchedule final : public QDialog
{
    Q_OBJECT
public:
    FrmSchedule(AppServices& app, ScheduleHandOver& handOver, QWidget* parent = nullptr);
    ~FrmSchedule() override;

    // True when loading found nothing to edit; exec() then answers Rejected at once.
    bool closedOnLoad() const { return m_closeAtOnce; }
    int exec() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Form_Load();
    void ComOK_Click();
    void CmbStartTime_LostFocus();
    void CmbEndTime_LostFocus();
    void TxtStartDate_LostFocus();
    void TxtEndDate_GotFocus();
    void LabStartDate_Click();
    void LabEndDate_Click();
    void LabClass_Click();

    bool validate();
    bool save();
    QString postText() const;
    int todayYear() const;

    AppServices& m_app;
    ScheduleHandOver& m_handOver;
    std::unique_ptr<Ui::FrmSchedule> m_ui;
    LinkLabelGroup* m_links = nullptr;
    // UPDTIME of the row as loaded: the save changes the row only while it is unchanged.
    QString m_loadedUpdTime;
    bool m_closeAtOnce = false;
};
