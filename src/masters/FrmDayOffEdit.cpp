#include "masters/FrmDayOffEdit.h"

#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/UserAction.h"
#include "entries/EditorCommon.h"
#include "masters/DayOffRows.h"
#include "store/SqlText.h"
#include "ui_FrmDayOffEdit.h"

#include <QDate>

FrmDayOffEdit::FrmDayOffEdit(AppServices& app, DayOffHandOver& handOver, QWidget* parent)
    : QDialog(parent), m_app(app), m_handOver(handOver), m_ui(std::make_unique<Ui::FrmDayOffEdit>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    for (int month = 1; month <= 12; ++month)
        m_ui->CmbMonth->addItem(QStringLiteral("%1").arg(month, 2), month);
    for (int day = 1; day <= 31; ++day)
        m_ui->CmbDay->addItem(QString::number(day), day);
    connect(m_ui->ComOK, &QPushButton::clicked, this, &FrmDayOffEdit::ComOK_Click);
    connect(m_ui->ComCancel, &QPushButton::clicked, this, &QDialog::reject);
    OnFocusChange(
        m_ui->TxtComment, [this] { SelectAllText(m_ui->TxtComment); }, nullptr);
    Form_Load();
}

FrmDayOffEdit::~FrmDayOffEdit() = default;

void FrmDayOffEdit::Form_Load()
{
    setWindowTitle(m_handOver.DayOffCaption);
    SelectComboByItemData(m_ui->CmbMonth, m_handOver.DayOffMonth);
    SelectComboByItemData(m_ui->CmbDay, m_handOver.DayOffDay);
    if (m_handOver.DayOffMode != QLatin1String("UPDATE"))
        return;
    const bool loaded = RunUserAction(m_app, parentWidget(), [this] {
        m_ui->TxtComment->setText(ReadDayOffRemark(m_app.db(), m_handOver.DayOffMonth, m_handOver.DayOffDay));
    });
    if (!loaded)
        m_ui->ComOK->setEnabled(false);
}

void FrmDayOffEdit::ComOK_Click()
{
    const int month = m_ui->CmbMonth->currentData().toInt();
    const int day = m_ui->CmbDay->currentData().toInt();
    const int year = m_app.clock->today().year();
    // A day-off repeats every year, yet only a date of this year is taken: 29 February
    // waits for a leap year.
    if (!QDate(year, month, day).isValid()) {
        WarnUser(m_app, this, QStringLiteral("日付が正しくありません"));
        return;
    }
    // Only a new day-off is checked: an edit may move one onto a date that has another.
    if (m_handOver.DayOffMode == QLatin1String("INSERT")) {
        qint64 existing = 0;
        if (!RunUserAction(m_app, this, [&] { existing = CountDayOffs(m_app.db(), month, day); }))
            return;
        if (existing > 0) {
            WarnUser(m_app, this, QStringLiteral("既に登録されている日付です"));
            return;
        }
    }
    m_handOver.DayOffMonth = month;
    m_handOver.DayOffDay = day;
    m_handOver.DayOffRemark = m_ui->TxtComment->text();
    m_handOver.DayOffOK = true;
    accept();
}
