#pragma once

#include "entries/EntryHandOver.h"

#include "entries/EntryEditorDialog.h"

#include <memory>

class LinkLabelGroup;
struct AppServices;

namespace Ui {
class FrmTask;
}

// "タスク": creates ("ADD") or changes ("UPD") one task: a deadline, a priority, a done
// mark with its date. Each statement of a save stands on its own (no transaction).
// Reports back through the hand-over like the schedule editor; a row that vanished
// closes the dialog at once without a word.
class FrmTask final : public EntryEditorDialog
{
    Q_OBJECT
public:
    FrmTask(AppServices& app, TaskHandOver& handOver, QWidget* parent = nullptr);
    ~FrmTask() override;

private:
    void Form_Load();
    void fillPriorities();
    void ComOK_Click();
    void ChkEnd_Click();
    void ChkEndNon_Click();
    void TxtEndDate_LostFocus();
    void CmbEndTime_LostFocus();
    void TxtEnd_LostFocus();
    void LabEndDate_Click();
    void LabEnd_Click();
    void LabClass_Click();
    void LabPriority_Click();

    bool validate();
    bool save();
    QString postText() const;

    TaskHandOver& m_handOver;
    std::unique_ptr<Ui::FrmTask> m_ui;
    LinkLabelGroup* m_links = nullptr;
    QString m_loadedUpdTime;
    // Kept when the stored priority is no longer offered, so a save does not change it.
    qint64 m_loadedPriority = 0;
};
