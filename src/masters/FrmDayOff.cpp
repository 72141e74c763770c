#include "masters/FrmDayOff.h"

#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Fonts.h"
#include "common/Prompter.h"
#include "common/UserAction.h"
#include "masters/DayOffRows.h"
#include "masters/FrmDayOffEdit.h"
#include "ui_FrmDayOff.h"

#include <QListWidget>
#include <QPushButton>

FrmDayOff::FrmDayOff(AppServices& app, QWidget* parent)
    : QDialog(parent), m_app(app), m_ui(std::make_unique<Ui::FrmDayOff>()), m_transaction(app.db())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_ui->LstDayOff->setSelectionMode(QAbstractItemView::SingleSelection);
    // One Japanese fixed-pitch font for every line: the dates stand in a column, and the
    // digits do not change face with the script of the remark after them.
    m_ui->LstDayOff->setFont(FixedPitchJapaneseFont(m_ui->LstDayOff->font().pointSizeF()));
    connect(m_ui->ComADD, &QPushButton::clicked, this, &FrmDayOff::ComADD_Click);
    connect(m_ui->ComUpd, &QPushButton::clicked, this, &FrmDayOff::ComUpd_Click);
    connect(m_ui->ComDel, &QPushButton::clicked, this, &FrmDayOff::ComDel_Click);
    connect(m_ui->ComOK, &QPushButton::clicked, this, &FrmDayOff::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->LstDayOff, &QListWidget::itemDoubleClicked, this, &FrmDayOff::ComUpd_Click);
    Form_Load();
}

FrmDayOff::~FrmDayOff() = default;

void FrmDayOff::Form_Load()
{
    const bool loaded = RunUserAction(m_app, parentWidget(), [this] { m_transaction.begin(); });
    if (loaded) {
        FillList(0);
        return;
    }
    // Without the transaction nothing here could be undone: leave only the way out.
    for (QPushButton* button : {m_ui->ComADD, m_ui->ComUpd, m_ui->ComDel, m_ui->ComOK})
        button->setEnabled(false);
    m_ui->ComCancel->setDefault(true);
}

void FrmDayOff::FillList(int selectKey)
{
    RunUserAction(m_app, this, [this, selectKey] {
        const Rows rows =
            m_app.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 200 ORDER BY DATAN1,DATAN2 "));
        m_ui->LstDayOff->clear();
        for (const Row& row : rows) {
            const int month = static_cast<int>(row.number(QStringLiteral("DATAN1")));
            const int day = static_cast<int>(row.number(QStringLiteral("DATAN2")));
            const QString text = QStringLiteral("%1/%2 %3")
                                     .arg(month, 2, 10, QLatin1Char('0'))
                                     .arg(day, 2, 10, QLatin1Char('0'))
                                     .arg(row.text(QStringLiteral("DATAS1")));
            auto* item = new QListWidgetItem(text, m_ui->LstDayOff);
            item->setData(Qt::UserRole, DayOffKey(month, day));
            if (DayOffKey(month, day) == selectKey && !m_ui->LstDayOff->currentItem())
                m_ui->LstDayOff->setCurrentItem(item);
        }
    });
}

int FrmDayOff::selectedKey() const
{
    const QList<QListWidgetItem*> selected = m_ui->LstDayOff->selectedItems();
    return selected.isEmpty() ? 0 : selected.front()->data(Qt::UserRole).toInt();
}

void FrmDayOff::ComADD_Click()
{
    const QDate today = m_app.clock->today();
    DayOffHandOver handOver;
    handOver.DayOffMode = QStringLiteral("INSERT");
    handOver.DayOffCaption = QStringLiteral("新規 - 休日設定");
    handOver.DayOffMonth = today.month();
    handOver.DayOffDay = today.day();
    FrmDayOffEdit editor(m_app, handOver, this);
    editor.exec();
    if (!handOver.DayOffOK)
        return;
    if (RunUserAction(m_app, this, [&] {
            InsertDayOff(m_app.db(), handOver.DayOffMonth, handOver.DayOffDay, handOver.DayOffRemark);
        }))
        FillList(DayOffKey(handOver.DayOffMonth, handOver.DayOffDay));
}

void FrmDayOff::ComUpd_Click()
{
    const int key = selectedKey();
    if (key == 0)
        return;
    DayOffHandOver handOver;
    handOver.DayOffMode = QStringLiteral("UPDATE");
    handOver.DayOffCaption = QStringLiteral("編集 - 休日設定");
    handOver.DayOffMonth = DayOffKeyMonth(key);
    handOver.DayOffDay = DayOffKeyDay(key);
    FrmDayOffEdit editor(m_app, handOver, this);
    editor.exec();
    if (!handOver.DayOffOK)
        return;
    if (RunUserAction(m_app, this, [&] {
            UpdateDayOffs(m_app.db(), DayOffKeyMonth(key), DayOffKeyDay(key), handOver.DayOffMonth, handOver.DayOffDay,
                          handOver.DayOffRemark);
        }))
        FillList(DayOffKey(handOver.DayOffMonth, handOver.DayOffDay));
}

void FrmDayOff::ComDel_Click()
{
    const int key = selectedKey();
    if (key == 0 || !m_app.prompter)
        return;
    const Prompt prompt{QStringLiteral("選択された休日設定を削除します"), PromptIcon::Warning, PromptButtons::OkCancel,
                        PromptAnswer::Cancel, AppInfo::productTitle()};
    if (m_app.prompter->ask(this, prompt) != PromptAnswer::Ok)
        return;
    const int row = m_ui->LstDayOff->currentRow();
    if (RunUserAction(m_app, this, [&] { DeleteDayOffs(m_app.db(), DayOffKeyMonth(key), DayOffKeyDay(key)); })) {
        FillList(0);
        // The selection stays where the deleted line was, for the next one to go.
        if (m_ui->LstDayOff->count() > 0)
            m_ui->LstDayOff->setCurrentRow(qMin(row, m_ui->LstDayOff->count() - 1));
    }
}

void FrmDayOff::ComOK_Click()
{
    if (RunUserAction(m_app, this, [this] { m_transaction.commit(); }))
        accept();
}

void FrmDayOff::done(int result)
{
    // Only OK commits, before it gets here; whatever is still open was not confirmed.
    m_transaction.rollback();
    QDialog::done(result);
}
