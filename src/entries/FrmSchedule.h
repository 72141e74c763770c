#pragma once

#include "entries/EntryHandOver.h"

#include "entries/EntryEditorDialog.h"

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
class FrmSchedule final : public EntryEditorDialog
{
    Q_OBJECT
public:
    FrmSchedule(AppServices& app, ScheduleHandOver& handOver, QWidget* parent = nullptr);
    ~FrmSchedule() override;

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

    ScheduleHandOver& m_handOver;
    std::unique_ptr<Ui::FrmSchedule> m_ui;
    LinkLabelGroup* m_links = nullptr;
    // UPDTIME of the row as loaded: the save changes the row only while it is unchanged.
    QString m_loadedUpdTime;
};
