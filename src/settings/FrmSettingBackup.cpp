// The data-maintenance frame: backup and restore of the whole database file.
#include "common/AppServices.h"
#include "common/Pickers.h"
#include "common/Prompter.h"
#include "common/UserAction.h"
#include "notes/StickyNoteStore.h"
#include "settings/BackupRestore.h"
#include "settings/FrmSetting.h"
#include "ui_FrmSetting.h"

namespace {

const QString BackupFilter = QStringLiteral("バックアップファイル(*.bdc)");

bool ConfirmOrCancel(Prompter& prompter, QWidget* parent, const QString& text, PromptIcon icon)
{
    return prompter.ask(parent, Prompt{text, icon, PromptButtons::OkCancel, PromptAnswer::Cancel, {}}) ==
           PromptAnswer::Ok;
}

} // namespace

void FrmSetting::ComBackup_Click()
{
    if (!ConfirmOrCancel(*m_app.prompter, this,
                         QStringLiteral("現在の設定状態を保存してバックアップを行ってよろしいですか？"),
                         PromptIcon::Information))
        return;
    const QString target = m_app.filePicker->pickFile(
        this, FileRequest{FileRequest::Mode::Save, QString(), QString(), QStringLiteral("bdc"), BackupFilter});
    if (target.isEmpty())
        return;
    // The notes as they show now, and the design changes made so far, go into the copy.
    const bool committed = RunUserAction(m_app, this, [this] {
        WriteStickyNotes(m_app.db(), m_app.state.StickyNotes);
        m_transaction.commit();
        m_committed = true;
    });
    if (!committed)
        return;
    const MaintenanceResult result = BackupDatabase(m_app.db(), target);
    if (result.ok)
        m_app.prompter->inform(this, QStringLiteral("バックアップが正常に終了しました。"));
    else
        m_app.prompter->inform(this, result.problem, PromptIcon::Critical);
    accept();
}

void FrmSetting::ComReg_Click()
{
    if (!ConfirmOrCancel(*m_app.prompter, this,
                         QStringLiteral("復元を行うと現在のデータは全て破棄されます。\n") +
                             QStringLiteral("復元開始してよろしいですか？"),
                         PromptIcon::Warning))
        return;
    const QString chosen =
        m_app.filePicker->pickFile(this, FileRequest{FileRequest::Mode::Open, QString(), QStringLiteral("*.bdc"),
                                                     QStringLiteral("bdc"), BackupFilter});
    if (chosen.isEmpty() || chosen == QLatin1String("*.bdc"))
        return;
    m_transaction.rollback();
    QString problem;
    const RestoreOutcome outcome = RestoreDatabase(m_app.db(), chosen, *m_app.clock, &problem);
    if (outcome == RestoreOutcome::Restored) {
        m_app.prompter->inform(this, QStringLiteral("バックアップを正常に復元しました。\n") +
                                         QStringLiteral("アプリケーションを終了いたしますので再起動してください。"));
        m_committed = true;
        // The main window ends the program and writes nothing of this run over the restored data.
        m_app.state.RestoreDone = true;
        accept();
        return;
    }
    m_app.prompter->inform(this,
                           outcome == RestoreOutcome::NotABackup
                               ? QStringLiteral("バックアップファイルが正しくありません。復元をキャンセルします。")
                               : QStringLiteral("復元できませんでした。現在のデータはそのままです。\n") + problem,
                           PromptIcon::Critical);
    // The dialog stays open on the live data: a fresh transaction, and the shown spot as the
    // rollback left it. The options typed so far are only in the controls and stay.
    if (RunUserAction(m_app, this, [this] { m_transaction.begin(); }))
        CmbSpot_Click();
}
